#include "elementreadonlyobject.h"

#include <cstring>

#include "treehelpers.h"

const PropEntry* ElementReadOnlyObject::getPropMap(int& count) const {
    count = 0;
    return nullptr;
}

// Null, with a count of 0, unless the node is an object that has entries.
const PropEntry* ElementReadOnlyObject::entries(int& count) const {
    count = 0;
    if ((valueType() & kElementKindMask) != kElementObject) {
        return nullptr;
    }
    const PropEntry* first = getPropMap(count);
    if (!first || count <= 0) {
        count = 0;
        return nullptr;
    }
    return first;
}

VoJsonPtr ElementReadOnlyObject::getProperty(const OdAnsiString& key) const {
    int count = 0;
    const PropEntry* first = entries(count);
    for (int index = 0; index < count; ++index) {
        if (std::strcmp(first[index].name, key.c_str()) == 0) {
            return first[index].getter(this);
        }
    }
    return VoJsonPtr();
}

int ElementReadOnlyObject::propertyCount() const {
    int count = 0;
    getPropMap(count);
    return count;
}

VoJsonPtr ElementReadOnlyObject::propertyAt(int index, OdAnsiString& key) const {
    int count = 0;
    const PropEntry* first = entries(count);
    if (index < 0 || index >= count) {
        return VoJsonPtr();
    }
    key = first[index].name;
    return first[index].getter(this);
}

bool ElementReadOnlyObject::hasProperty(const OdAnsiString& key) const {
    return !getProperty(key).isNull();
}

std::time_t ElementReadOnlyObject::timeValueOr(std::time_t defaultValue) const {
    return (valueType() & kElementNoValue) != 0 ? defaultValue : timeValue();
}

std::time_t ElementReadOnlyObject::timePropertyOr(const OdAnsiString& key,
                                                  std::time_t defaultValue) const {
    const VoJsonPtr node = getProperty(key);
    return tree::hasValue(node) ? node->timeValue() : defaultValue;
}

VoJsonPtr ElementReadOnlyObject::selfIfWritable() {
    return (valueType() & kElementReadOnly) != 0 ? VoJsonPtr() : VoJsonPtr(this);
}

// Setters by key: the properties are computed, so there is nothing to store them in.

VoJsonPtr ElementReadOnlyObject::set_propertys(const OdAnsiString&, const OdAnsiString&, bool) {
    return VoJsonPtr();
}
VoJsonPtr ElementReadOnlyObject::set_propertyJ(const OdAnsiString&, const VoJsonPtr&) {
    return VoJsonPtr();
}
VoJsonPtr ElementReadOnlyObject::set_propertyI(const OdAnsiString&, int, bool) {
    return VoJsonPtr();
}
VoJsonPtr ElementReadOnlyObject::set_propertyL(const OdAnsiString&, std::int64_t, bool) {
    return VoJsonPtr();
}
VoJsonPtr ElementReadOnlyObject::set_propertyUL(const OdAnsiString&, std::uint64_t, bool) {
    return VoJsonPtr();
}
VoJsonPtr ElementReadOnlyObject::set_propertyF(const OdAnsiString&, double, bool) {
    return VoJsonPtr();
}
VoJsonPtr ElementReadOnlyObject::set_propertyT(const OdAnsiString&, std::time_t, bool) {
    return VoJsonPtr();
}
VoJsonPtr ElementReadOnlyObject::set_propertyB(const OdAnsiString&, bool, bool) {
    return VoJsonPtr();
}
VoJsonPtr ElementReadOnlyObject::set_propertyP(const OdAnsiString&, void*, bool) {
    return VoJsonPtr();
}
