#include "testhost/DescriptorSuite.h"

#include <algorithm>
#include <cstring>

namespace testhost {

namespace {

// A key list longer than this is taken as unterminated.
constexpr size_t kLongestKeyArray = 256;

}  // namespace

DescriptorItem DescriptorItem::Integer(DescriptorKeyID key, int32_t value) {
    DescriptorItem item;
    item.key = key;
    item.type = kTypeInteger;
    item.integer = value;
    return item;
}

DescriptorItem DescriptorItem::Float(DescriptorKeyID key, double value) {
    DescriptorItem item;
    item.key = key;
    item.type = kTypeFloat;
    item.number = value;
    return item;
}

DescriptorItem DescriptorItem::UnitFloat(DescriptorKeyID key, DescriptorUnitID unit, double value) {
    DescriptorItem item = Float(key, value);
    item.type = kTypeUnitFloat;
    item.aux = unit;
    return item;
}

DescriptorItem DescriptorItem::Bool(DescriptorKeyID key, bool value) {
    DescriptorItem item = Integer(key, value ? 1 : 0);
    item.type = kTypeBoolean;
    return item;
}

DescriptorItem DescriptorItem::Text(DescriptorKeyID key, const std::string& value) {
    DescriptorItem item;
    item.key = key;
    item.type = kTypeText;
    item.bytes = value;
    return item;
}

DescriptorItem DescriptorItem::Enumerated(DescriptorKeyID key, DescriptorEnumTypeID type,
                                          DescriptorEnumID value) {
    DescriptorItem item = Integer(key, static_cast<int32_t>(value));
    item.type = kTypeEnumerated;
    item.aux = type;
    return item;
}

DescriptorItem DescriptorItem::Class(DescriptorKeyID key, DescriptorClassID value) {
    DescriptorItem item = Integer(key, static_cast<int32_t>(value));
    item.type = kTypeClass;
    return item;
}

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
    if (settings.playDescriptor) parameters_.descriptor = MakeDescriptor(*settings.playDescriptor);
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
    auto reader = std::make_unique<Reader>();
    reader->items = current_->Contents(descriptor);
    reader->keyArray = keyArray;
    reader->logIndex = current_->log_->descriptorReads.size() - 1;
    Reader* id = reader.get();
    current_->readers_[id] = std::move(reader);
    return reinterpret_cast<PIReadDescriptor>(id);
}

OSErr DescriptorSuite::CloseRead(PIReadDescriptor reader) {
    if (current_ == nullptr) return paramErr;
    auto it = current_->readers_.find(reinterpret_cast<Reader*>(reader));
    if (it == current_->readers_.end()) {
        current_->log_->faults.push_back("closeReadDescriptorProc on an unknown reader");
        return paramErr;
    }
    DescriptorRead& read = current_->log_->descriptorReads[it->second->logIndex];
    read.closed = true;
    read.closeResult = current_->closeError_;
    current_->readers_.erase(it);
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
    current_->log_->descriptorReads[r.logIndex].delivered.push_back(r.current->key);
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
    current_->log_->descriptorReads[it->second->logIndex].valuesRead.push_back(
        it->second->current->key);
    return it->second.get();
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
    Reader* r = CurrentItemOf(reader, kTypeBoolean);
    if (r == nullptr || value == nullptr) return paramErr;
    *value = r->current->integer != 0;
    return noErr;
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
    Reader* r = CurrentItemOf(reader, kTypeEnumerated);
    if (r == nullptr || value == nullptr) return paramErr;
    *value = static_cast<DescriptorEnumID>(r->current->integer);
    return noErr;
}

OSErr DescriptorSuite::GetClass(PIReadDescriptor reader, DescriptorClassID* value) {
    Reader* r = CurrentItemOf(reader, kTypeClass);
    if (r == nullptr || value == nullptr) return paramErr;
    *value = static_cast<DescriptorClassID>(r->current->integer);
    return noErr;
}

OSErr DescriptorSuite::GetSimpleReference(PIReadDescriptor, PIDescriptorSimpleReference*) {
    return errPlugInHostInsufficient;
}

OSErr DescriptorSuite::GetObject(PIReadDescriptor, DescriptorClassID*, Handle*) {
    return errPlugInHostInsufficient;
}

OSErr DescriptorSuite::GetCount(PIReadDescriptor reader, uint32_t* value) {
    Reader* r = CurrentItemOf(reader, kTypeInteger);
    if (r == nullptr || value == nullptr) return paramErr;
    *value = static_cast<uint32_t>(r->current->integer);
    return noErr;
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
    auto writer = std::make_unique<Writer>();
    writer->logIndex = current_->log_->descriptorWrites.size() - 1;
    Writer* id = writer.get();
    current_->writers_[id] = std::move(writer);
    return reinterpret_cast<PIWriteDescriptor>(id);
}

OSErr DescriptorSuite::CloseWrite(PIWriteDescriptor writer, Handle* newDescriptor) {
    if (current_ == nullptr) return paramErr;
    auto it = current_->writers_.find(reinterpret_cast<Writer*>(writer));
    if (it == current_->writers_.end()) {
        current_->log_->faults.push_back("closeWriteDescriptorProc on an unknown writer");
        return paramErr;
    }
    DescriptorWrite& write = current_->log_->descriptorWrites[it->second->logIndex];
    current_->writers_.erase(it);
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
    current_->log_->descriptorWrites[it->second->logIndex].items.push_back(std::move(item));
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
