// Walks along "/"-separated paths.
#include <charconv>
#include <string_view>

#include "elementaccess.h"

namespace {

// The steps of a path one after the other; there is always at least one.
class PathSteps {
  public:
    explicit PathSteps(std::string_view path)
        : rest(path.ends_with('/') ? path.substr(0, path.size() - 1) : path) {}

    bool more() const { return left; }
    std::string_view next() {
        const std::size_t end = rest.find('/');
        const std::string_view step = rest.substr(0, end);
        left = end != std::string_view::npos;
        rest.remove_prefix(left ? end + 1 : rest.size());
        return step;
    }

  private:
    std::string_view rest;
    bool left = true;
};

// -1 for a step that is no decimal number.
int indexIn(std::string_view step) {
    int index = -1;
    const char* end = step.data() + step.size();
    const auto result = std::from_chars(step.data(), end, index);
    return result.ec == std::errc() && result.ptr == end ? index : -1;
}

// The child of a plain node, without a reference.
IElementValueBase* plainChild(const ElementValue& node, std::string_view step) {
    if (const auto* members = ElementAccess::held<MemberTable>(node)) {
        return members->nodeUnder(step);
    }
    const auto* items = ElementAccess::held<ElementAccess::Items>(node);
    const int index = items ? indexIn(step) : -1;
    const bool inside = index >= 0 && index < node.itemCount();
    return inside ? (*items)[static_cast<std::size_t>(index)].get() : nullptr;
}

VoJsonPtr computedChild(const IElementValueBase& node, std::string_view step) {
    return hasKind(node, kElementArray) ? node.getItem(indexIn(step))
                                        : node.getProperty(OdAnsiString(step));
}

}  // namespace

VoJsonPtr IElementValueBase::quickGetProperty(const OdAnsiString& path) const {
    PathSteps steps(path.view());
    const IElementValueBase* node = this;
    VoJsonPtr answer;  // what a computed node made may live by this reference alone
    IElementValueBase* child = nullptr;
    do {
        const std::string_view step = steps.next();
        if (const ElementValue* plain = ElementAccess::plain(*node)) {
            child = plainChild(*plain, step);
        } else {
            answer = computedChild(*node, step);
            child = answer.get();
        }
        node = child;
    } while (child && steps.more());
    return child;
}

VoJsonPtr ElementValue::makePath(const OdAnsiString& path) {
    PathSteps steps(path.view());
    VoJsonPtr node(this);
    do {
        const OdAnsiString step(steps.next());
        VoJsonPtr child = node->getProperty(step);
        if (!child) {
            child = node->set_propertyJ(step, createObject(kElementObject));
        }
        node = std::move(child);
    } while (node && hasKind(*node.get(), kElementObject) && steps.more());
    return node && hasKind(*node.get(), kElementObject) ? node : nullptr;
}
