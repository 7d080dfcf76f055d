// Modules: shared libraries that the runtime loads, and what they contain.
#pragma once

#include "drawing/rxclass.h"

/// What one module library contains. A library makes its module object known with
/// ODRX_DEFINE_DYNAMIC_MODULE.
class DRAWING_EXPORT OdRxModule : public OdRxObject {
    ODRX_DECLARE_MEMBERS(OdRxModule)

    /// Runs once after loading. What it raises reaches the loader's caller, and the module counts
    /// as not loaded.
    virtual void initApp() = 0;
    /// Runs once before the module goes.
    virtual void uninitApp() = 0;
    /// The name under which the linker knows the module: its file's name without the folder.
    virtual OdString moduleName() const = 0;
};

using OdRxModulePtr = OdSmartPtr<OdRxModule>;

/// Base class for module objects: keeps the name that the linker gives.
class DRAWING_EXPORT OdRxModuleBase : public OdRxModule {
  public:
    OdString moduleName() const override { return name; }
    void setModuleName(const OdString& moduleName) { name = moduleName; }

  private:
    OdString name;
};

/// The entry that a module library exports: makes its module object, with one reference.
using OdRxModuleEntry = OdRxModule* (*)(const OdString& moduleName);

#define ODRX_MODULE_ENTRY_NAME "odrxCreateModuleObject"

/// Defines the entry of a module library; the class derives from OdRxModuleBase.
#define ODRX_DEFINE_DYNAMIC_MODULE(ClassName)                                                 \
    extern "C" DRAWING_EXPORT OdRxModule* odrxCreateModuleObject(const OdString& moduleName); \
    OdRxModule* odrxCreateModuleObject(const OdString& moduleName) {                          \
        auto module = OdRxObjectImpl<ClassName>::createObject();                              \
        module->setModuleName(moduleName);                                                    \
        return module.detach();                                                               \
    }
