// An object node whose properties are computed when they are asked for, as a derived class that was
// built apart makes them.
#pragma once

#include "utils/elementvalue.h"

class ComputedNode : public IElementValueBase {
  public:
    /// Lives where it is made; counts are kept so that a test can compare them.
    void addRef() const override { ++references; }
    void release() const override { --references; }
    int valueType() const override { return kElementObject | kElementReadOnly; }

    VoJsonPtr getProperty(const OdAnsiString& key) const override {
        ++asked;
        if (key == "size") {
            VoJsonPtr size = ElementValue::createObject(kElementObject);
            size->set_propertyI("asked", asked, false);
            return size;
        }
        return nullptr;
    }
    VoJsonPtr propertyAt(int index, OdAnsiString& key) const override {
        if (index != 0) {
            return nullptr;
        }
        key = "size";
        return getProperty(key);
    }
    int propertyCount() const override { return 1; }
    bool hasProperty(const OdAnsiString& key) const override { return key == "size"; }
    int propertyIndex(const OdAnsiString&) const override { return 0; }
    VoJsonPtr getItem(int) const override { return nullptr; }
    int itemCount() const override { return 0; }
    std::time_t timeValueOr(std::time_t) const override { return 0; }
    std::time_t timePropertyOr(const OdAnsiString&, std::time_t value) const override {
        return value;
    }

    using IElementValueBase::set_propertys;
    VoJsonPtr set_propertys(const OdAnsiString&, const OdAnsiString&, bool) override {
        return nullptr;
    }
    VoJsonPtr set_propertyJ(const OdAnsiString&, const VoJsonPtr&) override { return nullptr; }
    VoJsonPtr set_propertyI(const OdAnsiString&, int, bool) override { return nullptr; }
    VoJsonPtr set_propertyL(const OdAnsiString&, std::int64_t, bool) override { return nullptr; }
    VoJsonPtr set_propertyUL(const OdAnsiString&, std::uint64_t, bool) override { return nullptr; }
    VoJsonPtr set_propertyF(const OdAnsiString&, double, bool) override { return nullptr; }
    VoJsonPtr set_propertyT(const OdAnsiString&, std::time_t, bool) override { return nullptr; }
    VoJsonPtr set_propertyB(const OdAnsiString&, bool, bool) override { return nullptr; }
    VoJsonPtr set_propertyP(const OdAnsiString&, void*, bool) override { return nullptr; }
    VoJsonPtr set_valueL(std::int64_t) override { return nullptr; }
    VoJsonPtr set_valueUL(std::uint64_t) override { return nullptr; }
    VoJsonPtr set_valueF(double) override { return nullptr; }
    VoJsonPtr set_valueB(bool) override { return nullptr; }
    VoJsonPtr set_values(const OdAnsiString&) override { return nullptr; }
    VoJsonPtr set_valueJ(const VoJsonPtr&) override { return nullptr; }
    VoJsonPtr set_valueI(int) override { return nullptr; }
    VoJsonPtr set_valueT(std::time_t) override { return nullptr; }
    VoJsonPtr set_valueP(void*) override { return nullptr; }
    VoJsonPtr makePath(const OdAnsiString&) override { return nullptr; }
    IElementValueBase* removeProperty(const OdAnsiString&) override { return this; }
    int append(const VoJsonPtr&) override { return 0; }
    int insertItem(int, const VoJsonPtr&) override { return 0; }
    int removeItem(int) override { return -1; }
    int setItem(int, const VoJsonPtr&) override { return -1; }
    int mergeProperty(const OdAnsiString&, const VoJsonPtr&) override { return 0; }
    void clear() override {}

    mutable int references = 1;
    mutable int asked = 0;
};
