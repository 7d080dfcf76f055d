// Makes objects of the object model's classes.
#pragma once

#include "drawing/refcounter.h"
#include "drawing/rxobject.h"

/// Gives a class a reference count that starts at 1; the object goes with its last reference.
template <class T, class TInterface = T>
class OdRxObjectImpl : public T {
  public:
    using T::T;
    // A class may count under the same names for another base; those operations stay reachable.
    using T::addRef;
    using T::release;

    /// A new object, owned by the pointer.
    static OdSmartPtr<TInterface> createObject() {
        return OdSmartPtr<TInterface>(static_cast<TInterface*>(new OdRxObjectImpl), kOdRxObjAttach);
    }

    void addRef() override { refs.increment(); }
    void release() override {
        if (refs.decrement()) {
            delete this;
        }
    }
    long numRefs() const override { return refs.value(); }

  private:
    OdRefCounter refs;
};

/// Gives a class whose objects aren't counted: for objects in static storage.
template <class T>
class OdStaticRxObject : public T {
  public:
    using T::T;

    void addRef() override {}
    void release() override {}
};
