#include "slottreenode.h"

#include "slotjournal.h"
#include "slotlibrary.h"

IElementValueBase::Nothing IElementValueBase::refused(int position) {
    slots::note("Node", position);
    return {};
}

namespace slots {

NodePtr FixedNode::owned(const FixedNode* node) {
    NodePtr pointer(node);
    node->at2();  // the maker's own reference
    return pointer;
}

NodePtr FixedNode::text(const std::string& value) {
    auto* node = new FixedNode(kTextNode);
    node->content = value;
    return owned(node);
}

NodePtr FixedNode::array(std::initializer_list<NodePtr> items) {
    auto* node = new FixedNode(kArrayNode);
    for (const NodePtr& item : items) {
        node->members.emplace_back("", item);
    }
    return owned(node);
}

NodePtr FixedNode::object(std::initializer_list<Member> members) {
    auto* node = new FixedNode(kObjectNode);
    node->members = members;
    return owned(node);
}

void FixedNode::at2() const {
    if (--references == 0) {
        delete this;
    }
}

NodePtr FixedNode::at4(Key key) const {
    for (const auto& [name, node] : members) {
        if (kind == kObjectNode && key == name.c_str()) {
            return node;
        }
    }
    return {};
}

NodePtr FixedNode::at5(int index) const {
    return index >= 0 && index < at6() ? members[static_cast<std::size_t>(index)].second
                                       : NodePtr();
}

NodePtr FixedNode::at8(int index, OdAnsiString& key) const {
    if (index < 0 || index >= at7()) {
        return {};
    }
    const Member& member = members[static_cast<std::size_t>(index)];
    key = member.first;
    return member.second;
}

void provideNodes() {
    const NodePtr core = vo_sys_config("Core");
    const NodePtr settings = FixedNode::object({{"Alias", FixedNode::text("slot.pgp")}});
    callNode<NodePtr(const OdAnsiString&, const NodePtr&)>(core, 21, "CoreLibrary", settings);
}

}  // namespace slots
