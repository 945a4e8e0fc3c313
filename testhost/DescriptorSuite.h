// The host's scripting suites: a descriptor parameters block, a reader that
// hands out the keys of a stored descriptor, and a writer that records what
// the module puts and gives back a new descriptor handle.
#pragma once

#include <map>
#include <memory>
#include <vector>

#include "testhost/HandleSuite.h"
#include "testhost/HostLog.h"
#include "testhost/HostSettings.h"

namespace testhost {

class DescriptorSuite {
  public:
    DescriptorSuite(HandleSuite* handles, HostLog* log);
    ~DescriptorSuite();
    DescriptorSuite(const DescriptorSuite&) = delete;
    DescriptorSuite& operator=(const DescriptorSuite&) = delete;

    // Rebuilds the parameters block for a new run: suites, play mode and the
    // descriptor to play (the previous block's descriptor is disposed).
    void BeginRun(const HostSettings& settings);
    // FilterRecord.descriptorParameters; null when the suite is absent.
    PIDescriptorParameters* Parameters();
    void MakeCurrent() { current_ = this; }

    // The items of a descriptor handle made by this host (empty for others).
    std::vector<DescriptorItem> Contents(Handle descriptor) const;

  private:
    struct Reader;
    struct Writer;
    Handle MakeDescriptor(const std::vector<DescriptorItem>& items);
    static Reader* CurrentItemOf(PIReadDescriptor reader, DescriptorTypeID type);
    template <typename T>
    static OSErr GetIntegerOfType(PIReadDescriptor reader, DescriptorTypeID type, T* value);

    // Reading.
    static PIReadDescriptor OpenRead(Handle descriptor, DescriptorKeyID* keyArray);
    static OSErr CloseRead(PIReadDescriptor reader);
    static Boolean GetKey(PIReadDescriptor reader, DescriptorKeyID* key, DescriptorTypeID* type,
                          int32_t* flags);
    static OSErr GetInteger(PIReadDescriptor reader, int32_t* value);
    static OSErr GetFloat(PIReadDescriptor reader, double* value);
    static OSErr GetUnitFloat(PIReadDescriptor reader, DescriptorUnitID* unit, double* value);
    static OSErr GetBoolean(PIReadDescriptor reader, Boolean* value);
    static OSErr GetText(PIReadDescriptor reader, Handle* value);
    static OSErr GetAlias(PIReadDescriptor reader, Handle* value);
    static OSErr GetHandleValue(PIReadDescriptor reader, DescriptorTypeID type, Handle* value);
    static OSErr GetEnumerated(PIReadDescriptor reader, DescriptorEnumID* value);
    static OSErr GetClass(PIReadDescriptor reader, DescriptorClassID* value);
    static OSErr GetSimpleReference(PIReadDescriptor reader, PIDescriptorSimpleReference* value);
    static OSErr GetObject(PIReadDescriptor reader, DescriptorClassID* type, Handle* value);
    static OSErr GetCount(PIReadDescriptor reader, uint32_t* value);
    static OSErr GetString(PIReadDescriptor reader, Str255* value);
    static OSErr GetPinnedInteger(PIReadDescriptor reader, int32_t min, int32_t max,
                                  int32_t* value);
    static OSErr GetPinnedFloat(PIReadDescriptor reader, const double* min, const double* max,
                                double* value);
    static OSErr GetPinnedUnitFloat(PIReadDescriptor reader, const double* min, const double* max,
                                    DescriptorUnitID* unit, double* value);

    // Writing.
    static PIWriteDescriptor OpenWrite();
    static OSErr CloseWrite(PIWriteDescriptor writer, Handle* newDescriptor);
    static OSErr Put(PIWriteDescriptor writer, DescriptorItem item);
    static std::string BytesOf(Handle h);
    static OSErr PutInteger(PIWriteDescriptor writer, DescriptorKeyID key, int32_t value);
    static OSErr PutFloat(PIWriteDescriptor writer, DescriptorKeyID key, const double* value);
    static OSErr PutUnitFloat(PIWriteDescriptor writer, DescriptorKeyID key, DescriptorUnitID unit,
                              const double* value);
    static OSErr PutBoolean(PIWriteDescriptor writer, DescriptorKeyID key, Boolean value);
    static OSErr PutText(PIWriteDescriptor writer, DescriptorKeyID key, Handle value);
    static OSErr PutAlias(PIWriteDescriptor writer, DescriptorKeyID key, Handle value);
    static OSErr PutEnumerated(PIWriteDescriptor writer, DescriptorKeyID key,
                               DescriptorEnumTypeID type, DescriptorEnumID value);
    static OSErr PutClass(PIWriteDescriptor writer, DescriptorKeyID key, DescriptorClassID value);
    static OSErr PutSimpleReference(PIWriteDescriptor writer, DescriptorKeyID key,
                                    const PIDescriptorSimpleReference* value);
    static OSErr PutObject(PIWriteDescriptor writer, DescriptorKeyID key, DescriptorClassID type,
                           Handle value);
    static OSErr PutCount(PIWriteDescriptor writer, DescriptorKeyID key, uint32_t count);
    static OSErr PutString(PIWriteDescriptor writer, DescriptorKeyID key, const uint8_t* text);
    static OSErr PutScopedClass(PIWriteDescriptor writer, DescriptorKeyID key,
                                DescriptorClassID value);
    static OSErr PutScopedObject(PIWriteDescriptor writer, DescriptorKeyID key,
                                 DescriptorClassID type, Handle value);

    static DescriptorSuite* current_;
    HandleSuite* handles_;
    HostLog* log_;
    OSErr closeError_ = noErr;
    bool present_ = true;
    PIDescriptorParameters parameters_{};
    ReadDescriptorProcs readProcs_{};
    WriteDescriptorProcs writeProcs_{};
    std::map<Handle, std::vector<DescriptorItem>> descriptors_;
    std::map<Reader*, std::unique_ptr<Reader>> readers_;
    std::map<Writer*, std::unique_ptr<Writer>> writers_;
};

}  // namespace testhost
