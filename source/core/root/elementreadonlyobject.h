// A tree node made of computed properties: a fixed list of names, each with a function that
// computes its value anew for every read. Writes change nothing.
//
// The object counts references but never goes with the last one: whoever made it decides its life,
// so a tree can hold it without owning it. Positions of the operations are those of
// IElementValueBase; getPropMap is position 51, new here.
#pragma once

#include <atomic>
#include <functional>

#include <utils/elementvaluebase.h>

class ElementReadOnlyObject;

/// One computed property.
struct PropEntry {
    const char* name;
    /// Must hold a function: reading an entry without one raises std::bad_function_call.
    std::function<VoJsonPtr(const ElementReadOnlyObject*)> getter;
};

class ElementReadOnlyObject : public IElementValueBase {
  public:
    using IElementValueBase::set_propertys;

    void addRef() const override { references.fetch_add(1, std::memory_order_relaxed); }
    void release() const override {}
    int valueType() const override { return kElementObject | kElementReadOnly; }
    VoJsonPtr getProperty(const OdAnsiString& key) const override;
    VoJsonPtr getItem(int) const override { return VoJsonPtr(); }
    int itemCount() const override { return 0; }
    int propertyCount() const override;
    VoJsonPtr propertyAt(int index, OdAnsiString& key) const override;
    bool hasProperty(const OdAnsiString& key) const override;
    std::time_t timeValueOr(std::time_t defaultValue) const override;
    std::time_t timePropertyOr(const OdAnsiString& key, std::time_t defaultValue) const override;

    VoJsonPtr set_propertys(const OdAnsiString&, const OdAnsiString&, bool) override;
    VoJsonPtr set_propertyJ(const OdAnsiString&, const VoJsonPtr&) override;
    VoJsonPtr set_propertyI(const OdAnsiString&, int, bool) override;
    VoJsonPtr set_propertyL(const OdAnsiString&, std::int64_t, bool) override;
    VoJsonPtr set_propertyUL(const OdAnsiString&, std::uint64_t, bool) override;
    VoJsonPtr set_propertyF(const OdAnsiString&, double, bool) override;
    VoJsonPtr set_propertyT(const OdAnsiString&, std::time_t, bool) override;
    VoJsonPtr set_propertyB(const OdAnsiString&, bool, bool) override;
    VoJsonPtr set_propertyP(const OdAnsiString&, void*, bool) override;

    VoJsonPtr set_valueL(std::int64_t) override { return selfIfWritable(); }
    VoJsonPtr set_valueUL(std::uint64_t) override { return selfIfWritable(); }
    VoJsonPtr set_valueF(double) override { return selfIfWritable(); }
    VoJsonPtr set_valueB(bool) override { return selfIfWritable(); }
    VoJsonPtr set_values(const OdAnsiString&) override { return selfIfWritable(); }
    VoJsonPtr set_valueJ(const VoJsonPtr&) override { return VoJsonPtr(); }
    VoJsonPtr set_valueI(int) override { return selfIfWritable(); }
    VoJsonPtr set_valueT(std::time_t) override { return selfIfWritable(); }
    VoJsonPtr set_valueP(void*) override { return selfIfWritable(); }

    VoJsonPtr makePath(const OdAnsiString&) override { return VoJsonPtr(); }
    IElementValueBase* removeProperty(const OdAnsiString&) override { return this; }
    int append(const VoJsonPtr&) override { return 0; }
    int insertItem(int, const VoJsonPtr&) override { return 0; }
    int removeItem(int) override { return -1; }
    int setItem(int, const VoJsonPtr&) override { return -1; }
    int mergeProperty(const OdAnsiString&, const VoJsonPtr&) override { return 0; }
    int propertyIndex(const OdAnsiString&) const override { return 0; }
    void clear() override {}

    /// The first of `count` entries, null when there are none; they outlive the object.
    /*51*/ virtual const PropEntry* getPropMap(int& count) const;

  private:
    VoJsonPtr selfIfWritable();
    const PropEntry* entries(int& count) const;

    mutable std::atomic<int> references{1};
};
