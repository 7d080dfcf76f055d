// Root of the runtime's object model and its smart pointers.
//
// Applications and modules that were built apart call these operations by their place in the
// virtual table, so the order below is fixed: the destructor entries, then queryX, x, isA, addRef,
// release, numRefs, clone, copyFrom, comparedTo, isEqualTo.
#pragma once

#include <type_traits>
#include <utility>

#include "drawing/export.h"
#include "drawing/odalloc.h"
#include "drawing/oderror.h"

class OdRxClass;
class OdRxObject;

namespace OdRx {
enum Ordering { kLessThan = -1, kEqual = 0, kGreaterThan = 1, kNotOrderable = 2 };
}

/// Tells a smart pointer that the reference it is given is handed over to it.
enum OdRxObjMod { kOdRxObjAttach };

template <class T>
class OdSmartPtr;
using OdRxObjectPtr = OdSmartPtr<OdRxObject>;

class DRAWING_EXPORT OdRxObject {
  public:
    ODRX_HEAP_OPERATORS()

    OdRxObject() = default;
    OdRxObject(const OdRxObject&) = delete;
    OdRxObject& operator=(const OdRxObject&) = delete;
    virtual ~OdRxObject() = default;

    /// The object itself if it is of the class, else the protocol extension of that class that its
    /// own class carries, else null. A result carries a reference for the caller.
    virtual OdRxObject* queryX(const OdRxClass* protocolClass) const;
    /// The protocol extension alone; a result carries a reference for the caller.
    virtual OdRxObject* x(const OdRxClass* protocolClass) const;
    virtual OdRxClass* isA() const;
    /// References are atomic. The root class counts nothing: OdRxObjectImpl does.
    virtual void addRef();
    virtual void release();
    virtual long numRefs() const;
    /// A copy; null for classes that have none.
    virtual OdRxObjectPtr clone() const;
    /// Raises OdError (eNotApplicable) for classes that can't be copied.
    virtual void copyFrom(const OdRxObject* source);
    virtual OdRx::Ordering comparedTo(const OdRxObject* other) const;
    virtual bool isEqualTo(const OdRxObject* other) const;

    /// The class of OdRxObject; it is there before odInitialize and after odUninitialize too.
    static OdRxClass* desc();
};

/// Reference-counting pointer. Making one of another class's pointer asks the object through queryX
/// and raises OdError_NotThatKindOfClass when it doesn't answer; cast gives null instead.
template <class T>
class OdSmartPtr {
  public:
    OdSmartPtr() = default;
    OdSmartPtr(std::nullptr_t) {}
    /// Takes a new reference.
    OdSmartPtr(const T* object) : held(const_cast<T*>(object)) { hold(); }
    /// Takes over the caller's reference.
    OdSmartPtr(const T* object, OdRxObjMod) : held(const_cast<T*>(object)) {}
    OdSmartPtr(const OdSmartPtr& other) : held(other.held) { hold(); }
    OdSmartPtr(OdSmartPtr&& other) noexcept : held(std::exchange(other.held, nullptr)) {}
    template <class Other>
    requires(!std::is_same_v<Other, T>) OdSmartPtr(const OdSmartPtr<Other>& other) {
        if constexpr (std::is_base_of_v<T, Other>) {
            held = other.get();
            hold();
        } else {
            held = queried(other.get());
            if (!held && other.get()) {
                throw OdError_NotThatKindOfClass(other->isA(), T::desc());
            }
        }
    }
    OdSmartPtr& operator=(OdSmartPtr other) noexcept {
        std::swap(held, other.held);
        return *this;
    }
    ~OdSmartPtr() { release(); }

    /// The object as this class, null when it is none or null.
    static OdSmartPtr cast(const OdRxObject* object) {
        return OdSmartPtr(queried(object), kOdRxObjAttach);
    }

    T* get() const { return held; }
    /// Raises OdError (eNotApplicable) on a null pointer rather than calling through it.
    T* operator->() const {
        if (!held) {
            throw OdError(eNotApplicable, L"null object pointer");
        }
        return held;
    }
    T& operator*() const { return *operator->(); }
    bool isNull() const { return held == nullptr; }
    explicit operator bool() const { return held != nullptr; }

    /// Drops the reference.
    void release() {
        if (T* dropped = std::exchange(held, nullptr)) {
            dropped->release();
        }
    }
    /// Hands the reference over to the caller.
    T* detach() { return std::exchange(held, nullptr); }
    void attach(const T* object) { *this = OdSmartPtr(object, kOdRxObjAttach); }

    friend bool operator==(const OdSmartPtr& a, const OdSmartPtr& b) { return a.held == b.held; }
    friend bool operator==(const OdSmartPtr& a, const T* b) { return a.held == b; }
    friend bool operator==(const OdSmartPtr& a, std::nullptr_t) { return a.held == nullptr; }

  private:
    // A class without a run-time class of its own has that of OdRxObject, which every object
    // answers to; its type is then a promise of whoever hands the object out.
    static T* queried(const OdRxObject* object) {
        return object ? static_cast<T*>(object->queryX(T::desc())) : nullptr;
    }
    void hold() const {
        if (held) {
            held->addRef();
        }
    }

    T* held = nullptr;
};
