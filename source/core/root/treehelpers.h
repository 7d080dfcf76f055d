// Small readers of value trees, each with an answer for what isn't there.
#pragma once

#include <utils/elementvalue.h>

namespace tree {

inline bool hasKind(const VoJsonPtr& node, int kind) {
    return node && (node->valueType() & kElementKindMask) == kind;
}

inline bool isArray(const VoJsonPtr& node) {
    return hasKind(node, kElementArray);
}
inline bool isObject(const VoJsonPtr& node) {
    return hasKind(node, kElementObject);
}

inline bool hasValue(const VoJsonPtr& node) {
    return node && (node->valueType() & kElementNoValue) == 0;
}

inline OdAnsiString textOr(const VoJsonPtr& node, const OdAnsiString& defaultValue) {
    return hasValue(node) ? node->strValue() : defaultValue;
}

inline bool boolOr(const VoJsonPtr& node, bool defaultValue) {
    return hasValue(node) ? node->boolValue() : defaultValue;
}

inline int integerPropertyOr(const VoJsonPtr& node, const char* key, int defaultValue) {
    int value = defaultValue;
    if (node) {
        node->GetDataI(key, value);
    }
    return value;
}

/// The node at a path, null below a null node.
inline VoJsonPtr at(const VoJsonPtr& node, const OdAnsiString& path) {
    return node ? node->quickGetProperty(path) : VoJsonPtr();
}

/// The direct child under a key; a child of another kind than an object reads as absent.
inline VoJsonPtr objectUnder(const VoJsonPtr& node, const char* key) {
    VoJsonPtr child;
    if (node) {
        node->GetDataJ(key, child);
    }
    return isObject(child) ? child : VoJsonPtr();
}

inline void* pointerPropertyOr(const VoJsonPtr& node, const OdAnsiString& key, void* defaultValue) {
    const VoJsonPtr child = node ? node->getProperty(key) : VoJsonPtr();
    return hasValue(child) ? child->ptrValue() : defaultValue;
}

inline VoJsonPtr newArray() {
    return ElementValue::createObject(kElementArray);
}
inline VoJsonPtr newObject() {
    return ElementValue::createObject(kElementObject);
}

/// A new text node.
inline VoJsonPtr text(const OdAnsiString& value) {
    auto* node = new ElementValue;
    node->initWithUtf8String(value, true);
    return VoJsonPtr::attach(node);
}

}  // namespace tree
