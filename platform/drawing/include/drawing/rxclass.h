// Run-time classes and protocol extensions.
#pragma once

#include "drawing/rxobject.h"

/// Declares a run-time class in a class body. Until rxInit and after rxUninit desc() is null.
#define ODRX_DECLARE_MEMBERS(ClassName)                           \
  public:                                                         \
    static OdRxClass* desc();                                     \
    OdRxClass* isA() const override;                              \
    static void rxInit();                                         \
    static void rxUninit();                                       \
    static OdSmartPtr<ClassName> cast(const OdRxObject* object) { \
        return OdSmartPtr<ClassName>::cast(object);               \
    }                                                             \
                                                                  \
  private:                                                        \
    static OdRxClass* rxClassOfThis;                              \
                                                                  \
  public:

/// The run-time description of one class. Classes form a single-rooted tree; a class may carry
/// protocol extensions, objects that answer for its instances.
class DRAWING_EXPORT OdRxClass : public OdRxObject {
    ODRX_DECLARE_MEMBERS(OdRxClass)

    virtual const OdString& name() const = 0;
    virtual OdRxClass* myParent() const = 0;
    virtual bool isDerivedFrom(const OdRxClass* other) const = 0;

    /// A new object of the class with one reference, null when the class is abstract.
    virtual OdRxObjectPtr create() const = 0;

    /// Adds the extension for a protocol class and gives back the one that it replaces.
    virtual OdRxObjectPtr addX(OdRxClass* protocolClass, OdRxObject* extension) = 0;
    /// The extension for a protocol class, of this class or of its nearest parent that has one.
    virtual OdRxObjectPtr getX(const OdRxClass* protocolClass) const = 0;
    virtual OdRxObjectPtr delX(const OdRxClass* protocolClass) = 0;
};

using OdPseudoConstructor = OdRxObjectPtr (*)();

/// Makes a run-time class. The name must be new, and a class is made on one thread at a time;
/// otherwise raises OdError (eInvalidInput). A null parent is one whose own rxInit hasn't run:
/// raises OdError (eNotInitializedYet). The constructor is null for an abstract class.
DRAWING_EXPORT OdRxClass* newOdRxClass(const OdString& name, OdRxClass* parent,
                                       OdPseudoConstructor constructor);

/// Ends a class of newOdRxClass together with its extensions; null is allowed.
DRAWING_EXPORT void deleteOdRxClass(OdRxClass* rxClass);

/// Defines the members of ODRX_DECLARE_MEMBERS. CONSTRUCTOR is an OdPseudoConstructor or nullptr.
#define ODRX_DEFINE_MEMBERS(ClassName, Parent, CONSTRUCTOR, NAME)            \
    OdRxClass* ClassName::rxClassOfThis = nullptr;                           \
    OdRxClass* ClassName::desc() {                                           \
        return rxClassOfThis;                                                \
    }                                                                        \
    OdRxClass* ClassName::isA() const {                                      \
        return rxClassOfThis;                                                \
    }                                                                        \
    void ClassName::rxInit() {                                               \
        if (!rxClassOfThis) {                                                \
            rxClassOfThis = newOdRxClass(NAME, Parent::desc(), CONSTRUCTOR); \
        }                                                                    \
    }                                                                        \
    void ClassName::rxUninit() {                                             \
        deleteOdRxClass(std::exchange(rxClassOfThis, nullptr));              \
    }
