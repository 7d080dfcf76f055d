// The storage of plain nodes, for the other rooms of the value tree in this folder.
#pragma once

#include <string_view>
#include <typeinfo>
#include <utility>

#include "utils/elementvalue.h"

struct ElementAccess {
    using Items = ElementValue::Items;
    using Value = ElementValue::Value;

    /// The node as an ElementValue whose operations nobody has overridden, so that its storage may
    /// be read in their place; null for any other.
    static const ElementValue* plain(const IElementValueBase& node) {
        return typeid(node) == typeid(ElementValue) ? static_cast<const ElementValue*>(&node)
                                                    : nullptr;
    }

    static Value& value(ElementValue& node) { return node.value; }
    static const Value& value(const ElementValue& node) { return node.value; }

    /// What the node holds if it holds just that, else null.
    template <class T>
    static T* held(ElementValue& node) {
        return std::get_if<T>(&node.value);
    }
    template <class T>
    static const T* held(const ElementValue& node) {
        return std::get_if<T>(&node.value);
    }

    static bool isUnshared(const ElementValue& node) { return node.refs.isOne(); }

    /// Makes the node one of the kind with a new value. The old value goes last of all, since its
    /// release may run code that looks at the node.
    template <class T, class... Arguments>
    static void become(ElementValue& node, int kind, Arguments&&... arguments) {
        Value value(std::in_place_type<T>, std::forward<Arguments>(arguments)...);
        node.type = static_cast<std::uint16_t>(kind);
        std::swap(node.value, value);
    }

    /// A new node of the kind.
    template <class T, class... Arguments>
    static VoJsonPtr make(int kind, Arguments&&... arguments) {
        return VoJsonPtr::attach(
            new ElementValue(std::in_place_type<T>, kind, std::forward<Arguments>(arguments)...));
    }

    /// A new node in a place of a block; nodeblock.h has the rest.
    template <class T, class... Arguments>
    static VoJsonPtr makeAt(void* memory, std::uint16_t place, int kind, Arguments&&... arguments) {
        auto* node = new (memory)
            ElementValue(std::in_place_type<T>, kind, std::forward<Arguments>(arguments)...);
        node->placeInBlock = place;
        return VoJsonPtr::attach(node);
    }
    static std::uint16_t placeInBlock(const ElementValue& node) { return node.placeInBlock; }
};

/// Whether the node has the kind, whatever its flags are.
inline bool hasKind(const IElementValueBase& node, int kind) {
    return (node.valueType() & kElementKindMask) == kind;
}

/// Gives the target kind and value of a node that is no array or object; false, and no change, for
/// one that is. In elementcopy.cpp.
bool copyValue(const IElementValueBase& source, ElementValue& target);
