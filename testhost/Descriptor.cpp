#include "testhost/Descriptor.h"

namespace testhost {

DescriptorItem DescriptorItem::Integer(DescriptorKeyID key, int32_t value) {
    return {key, kTypeInteger, value, 0, 0, {}};
}

DescriptorItem DescriptorItem::Float(DescriptorKeyID key, double value) {
    return {key, kTypeFloat, 0, value, 0, {}};
}

DescriptorItem DescriptorItem::UnitFloat(DescriptorKeyID key, DescriptorUnitID unit, double value) {
    return {key, kTypeUnitFloat, 0, value, unit, {}};
}

DescriptorItem DescriptorItem::Bool(DescriptorKeyID key, bool value) {
    return {key, kTypeBoolean, value ? 1 : 0, 0, 0, {}};
}

DescriptorItem DescriptorItem::Text(DescriptorKeyID key, const std::string& value) {
    return {key, kTypeText, 0, 0, 0, value};
}

DescriptorItem DescriptorItem::Enumerated(DescriptorKeyID key, DescriptorEnumTypeID type,
                                          DescriptorEnumID value) {
    return {key, kTypeEnumerated, static_cast<int32_t>(value), 0, type, {}};
}

DescriptorItem DescriptorItem::Class(DescriptorKeyID key, DescriptorClassID value) {
    return {key, kTypeClass, static_cast<int32_t>(value), 0, 0, {}};
}

}  // namespace testhost
