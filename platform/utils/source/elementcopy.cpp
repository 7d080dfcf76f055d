// Copies of values and trees, and the merge of one tree into another. All of it goes through the
// nodes' virtual operations, so that computed nodes are copied as the values that they have now.
#include <utility>
#include <vector>

#include "elementaccess.h"

namespace {

VoJsonPtr copyOf(const IElementValueBase& node, int levels);

// Null when there are more levels below the array than there may be; so for an object.
VoJsonPtr copyOfArray(const IElementValueBase& array, int levels) {
    VoJsonPtr copy = ElementValue::createObject(kElementArray);
    for (int index = 0; index < array.itemCount(); ++index) {
        const VoJsonPtr item = array.getItem(index);
        const VoJsonPtr itemCopy = item ? copyOf(*item.get(), levels - 1) : nullptr;
        if (item && !itemCopy) {
            return nullptr;
        }
        copy->append(itemCopy);
    }
    return copy;
}

VoJsonPtr copyOfObject(const IElementValueBase& object, int levels) {
    VoJsonPtr copy = ElementValue::createObject(kElementObject);
    for (int index = 0; index < object.propertyCount(); ++index) {
        OdAnsiString key;
        const VoJsonPtr value = object.propertyAt(index, key);
        const VoJsonPtr valueCopy = value ? copyOf(*value.get(), levels - 1) : nullptr;
        if (value && !valueCopy) {
            return nullptr;
        }
        copy->set_propertyJ(key, valueCopy);
    }
    return copy;
}

VoJsonPtr copyOf(const IElementValueBase& node, int levels) {
    const bool array = hasKind(node, kElementArray);
    if (array || hasKind(node, kElementObject)) {
        if (levels == 0) {
            return nullptr;
        }
        return array ? copyOfArray(node, levels) : copyOfObject(node, levels);
    }
    auto* copy = new ElementValue;
    VoJsonPtr pointer = VoJsonPtr::attach(copy);
    copyValue(node, *copy);
    return pointer;
}

// A pointer node's copy takes a reference of its own where the node has one.
void copyPointer(const IElementValueBase& source, ElementValue& target) {
    const auto* element = dynamic_cast<const ElementValue*>(&source);
    if (const auto* object = element ? ElementAccess::held<OdRxObjectPtr>(*element) : nullptr) {
        ElementAccess::become<OdRxObjectPtr>(target, kElementPointer, *object);
    } else {
        ElementAccess::become<void*>(target, kElementPointer, source.ptrValue());
    }
}

using Merge = std::pair<VoJsonPtr, VoJsonPtr>;

// Moves a member of the source, which is nobody else's, to the target, or puts the two off when
// both are objects. Number of values added.
int mergeMember(const VoJsonPtr& target, const OdAnsiString& key, const VoJsonPtr& value,
                std::vector<Merge>& later) {
    const VoJsonPtr present = target->getProperty(key);
    if (!present) {
        return target->set_propertyJ(key, value) ? 1 : 0;
    }
    if (hasKind(*present.get(), kElementObject) && hasKind(*value.get(), kElementObject)) {
        later.emplace_back(present, value);
    }
    return 0;
}

int mergeAll(std::vector<Merge> merges) {
    int added = 0;
    while (!merges.empty()) {
        const auto [target, source] = std::move(merges.back());
        merges.pop_back();
        for (int index = 0; index < source->propertyCount(); ++index) {
            OdAnsiString key;
            const VoJsonPtr value = source->propertyAt(index, key);
            added += mergeMember(target, key, value, merges);
        }
    }
    return added;
}

}  // namespace

bool copyValue(const IElementValueBase& source, ElementValue& target) {
    const int flags = source.valueType();
    const int kind = flags & kElementKindMask;
    if (kind == kElementArray || kind == kElementObject) {
        return false;
    }
    if ((flags & kElementNoValue) != 0) {
        ElementAccess::become<std::monostate>(target, kind | kElementNoValue);
        return true;
    }
    switch (kind) {
        case kElementText:
            ElementAccess::become<std::string>(target, kind, source.strValue().view());
            break;
        case kElementInteger:
            ElementAccess::become<std::int64_t>(target, kind, source.longlongValue());
            break;
        case kElementUnsigned:
            ElementAccess::become<std::uint64_t>(target, kind, source.ulonglongValue());
            break;
        case kElementReal:
            ElementAccess::become<double>(target, kind, source.floatValue());
            break;
        case kElementBoolean:
            ElementAccess::become<bool>(target, kind, source.boolValue());
            break;
        case kElementTime:
            ElementAccess::become<std::int64_t>(target, kind, source.timeValue());
            break;
        case kElementPointer:
            copyPointer(source, target);
            break;
        default:
            ElementAccess::become<std::monostate>(target, kElementNull | kElementNoValue);
    }
    return true;
}

int ElementValue::mergeProperty(const OdAnsiString& key, const VoJsonPtr& subtree) {
    if (!hasKind(*this, kElementObject) || !subtree) {
        return 0;
    }
    // The copy is made first: it is bounded in depth, and the subtree may be part of this tree.
    const VoJsonPtr copy = subtree->clone();
    if (!copy) {
        return 0;
    }
    std::vector<Merge> nested;
    const int added = mergeMember(this, key, copy, nested);
    return added + mergeAll(std::move(nested));
}

void IElementValueBase::copySubProperty(const VoJsonPtr& source, bool replace) {
    if (!source || !hasKind(*source.get(), kElementObject)) {
        return;
    }
    const VoJsonPtr copy = source->clone();
    const int count = copy ? copy->propertyCount() : 0;
    for (int index = 0; index < count; ++index) {
        OdAnsiString key;
        const VoJsonPtr value = copy->propertyAt(index, key);
        if (replace || !hasProperty(key)) {
            set_propertyJ(key, value);
        }
    }
}

VoJsonPtr IElementValueBase::clone() const {
    return copyOf(*this, kMaxDepth);
}
