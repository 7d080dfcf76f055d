// Setters: children by key, and the node's own value.
#include "elementaccess.h"

namespace {

// A new child with the value; null when the node is no object.
template <class T, class Argument>
VoJsonPtr storeNew(ElementValue& node, const OdAnsiString& key, int kind, Argument&& argument) {
    auto* members = ElementAccess::held<MemberTable>(node);
    if (!members) {
        return nullptr;
    }
    VoJsonPtr child = ElementAccess::make<T>(kind, std::forward<Argument>(argument));
    members->set(key.view(), child);
    return child;
}

bool takesValue(const ElementValue& node) {
    const int flags = node.valueType();
    const int kind = flags & kElementKindMask;
    return kind != kElementArray && kind != kElementObject && (flags & kElementReadOnly) == 0;
}

template <class T, class Argument>
VoJsonPtr assign(ElementValue& node, int kind, Argument&& argument) {
    if (!takesValue(node)) {
        return nullptr;
    }
    ElementAccess::become<T>(node, kind, std::forward<Argument>(argument));
    return &node;
}

}  // namespace

VoJsonPtr ElementValue::set_propertys(const OdAnsiString& key, const OdAnsiString& text,
                                      bool /*flag*/) {
    return storeNew<std::string>(*this, key, kElementText, text.view());
}

VoJsonPtr ElementValue::set_propertyJ(const OdAnsiString& key, const VoJsonPtr& node) {
    auto* members = std::get_if<MemberTable>(&value);
    if (!members || !node) {
        return nullptr;
    }
    VoJsonPtr stored = node;
    members->set(key.view(), stored);
    return stored;
}

VoJsonPtr ElementValue::set_propertyI(const OdAnsiString& key, int number, bool flag) {
    return set_propertyL(key, number, flag);
}

VoJsonPtr ElementValue::set_propertyL(const OdAnsiString& key, std::int64_t number, bool /*flag*/) {
    return storeNew<std::int64_t>(*this, key, kElementInteger, number);
}

VoJsonPtr ElementValue::set_propertyUL(const OdAnsiString& key, std::uint64_t number,
                                       bool /*flag*/) {
    return storeNew<std::uint64_t>(*this, key, kElementUnsigned, number);
}

VoJsonPtr ElementValue::set_propertyF(const OdAnsiString& key, double number, bool /*flag*/) {
    return storeNew<double>(*this, key, kElementReal, number);
}

VoJsonPtr ElementValue::set_propertyT(const OdAnsiString& key, std::time_t time, bool /*flag*/) {
    return storeNew<std::int64_t>(*this, key, kElementTime, std::int64_t{time});
}

VoJsonPtr ElementValue::set_propertyB(const OdAnsiString& key, bool boolean, bool /*flag*/) {
    return storeNew<bool>(*this, key, kElementBoolean, boolean);
}

VoJsonPtr ElementValue::set_propertyP(const OdAnsiString& key, void* pointer, bool /*flag*/) {
    return storeNew<void*>(*this, key, kElementPointer, pointer);
}

VoJsonPtr ElementValue::set_valueL(std::int64_t number) {
    return assign<std::int64_t>(*this, kElementInteger, number);
}

VoJsonPtr ElementValue::set_valueUL(std::uint64_t number) {
    return assign<std::uint64_t>(*this, kElementUnsigned, number);
}

VoJsonPtr ElementValue::set_valueF(double number) {
    return assign<double>(*this, kElementReal, number);
}

VoJsonPtr ElementValue::set_valueB(bool boolean) {
    return assign<bool>(*this, kElementBoolean, boolean);
}

VoJsonPtr ElementValue::set_values(const OdAnsiString& text) {
    return assign<std::string>(*this, kElementText, text.view());
}

VoJsonPtr ElementValue::set_valueJ(const VoJsonPtr& node) {
    return node && takesValue(*this) && copyValue(*node.get(), *this) ? VoJsonPtr(this) : nullptr;
}

VoJsonPtr ElementValue::set_valueI(int number) {
    return set_valueL(number);
}

VoJsonPtr ElementValue::set_valueT(std::time_t time) {
    return assign<std::int64_t>(*this, kElementTime, std::int64_t{time});
}

VoJsonPtr ElementValue::set_valueP(void* pointer) {
    return assign<void*>(*this, kElementPointer, pointer);
}

VoJsonPtr IElementValueBase::set_value_rxobject_ptr(OdRxObject* object) {
    auto* element = dynamic_cast<ElementValue*>(this);
    return element ? assign<OdRxObjectPtr>(*element, kElementPointer, object) : nullptr;
}
