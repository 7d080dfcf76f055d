// The node for all data that trees hold.
//
// A node owns its children by one reference each and is destroyed on little stack, however deep
// the tree below it is. Nothing looks for cycles: a node that is stored somewhere below itself is
// never freed, and the trees that contain it are too deep to be written, copied or merged.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "utils/elementvaluebase.h"
#include "utils/membertable.h"

class UTILS_EXPORT ElementValue : public IElementValueBase {
  public:
    ODRX_HEAP_OPERATORS()

    /// A node without a value; the creator holds its one reference.
    ElementValue() : type(kElementNull | kElementNoValue) {}
    ~ElementValue() override;

    /// A new empty node of the kind: array, object, text or any other of ElementKind; null for a
    /// number that is none of them.
    static VoJsonPtr createObject(int kind);

    /// Makes the node a text with a copy of the text. `flag` has no effect.
    void initWithUtf8String(const OdAnsiString& text, bool flag);

    /// Releases what the node holds; destructors of derived classes call it.
    void freePointerValue();

    using IElementValueBase::set_propertys;

    void addRef() const override;
    void release() const override;
    int valueType() const override;
    VoJsonPtr getProperty(const OdAnsiString& key) const override;
    VoJsonPtr getItem(int index) const override;
    int itemCount() const override;
    int propertyCount() const override;
    VoJsonPtr propertyAt(int index, OdAnsiString& key) const override;
    bool hasProperty(const OdAnsiString& key) const override;

    OdAnsiString strValue() const override;
    std::int64_t longlongValue() const override;
    std::uint64_t ulonglongValue() const override;
    bool boolValue() const override;
    double floatValue() const override;
    void* ptrValue() const override;
    std::time_t timeValue() const override;
    std::time_t timeValueOr(std::time_t defaultValue) const override;
    std::time_t timePropertyOr(const OdAnsiString& key, std::time_t defaultValue) const override;

    VoJsonPtr set_propertys(const OdAnsiString& key, const OdAnsiString& text, bool flag) override;
    VoJsonPtr set_propertyJ(const OdAnsiString& key, const VoJsonPtr& node) override;
    VoJsonPtr set_propertyI(const OdAnsiString& key, int value, bool flag) override;
    VoJsonPtr set_propertyL(const OdAnsiString& key, std::int64_t value, bool flag) override;
    VoJsonPtr set_propertyUL(const OdAnsiString& key, std::uint64_t value, bool flag) override;
    VoJsonPtr set_propertyF(const OdAnsiString& key, double value, bool flag) override;
    VoJsonPtr set_propertyT(const OdAnsiString& key, std::time_t value, bool flag) override;
    VoJsonPtr set_propertyB(const OdAnsiString& key, bool value, bool flag) override;
    VoJsonPtr set_propertyP(const OdAnsiString& key, void* value, bool flag) override;

    VoJsonPtr set_valueL(std::int64_t value) override;
    VoJsonPtr set_valueUL(std::uint64_t value) override;
    VoJsonPtr set_valueF(double value) override;
    VoJsonPtr set_valueB(bool value) override;
    VoJsonPtr set_values(const OdAnsiString& text) override;
    VoJsonPtr set_valueJ(const VoJsonPtr& node) override;
    VoJsonPtr set_valueI(int value) override;
    VoJsonPtr set_valueT(std::time_t value) override;
    VoJsonPtr set_valueP(void* value) override;

    VoJsonPtr makePath(const OdAnsiString& path) override;
    IElementValueBase* removeProperty(const OdAnsiString& key) override;
    int append(const VoJsonPtr& node) override;
    int insertItem(int index, const VoJsonPtr& node) override;
    int removeItem(int index) override;
    int setItem(int index, const VoJsonPtr& node) override;
    int mergeProperty(const OdAnsiString& key, const VoJsonPtr& subtree) override;
    int propertyIndex(const OdAnsiString& key) const override;
    void clear() override;

  private:
    friend struct ElementAccess;

    using Items = std::vector<VoJsonPtr>;
    // A time is held as an integer. Nothing is held by the kind null and by a node that has been
    // flagged kElementNoValue; OdRxObjectPtr is the pointer that comes with a reference.
    using Value = std::variant<std::monostate, Items, MemberTable, std::string, std::int64_t,
                               std::uint64_t, double, bool, void*, OdRxObjectPtr>;

    template <class T, class... Arguments>
    ElementValue(std::in_place_type_t<T> held, int kind, Arguments&&... arguments)
        : type(static_cast<std::uint16_t>(kind)),
          value(held, std::forward<Arguments>(arguments)...) {}

    mutable OdRefCounter refs;
    std::uint16_t type;
    std::uint16_t placeInBlock = 0;  // from 1; 0 for a node that stands alone
    Value value;
};
