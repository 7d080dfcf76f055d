// The runtime's linker. It owns the loaded modules; libraries belong to nobody and stay.
//
// A module's initApp and uninitApp may call back: a module is found by its name, but neither
// initialised nor ended a second time, while one of them runs.
#pragma once

#include <exception>
#include <vector>

#include "drawing/rxdynamiclinker.h"
#include "modulelibrary.h"

class DynamicLinker : public OdRxDynamicLinker {
  public:
    OdRxModule* moduleOfLibrary(OdRxModuleLibrary* library, bool addReference) override;
    OdRxModulePtr loadModule(const OdString& name, bool silent) override;
    bool unloadModule(const OdString& name) override;
    OdRxModulePtr loadedModule(const OdString& name) const override;
    OdArray<OdRxModulePtr> loadedModules() const override;
    void addModuleFolder(const OdString& folder) override;
    OdArray<OdRxModuleFailure> failures() const override { return failureList; }

    /// Opens a library by its whole path, or by a name in the module folders, and then, for a bare
    /// name, in the system's places.
    LibraryOpening open(const OdString& fileName) const;

    /// Keeps a reason; the same one for the same name is kept once when it comes twice in a row.
    void noteFailure(const OdString& name, const OdString& reason);

    /// Ends every module, last loaded first; what the first failing uninitApp raised is given back.
    std::exception_ptr endModules();

  private:
    struct Loaded {
        OdRxModuleLibrary* library;
        OdRxModulePtr module;
        // While its initApp or uninitApp runs.
        bool busy = true;
    };

    using Place = std::vector<Loaded>::iterator;

    Place find(const OdRxModuleLibrary* library);
    const Loaded* find(const OdString& name) const;
    OdRxModulePtr makeModule(const OdRxModuleLibrary& library);
    void initModule(OdRxModuleLibrary* library, const OdRxModulePtr& module);
    void endModule(OdRxModuleLibrary* library);

    std::vector<Loaded> modules;
    OdStringArray folders;
    OdArray<OdRxModuleFailure> failureList;
};
