#include "testhost/DescriptorSuite.h"

#include <algorithm>
#include <cstring>

namespace testhost {

namespace {

// A key list longer than this is taken as unterminated.
constexpr size_t kLongestKeyArray = 256;

// The log entry of a reader or writer; a scratch one when the test cleared
// the log while the module held it open.
template <typename Entry>
Entry& LogEntry(std::vector<Entry>& entries, size_t index) {
    static Entry scratch;
    if (index < entries.size()) return entries[index];
    scratch = Entry{};
    return scratch;
}

// Readers and writers live from open to close; the module holds their address.
template <typename Object>
Object* Adopt(std::map<Object*, std::unique_ptr<Object>>& objects, size_t logIndex) {
    auto object = std::make_unique<Object>();
    object->logIndex = logIndex;
    Object* id = object.get();
    objects[id] = std::move(object);
    return id;
}

// Takes back what a close procedure was given; null (and a fault) when the
// module passes something the host never handed out.
template <typename Object>
std::unique_ptr<Object> Release(std::map<Object*, std::unique_ptr<Object>>& objects, void* opaque,
                                const char* procedure, std::vector<std::string>* faults) {
    auto it = objects.find(static_cast<Object*>(opaque));
    if (it == objects.end()) {
        faults->push_back(std::string(procedure) + " on something the host never opened");
        return nullptr;
    }
    std::unique_ptr<Object> object = std::move(it->second);
    objects.erase(it);
    return object;
}

}  // namespace

struct DescriptorSuite::Reader {
    std::vector<DescriptorItem> items;
    size_t next = 0;
    const DescriptorItem* current = nullptr;
    DescriptorKeyID* keyArray = nullptr;
    size_t logIndex = 0;
};

struct DescriptorSuite::Writer {
    size_t logIndex = 0;
};

DescriptorSuite* DescriptorSuite::current_ = nullptr;

DescriptorSuite::DescriptorSuite(HandleSuite* handles, HostLog* log)
    : handles_(handles), log_(log) {}

DescriptorSuite::~DescriptorSuite() {
    if (current_ == this) current_ = nullptr;
}

void DescriptorSuite::BeginRun(const HostSettings& settings) {
    if (parameters_.descriptor != nullptr) handles_->Dispose(parameters_.descriptor);
    present_ = settings.descriptorSuite != DescriptorSuiteMode::kAbsent;
    closeError_ = settings.readerCloseError;
    const bool shortSuites = settings.descriptorSuite == DescriptorSuiteMode::kShortSuites;
    readProcs_ = {kCurrentReadDescriptorProcsVersion,
                  static_cast<int16_t>(kCurrentReadDescriptorProcsCount - (shortSuites ? 1 : 0)),
                  OpenRead,
                  CloseRead,
                  GetKey,
                  GetInteger,
                  GetFloat,
                  GetUnitFloat,
                  GetBoolean,
                  GetText,
                  GetAlias,
                  GetEnumerated,
                  GetClass,
                  GetSimpleReference,
                  GetObject,
                  GetCount,
                  GetString,
                  GetPinnedInteger,
                  GetPinnedFloat,
                  GetPinnedUnitFloat};
    writeProcs_ = {kCurrentWriteDescriptorProcsVersion,
                   static_cast<int16_t>(kCurrentWriteDescriptorProcsCount - (shortSuites ? 1 : 0)),
                   OpenWrite,
                   CloseWrite,
                   PutInteger,
                   PutFloat,
                   PutUnitFloat,
                   PutBoolean,
                   PutText,
                   PutAlias,
                   PutEnumerated,
                   PutClass,
                   PutSimpleReference,
                   PutObject,
                   PutCount,
                   PutString,
                   PutScopedClass,
                   PutScopedObject};
    const bool nullSuites = settings.descriptorSuite == DescriptorSuiteMode::kNullSuites;
    parameters_ = {};
    parameters_.descriptorParametersVersion = kCurrentDescriptorParametersVersion;
    parameters_.playInfo = settings.playInfo;
    parameters_.recordInfo = plugInDialogOptional;
    parameters_.writeDescriptorProcs = nullSuites ? nullptr : &writeProcs_;
    parameters_.readDescriptorProcs = nullSuites ? nullptr : &readProcs_;
    // Without the suite there is no block to hand the descriptor in.
    if (settings.playDescriptor && present_) {
        parameters_.descriptor = MakeDescriptor(*settings.playDescriptor);
    }
}

PIDescriptorParameters* DescriptorSuite::Parameters() { return present_ ? &parameters_ : nullptr; }

std::vector<DescriptorItem> DescriptorSuite::Contents(Handle descriptor) const {
    auto it = descriptors_.find(descriptor);
    if (it == descriptors_.end() || !handles_->IsLive(descriptor)) return {};
    return it->second;
}

Handle DescriptorSuite::MakeDescriptor(const std::vector<DescriptorItem>& items) {
    Handle h = handles_->Allocate(4);
    if (h != nullptr) descriptors_[h] = items;
    return h;
}

// ---- Reading ----

PIReadDescriptor DescriptorSuite::OpenRead(Handle descriptor, DescriptorKeyID* keyArray) {
    if (current_ == nullptr) return nullptr;
    DescriptorRead read;
    for (size_t i = 0; keyArray != nullptr && i < kLongestKeyArray && keyArray[i] != 0; ++i) {
        read.keyArray.push_back(keyArray[i]);
    }
    read.opened = descriptor != nullptr;
    current_->log_->descriptorReads.push_back(read);
    if (descriptor == nullptr) return nullptr;
    Reader* reader = Adopt(current_->readers_, current_->log_->descriptorReads.size() - 1);
    reader->items = current_->Contents(descriptor);
    reader->keyArray = keyArray;
    return reinterpret_cast<PIReadDescriptor>(reader);
}

OSErr DescriptorSuite::CloseRead(PIReadDescriptor reader) {
    if (current_ == nullptr) return paramErr;
    std::unique_ptr<Reader> closed =
        Release(current_->readers_, reader, "closeReadDescriptorProc", &current_->log_->faults);
    if (closed == nullptr) return paramErr;
    DescriptorRead& read = LogEntry(current_->log_->descriptorReads, closed->logIndex);
    read.closed = true;
    read.closeResult = current_->closeError_;
    return current_->closeError_;
}

Boolean DescriptorSuite::GetKey(PIReadDescriptor reader, DescriptorKeyID* key,
                                DescriptorTypeID* type, int32_t* flags) {
    if (current_ == nullptr) return false;
    auto it = current_->readers_.find(reinterpret_cast<Reader*>(reader));
    if (it == current_->readers_.end()) return false;
    Reader& r = *it->second;
    if (r.next >= r.items.size()) {
        r.current = nullptr;
        return false;
    }
    r.current = &r.items[r.next++];
    if (key != nullptr) *key = r.current->key;
    if (type != nullptr) *type = r.current->type;
    if (flags != nullptr) *flags = 0;
    LogEntry(current_->log_->descriptorReads, r.logIndex).delivered.push_back(r.current->key);
    // A delivered key is struck from the module's list, as hosts do.
    for (size_t i = 0; r.keyArray != nullptr && i < kLongestKeyArray && r.keyArray[i] != 0; ++i) {
        if (r.keyArray[i] == r.current->key) r.keyArray[i] = kDescriptorNullKey;
    }
    return true;
}

DescriptorSuite::Reader* DescriptorSuite::CurrentItemOf(PIReadDescriptor reader,
                                                        DescriptorTypeID type) {
    if (current_ == nullptr) return nullptr;
    auto it = current_->readers_.find(reinterpret_cast<Reader*>(reader));
    if (it == current_->readers_.end() || it->second->current == nullptr ||
        it->second->current->type != type) {
        return nullptr;
    }
    LogEntry(current_->log_->descriptorReads, it->second->logIndex)
        .valuesRead.push_back(it->second->current->key);
    return it->second.get();
}

template <typename T>
OSErr DescriptorSuite::GetIntegerOfType(PIReadDescriptor reader, DescriptorTypeID type, T* value) {
    Reader* r = CurrentItemOf(reader, type);
    if (r == nullptr || value == nullptr) return paramErr;
    *value = static_cast<T>(r->current->integer);
    return noErr;
}

OSErr DescriptorSuite::GetInteger(PIReadDescriptor reader, int32_t* value) {
    return GetPinnedInteger(reader, INT32_MIN, INT32_MAX, value);
}

OSErr DescriptorSuite::GetFloat(PIReadDescriptor reader, double* value) {
    return GetPinnedFloat(reader, nullptr, nullptr, value);
}

OSErr DescriptorSuite::GetUnitFloat(PIReadDescriptor reader, DescriptorUnitID* unit,
                                    double* value) {
    return GetPinnedUnitFloat(reader, nullptr, nullptr, unit, value);
}

OSErr DescriptorSuite::GetBoolean(PIReadDescriptor reader, Boolean* value) {
    return GetIntegerOfType(reader, kTypeBoolean, value);
}

OSErr DescriptorSuite::GetText(PIReadDescriptor reader, Handle* value) {
    return GetHandleValue(reader, kTypeText, value);
}

OSErr DescriptorSuite::GetAlias(PIReadDescriptor reader, Handle* value) {
    return GetHandleValue(reader, kTypeAlias, value);
}

OSErr DescriptorSuite::GetHandleValue(PIReadDescriptor reader, DescriptorTypeID type,
                                      Handle* value) {
    Reader* r = CurrentItemOf(reader, type);
    if (r == nullptr || value == nullptr) return paramErr;
    const std::string& text = r->current->bytes;
    *value = current_->handles_->Allocate(static_cast<int32_t>(text.size()));
    if (*value == nullptr) return memFullErr;
    std::memcpy(**value, text.data(), text.size());
    return noErr;
}

OSErr DescriptorSuite::GetEnumerated(PIReadDescriptor reader, DescriptorEnumID* value) {
    return GetIntegerOfType(reader, kTypeEnumerated, value);
}

OSErr DescriptorSuite::GetClass(PIReadDescriptor reader, DescriptorClassID* value) {
    return GetIntegerOfType(reader, kTypeClass, value);
}

OSErr DescriptorSuite::GetSimpleReference(PIReadDescriptor, PIDescriptorSimpleReference*) {
    return errPlugInHostInsufficient;
}

OSErr DescriptorSuite::GetObject(PIReadDescriptor, DescriptorClassID*, Handle*) {
    return errPlugInHostInsufficient;
}

OSErr DescriptorSuite::GetCount(PIReadDescriptor reader, uint32_t* value) {
    return GetIntegerOfType(reader, kTypeInteger, value);
}

OSErr DescriptorSuite::GetString(PIReadDescriptor reader, Str255* value) {
    Reader* r = CurrentItemOf(reader, kTypeText);
    if (r == nullptr || value == nullptr) return paramErr;
    const size_t length = std::min<size_t>(r->current->bytes.size(), 255);
    (*value)[0] = static_cast<uint8_t>(length);
    std::memcpy(&(*value)[1], r->current->bytes.data(), length);
    return noErr;
}

OSErr DescriptorSuite::GetPinnedInteger(PIReadDescriptor reader, int32_t min, int32_t max,
                                        int32_t* value) {
    Reader* r = CurrentItemOf(reader, kTypeInteger);
    if (r == nullptr || value == nullptr) return paramErr;
    *value = std::clamp(r->current->integer, min, std::max(min, max));
    return noErr;
}

OSErr DescriptorSuite::GetPinnedFloat(PIReadDescriptor reader, const double* min, const double* max,
                                      double* value) {
    Reader* r = CurrentItemOf(reader, kTypeFloat);
    if (r == nullptr || value == nullptr) return paramErr;
    *value = r->current->number;
    if (min != nullptr) *value = std::max(*value, *min);
    if (max != nullptr) *value = std::min(*value, *max);
    return noErr;
}

OSErr DescriptorSuite::GetPinnedUnitFloat(PIReadDescriptor reader, const double* min,
                                          const double* max, DescriptorUnitID* unit,
                                          double* value) {
    Reader* r = CurrentItemOf(reader, kTypeUnitFloat);
    if (r == nullptr || value == nullptr) return paramErr;
    if (unit != nullptr) *unit = r->current->aux;
    *value = r->current->number;
    if (min != nullptr) *value = std::max(*value, *min);
    if (max != nullptr) *value = std::min(*value, *max);
    return noErr;
}

// ---- Writing ----

PIWriteDescriptor DescriptorSuite::OpenWrite() {
    if (current_ == nullptr) return nullptr;
    current_->log_->descriptorWrites.push_back({});
    return reinterpret_cast<PIWriteDescriptor>(
        Adopt(current_->writers_, current_->log_->descriptorWrites.size() - 1));
}

OSErr DescriptorSuite::CloseWrite(PIWriteDescriptor writer, Handle* newDescriptor) {
    if (current_ == nullptr) return paramErr;
    std::unique_ptr<Writer> closed =
        Release(current_->writers_, writer, "closeWriteDescriptorProc", &current_->log_->faults);
    if (closed == nullptr) return paramErr;
    DescriptorWrite& write = LogEntry(current_->log_->descriptorWrites, closed->logIndex);
    write.closed = true;
    if (newDescriptor == nullptr) return paramErr;
    write.descriptor = current_->MakeDescriptor(write.items);
    *newDescriptor = write.descriptor;
    return write.descriptor == nullptr ? memFullErr : noErr;
}

std::string DescriptorSuite::BytesOf(Handle h) {
    return current_ == nullptr ? std::string() : current_->handles_->Contents(h);
}

OSErr DescriptorSuite::Put(PIWriteDescriptor writer, DescriptorItem item) {
    if (current_ == nullptr) return paramErr;
    auto it = current_->writers_.find(reinterpret_cast<Writer*>(writer));
    if (it == current_->writers_.end()) return paramErr;
    LogEntry(current_->log_->descriptorWrites, it->second->logIndex)
        .items.push_back(std::move(item));
    return noErr;
}

OSErr DescriptorSuite::PutInteger(PIWriteDescriptor writer, DescriptorKeyID key, int32_t value) {
    return Put(writer, DescriptorItem::Integer(key, value));
}

OSErr DescriptorSuite::PutFloat(PIWriteDescriptor writer, DescriptorKeyID key,
                                const double* value) {
    if (value == nullptr) return paramErr;
    return Put(writer, DescriptorItem::Float(key, *value));
}

OSErr DescriptorSuite::PutUnitFloat(PIWriteDescriptor writer, DescriptorKeyID key,
                                    DescriptorUnitID unit, const double* value) {
    if (value == nullptr) return paramErr;
    return Put(writer, DescriptorItem::UnitFloat(key, unit, *value));
}

OSErr DescriptorSuite::PutBoolean(PIWriteDescriptor writer, DescriptorKeyID key, Boolean value) {
    return Put(writer, DescriptorItem::Bool(key, value != 0));
}

OSErr DescriptorSuite::PutText(PIWriteDescriptor writer, DescriptorKeyID key, Handle value) {
    return Put(writer, DescriptorItem::Text(key, BytesOf(value)));
}

OSErr DescriptorSuite::PutAlias(PIWriteDescriptor writer, DescriptorKeyID key, Handle value) {
    DescriptorItem item = DescriptorItem::Text(key, BytesOf(value));
    item.type = kTypeAlias;
    return Put(writer, item);
}

OSErr DescriptorSuite::PutEnumerated(PIWriteDescriptor writer, DescriptorKeyID key,
                                     DescriptorEnumTypeID type, DescriptorEnumID value) {
    return Put(writer, DescriptorItem::Enumerated(key, type, value));
}

OSErr DescriptorSuite::PutClass(PIWriteDescriptor writer, DescriptorKeyID key,
                                DescriptorClassID value) {
    return Put(writer, DescriptorItem::Class(key, value));
}

OSErr DescriptorSuite::PutSimpleReference(PIWriteDescriptor writer, DescriptorKeyID key,
                                          const PIDescriptorSimpleReference* value) {
    DescriptorItem item;
    item.key = key;
    item.type = kTypeReference;
    if (value != nullptr) item.aux = value->desiredClass;
    return Put(writer, item);
}

OSErr DescriptorSuite::PutObject(PIWriteDescriptor writer, DescriptorKeyID key,
                                 DescriptorClassID type, Handle value) {
    DescriptorItem item = DescriptorItem::Text(key, BytesOf(value));
    item.type = kTypeObject;
    item.aux = type;
    return Put(writer, item);
}

OSErr DescriptorSuite::PutCount(PIWriteDescriptor writer, DescriptorKeyID key, uint32_t count) {
    return Put(writer, DescriptorItem::Integer(key, static_cast<int32_t>(count)));
}

OSErr DescriptorSuite::PutString(PIWriteDescriptor writer, DescriptorKeyID key,
                                 const uint8_t* text) {
    if (text == nullptr) return paramErr;
    return Put(writer, DescriptorItem::Text(key, std::string(text + 1, text + 1 + text[0])));
}

OSErr DescriptorSuite::PutScopedClass(PIWriteDescriptor writer, DescriptorKeyID key,
                                      DescriptorClassID value) {
    return PutClass(writer, key, value);
}

OSErr DescriptorSuite::PutScopedObject(PIWriteDescriptor writer, DescriptorKeyID key,
                                       DescriptorClassID type, Handle value) {
    return PutObject(writer, key, type, value);
}

}  // namespace testhost
