// One key of a scripting descriptor as the test host stores it: the key, its
// type code and a typed value.
#pragma once

#include <string>

#include "hostapi/HostApi.h"

namespace testhost {

constexpr DescriptorTypeID kTypeInteger = FourCC("long");
constexpr DescriptorTypeID kTypeFloat = FourCC("doub");
constexpr DescriptorTypeID kTypeUnitFloat = FourCC("UntF");
constexpr DescriptorTypeID kTypeBoolean = FourCC("bool");
constexpr DescriptorTypeID kTypeText = FourCC("TEXT");
constexpr DescriptorTypeID kTypeAlias = FourCC("alis");
constexpr DescriptorTypeID kTypeEnumerated = FourCC("enum");
constexpr DescriptorTypeID kTypeClass = FourCC("type");
constexpr DescriptorTypeID kTypeObject = FourCC("Objc");
constexpr DescriptorTypeID kTypeReference = FourCC("obj ");

struct DescriptorItem {
    DescriptorKeyID key = 0;
    DescriptorTypeID type = 0;
    int32_t integer = 0;  // integer, boolean (0/1), count, enumerated value, class
    double number = 0;    // float, unit float
    uint32_t aux = 0;     // unit of a unit float, enumeration type, object class
    std::string bytes;    // text, alias, string; the contents of a handle value

    static DescriptorItem Integer(DescriptorKeyID key, int32_t value);
    static DescriptorItem Float(DescriptorKeyID key, double value);
    static DescriptorItem UnitFloat(DescriptorKeyID key, DescriptorUnitID unit, double value);
    static DescriptorItem Bool(DescriptorKeyID key, bool value);
    static DescriptorItem Text(DescriptorKeyID key, const std::string& value);
    static DescriptorItem Enumerated(DescriptorKeyID key, DescriptorEnumTypeID type,
                                     DescriptorEnumID value);
    static DescriptorItem Class(DescriptorKeyID key, DescriptorClassID value);
};

}  // namespace testhost
