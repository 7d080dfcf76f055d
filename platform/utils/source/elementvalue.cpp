// Node storage: life, kind and children of plain nodes.
#include "utils/elementvalue.h"

#include "elementaccess.h"
#include "nodeblock.h"

namespace {

bool holdsChildren(const ElementValue& node) {
    if (const auto* items = ElementAccess::held<ElementAccess::Items>(node)) {
        return !items->empty();
    }
    const auto* members = ElementAccess::held<MemberTable>(node);
    return members && members->size() > 0;
}

// The node if it takes children with it when this one reference to it goes.
ElementValue* lastParent(IElementValueBase* node) {
    if (!node) {
        return nullptr;
    }
    auto* element = ElementAccess::plain(*node) ? static_cast<ElementValue*>(node)
                                                : dynamic_cast<ElementValue*>(node);
    const bool last = element && ElementAccess::isUnshared(*element) && holdsChildren(*element);
    return last ? element : nullptr;
}

VoJsonPtr& firstChild(ElementAccess::Value& value) {
    auto* items = std::get_if<ElementAccess::Items>(&value);
    return items ? items->front() : std::get<MemberTable>(value).slot(0);
}

ElementAccess::Value& valueOf(const VoJsonPtr& parent) {
    return ElementAccess::value(static_cast<ElementValue&>(*parent.get()));
}

// Drops what stands below a node, on little stack however deep that is.
class Dismantling {
  public:
    void run(ElementAccess::Value& value) {
        dropChildren(value);
        while (waiting) {
            VoJsonPtr parent = std::move(waiting);
            waiting = std::move(firstChild(valueOf(parent)));
            dropChildren(valueOf(parent));
            letGo(std::move(parent));
        }
    }

  private:
    // The value is left without children, and good for nothing but its end.
    void dropChildren(ElementAccess::Value& value) {
        if (auto* items = std::get_if<ElementAccess::Items>(&value)) {
            for (VoJsonPtr& item : *items) {
                drop(item);
            }
            items->clear();
        } else if (auto* members = std::get_if<MemberTable>(&value)) {
            for (std::size_t place = 0; place < members->size(); ++place) {
                drop(members->slot(place));
            }
            *members = MemberTable();
        }
    }

    // Lets a child go, its own children first.
    void drop(VoJsonPtr& child) {
        if (lastParent(child.get())) {
            if (levels < kMostLevels) {
                ++levels;
                dropChildren(valueOf(child));
                --levels;
            } else {
                wait(child);
            }
        }
        letGo(std::move(child));
    }

    // Puts off a child that has children: in a list through the places of first children, since
    // nodes end where there may be no memory for a list. What stood in the last such place is left.
    void wait(VoJsonPtr& child) {
        while (lastParent(child.get())) {
            VoJsonPtr first = std::exchange(firstChild(valueOf(child)), std::move(waiting));
            waiting = std::exchange(child, std::move(first));
        }
    }

    // Most nodes end here, without a call through their table.
    void letGo(VoJsonPtr node) {
        if (node && ElementAccess::plain(*node.get())) {
            auto& element = static_cast<ElementValue&>(*node.get());
            if (ElementAccess::isUnshared(element)) {
                node.detach();
                ender.end(element);
            }
        }
    }

    // Enough for any tree that isn't made to be deep.
    static constexpr int kMostLevels = 16;

    int levels = 0;
    VoJsonPtr waiting;
    NodeEnder ender;
};

void dismantle(ElementAccess::Value value) {
    Dismantling().run(value);
}

}  // namespace

ElementValue::~ElementValue() {
    if (holdsChildren(*this)) {
        freePointerValue();
    }
}

void ElementValue::freePointerValue() {
    type = kElementNull | kElementNoValue;
    dismantle(std::exchange(value, Value()));
}

VoJsonPtr ElementValue::createObject(int kind) {
    switch (kind) {
        case kElementArray:
            return ElementAccess::make<Items>(kind);
        case kElementObject:
            return ElementAccess::make<MemberTable>(kind);
        case kElementText:
            return ElementAccess::make<std::string>(kind);
        case kElementInteger:
        case kElementTime:
            return ElementAccess::make<std::int64_t>(kind);
        case kElementUnsigned:
            return ElementAccess::make<std::uint64_t>(kind);
        case kElementReal:
            return ElementAccess::make<double>(kind);
        case kElementBoolean:
            return ElementAccess::make<bool>(kind);
        case kElementPointer:
            return ElementAccess::make<void*>(kind);
        case kElementNull:
            return VoJsonPtr::attach(new ElementValue);
        default:
            return nullptr;
    }
}

void ElementValue::initWithUtf8String(const OdAnsiString& text, bool /*flag*/) {
    freePointerValue();
    ElementAccess::become<std::string>(*this, kElementText, text.view());
}

void ElementValue::addRef() const {
    refs.increment();
}

void ElementValue::release() const {
    if (refs.decrement()) {
        NodeEnder().end(const_cast<ElementValue&>(*this));
    }
}

int ElementValue::valueType() const {
    return type;
}

VoJsonPtr ElementValue::getProperty(const OdAnsiString& key) const {
    const auto* members = std::get_if<MemberTable>(&value);
    return members ? members->nodeUnder(key.view()) : nullptr;
}

VoJsonPtr ElementValue::getItem(int index) const {
    const bool inside = index >= 0 && index < itemCount();
    return inside ? std::get<Items>(value)[static_cast<std::size_t>(index)] : nullptr;
}

int ElementValue::itemCount() const {
    const auto* items = std::get_if<Items>(&value);
    return items ? static_cast<int>(items->size()) : 0;
}

int ElementValue::propertyCount() const {
    const auto* members = std::get_if<MemberTable>(&value);
    return members ? static_cast<int>(members->size()) : 0;
}

VoJsonPtr ElementValue::propertyAt(int index, OdAnsiString& key) const {
    if (index < 0 || index >= propertyCount()) {
        return nullptr;
    }
    const auto& member = std::get<MemberTable>(value).at(static_cast<std::size_t>(index));
    key = member.key;
    return member.node;
}

bool ElementValue::hasProperty(const OdAnsiString& key) const {
    return propertyIndex(key) > 0;
}

int ElementValue::propertyIndex(const OdAnsiString& key) const {
    const auto* members = std::get_if<MemberTable>(&value);
    return members ? members->find(key.view()) + 1 : 0;
}

IElementValueBase* ElementValue::removeProperty(const OdAnsiString& key) {
    if (const int index = propertyIndex(key); index > 0) {
        std::get<MemberTable>(value).remove(static_cast<std::size_t>(index - 1));
    }
    return this;
}

int ElementValue::append(const VoJsonPtr& node) {
    return insertItem(itemCount(), node);
}

int ElementValue::insertItem(int index, const VoJsonPtr& node) {
    auto* items = std::get_if<Items>(&value);
    if (!items || !node || index < 0 || index > itemCount()) {
        return 0;
    }
    items->insert(items->begin() + index, node);
    return itemCount();
}

int ElementValue::removeItem(int index) {
    if (index < 0 || index >= itemCount()) {
        return -1;
    }
    auto& items = std::get<Items>(value);
    // The node outlives the shift: its release may run code that looks at this array.
    const VoJsonPtr removed = items[static_cast<std::size_t>(index)];
    items.erase(items.begin() + index);
    return index;
}

int ElementValue::setItem(int index, const VoJsonPtr& node) {
    if (!node || index < 0 || index >= itemCount()) {
        return -1;
    }
    std::get<Items>(value)[static_cast<std::size_t>(index)] = node;
    return index;
}

void ElementValue::clear() {
    if ((valueType() & kElementReadOnly) != 0) {
        return;
    }
    Value emptied;
    if (std::holds_alternative<Items>(value)) {
        emptied.emplace<Items>();
    } else if (std::holds_alternative<MemberTable>(value)) {
        emptied.emplace<MemberTable>();
    } else {
        type = static_cast<std::uint16_t>(type | kElementNoValue);
    }
    dismantle(std::exchange(value, std::move(emptied)));
}
