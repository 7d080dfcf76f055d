// A tree node that this module provides: the fifty positions declared here for themselves, under
// the name by which the library knows them, and a node with computed content behind them.
#pragma once

#include <cstdint>
#include <ctime>
#include <string>
#include <utility>
#include <vector>

#include <drawing/runtime.h>

#include "slotnode.h"

class IElementValueBase {
  public:
    using Key = const OdAnsiString&;
    using Node = const slots::NodePtr&;

    IElementValueBase() = default;
    IElementValueBase(const IElementValueBase&) = delete;
    IElementValueBase& operator=(const IElementValueBase&) = delete;
    virtual ~IElementValueBase() = default;

    virtual void at1() const = 0;
    virtual void at2() const = 0;
    virtual int at3() const = 0;
    virtual slots::NodePtr at4(Key key) const = 0;
    virtual slots::NodePtr at5(int index) const = 0;
    virtual int at6() const = 0;
    virtual int at7() const = 0;
    virtual slots::NodePtr at8(int index, OdAnsiString& key) const = 0;
    virtual bool at9(Key key) const = 0;
    virtual OdAnsiString at10() const = 0;
    virtual std::int64_t at11() const { return 0; }
    virtual std::uint64_t at12() const { return 0; }
    virtual bool at13() const { return false; }
    virtual double at14() const { return 0; }
    virtual void* at15() const { return nullptr; }
    virtual std::time_t at16() const { return 0; }
    virtual std::time_t at17(std::time_t /*defaultValue*/) const { return 0; }
    virtual std::time_t at18(Key, std::time_t /*defaultValue*/) const { return 0; }
    virtual slots::NodePtr at19(Key, const OdAnsiString&, bool) { return refused(19); }
    virtual slots::NodePtr at20(Key, const OdString&, bool) { return refused(20); }
    virtual slots::NodePtr at21(Key, Node) { return refused(21); }
    virtual slots::NodePtr at22(Key, int, bool) { return refused(22); }
    virtual slots::NodePtr at23(Key, std::int64_t, bool) { return refused(23); }
    virtual slots::NodePtr at24(Key, std::uint64_t, bool) { return refused(24); }
    virtual slots::NodePtr at25(Key, double, bool) { return refused(25); }
    virtual slots::NodePtr at26(Key, std::time_t, bool) { return refused(26); }
    virtual slots::NodePtr at27(Key, bool, bool) { return refused(27); }
    virtual slots::NodePtr at28(Key, void*, bool) { return refused(28); }
    virtual slots::NodePtr at29(std::int64_t) { return refused(29); }
    virtual slots::NodePtr at30(std::uint64_t) { return refused(30); }
    virtual slots::NodePtr at31(double) { return refused(31); }
    virtual slots::NodePtr at32(bool) { return refused(32); }
    virtual slots::NodePtr at33(const OdAnsiString&) { return refused(33); }
    virtual slots::NodePtr at34(const OdString&) { return refused(34); }
    virtual slots::NodePtr at35(Node) { return refused(35); }
    virtual slots::NodePtr at36(int) { return refused(36); }
    virtual slots::NodePtr at37(std::time_t) { return refused(37); }
    virtual slots::NodePtr at38(void*) { return refused(38); }
    virtual slots::NodePtr at39(const OdAnsiString& /*path*/) { return refused(39); }
    virtual void* at40(Key) { return refused(40); }
    virtual int at41(Node) { return refused(41); }
    virtual int at42(int, Node) { return refused(42); }
    virtual int at43(int) { return refused(43); }
    virtual int at44(int, Node) { return refused(44); }
    virtual bool at45(OdSmartPtr<OdStreamBuf>) const { return refused(45); }
    virtual int at46(Key, Node) { return refused(46); }
    virtual int at47(Key) const { return refused(47); }
    virtual void at48(Node, bool) { refused(48); }
    virtual slots::NodePtr at49() const { return refused(49); }
    virtual void at50() { refused(50); }

  protected:
    /// Nothing of any type, for a position that nobody is expected to call; the journal keeps it.
    struct Nothing {
        operator slots::NodePtr() const { return {}; }
        operator void*() const { return nullptr; }
        operator int() const { return 0; }
        operator bool() const { return false; }
    };
    static Nothing refused(int position);
};

namespace slots {

/// A text, an array or an object whose content is fixed when it is made.
class FixedNode : public IElementValueBase {
  public:
    using Member = std::pair<std::string, NodePtr>;

    static NodePtr text(const std::string& value);
    static NodePtr array(std::initializer_list<NodePtr> items);
    static NodePtr object(std::initializer_list<Member> members);

    void at1() const override { ++references; }
    void at2() const override;
    int at3() const override { return kind; }
    NodePtr at4(Key key) const override;
    NodePtr at5(int index) const override;
    int at6() const override { return kind == kArrayNode ? count() : 0; }
    int at7() const override { return kind == kObjectNode ? count() : 0; }
    NodePtr at8(int index, OdAnsiString& key) const override;
    bool at9(Key key) const override { return static_cast<bool>(at4(key)); }
    OdAnsiString at10() const override { return content; }
    // What can't change need not be copied.
    NodePtr at49() const override { return NodePtr(this); }

    int countOfReferences() const { return references; }

  private:
    explicit FixedNode(int nodeKind) : kind(nodeKind) {}
    static NodePtr owned(const FixedNode* node);
    int count() const { return static_cast<int>(members.size()); }

    int kind;
    std::string content;
    std::vector<Member> members;  // an array's have empty names
    mutable int references = 1;
};

/// Puts an object of this module in the place of a branch that start-up reads later.
void provideNodes();

}  // namespace slots
