// Run-time classes. A class object lives as long as somebody holds it (a derived class, a
// dictionary, another class's extension under it), so that no pointer to one dangles; its name and
// its extensions go when it is ended.
#include "drawing/rxclass.h"

#include <map>
#include <vector>

#include "drawing/rxobjectimpl.h"
#include "rootclass.h"

ODRX_DEFINE_MEMBERS(OdRxClass, OdRxObject, nullptr, L"OdRxClass")

namespace {

using ClassPtr = OdSmartPtr<OdRxClass>;

class RxClassImpl : public OdRxClass {
  public:
    RxClassImpl(const OdString& className, OdRxClass* parentClass, OdPseudoConstructor maker)
        : ownName(className), parent(parentClass), constructor(maker) {}

    const OdString& name() const override { return ownName; }
    OdRxClass* myParent() const override { return parent.get(); }

    bool isDerivedFrom(const OdRxClass* other) const override {
        const OdRxClass* ancestor = this;
        while (ancestor && ancestor != other) {
            ancestor = ancestor->myParent();
        }
        return ancestor != nullptr;
    }

    OdRxObjectPtr create() const override { return constructor ? constructor() : nullptr; }

    OdRxObjectPtr addX(OdRxClass* protocolClass, OdRxObject* extension) override {
        if (!protocolClass || !extension) {
            throw OdError(eInvalidInput, L"an extension needs a protocol class and an object");
        }
        OdRxObjectPtr former = delX(protocolClass);
        extensions.push_back({protocolClass, extension});
        return former;
    }

    OdRxObjectPtr getX(const OdRxClass* protocolClass) const override {
        for (const Extension& row : extensions) {
            if (row.protocolClass == protocolClass) {
                return row.object;
            }
        }
        return parent.isNull() ? nullptr : parent->getX(protocolClass);
    }

    OdRxObjectPtr delX(const OdRxClass* protocolClass) override {
        for (auto row = extensions.begin(); row != extensions.end(); ++row) {
            if (row->protocolClass == protocolClass) {
                OdRxObjectPtr removed = row->object;
                extensions.erase(row);
                return removed;
            }
        }
        return nullptr;
    }

    void dropExtensions() {
        // An extension's end may ask this class again: it finds none by then.
        const std::vector<Extension> dropped = std::exchange(extensions, {});
    }

  private:
    struct Extension {
        ClassPtr protocolClass;
        OdRxObjectPtr object;
    };

    OdString ownName;
    ClassPtr parent;
    OdPseudoConstructor constructor;
    std::vector<Extension> extensions;
};

RxClassImpl* makeClass(const OdString& name, OdRxClass* parent, OdPseudoConstructor constructor) {
    return new OdRxObjectImpl<RxClassImpl>(name, parent, constructor);
}

// Never destroyed: classes are looked at until the process is gone.
RxClassImpl& rootClass() {
    static RxClassImpl* const root = makeClass(L"OdRxObject", nullptr, nullptr);
    return *root;
}

// The living classes but the root, by name.
std::map<OdString, RxClassImpl*>& livingClasses() {
    static auto* const classes = new std::map<OdString, RxClassImpl*>;
    return *classes;
}

}  // namespace

OdRxClass* OdRxObject::desc() {
    return &rootClass();
}

void dropRootExtensions() {
    rootClass().dropExtensions();
}

OdRxClass* newOdRxClass(const OdString& name, OdRxClass* parent, OdPseudoConstructor constructor) {
    if (!parent) {
        throw OdError(eNotInitializedYet, L"parent class of " + name);
    }
    if (name.isEmpty() || name == rootClass().name() || livingClasses().contains(name)) {
        throw OdError(eInvalidInput, L"class name \"" + name + L"\"");
    }
    OdSmartPtr<RxClassImpl> made(makeClass(name, parent, constructor), kOdRxObjAttach);
    livingClasses().emplace(name, made.get());
    return made.detach();
}

void deleteOdRxClass(OdRxClass* rxClass) {
    if (!rxClass || rxClass == &rootClass()) {
        return;
    }
    OdSmartPtr<RxClassImpl> ended(static_cast<RxClassImpl*>(rxClass), kOdRxObjAttach);
    livingClasses().erase(ended->name());
    ended->dropExtensions();
}
