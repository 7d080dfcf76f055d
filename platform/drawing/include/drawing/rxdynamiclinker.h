// The dynamic linker: finds, loads and unloads modules, and keeps every module that it loaded.
//
// A module that carries a stamp (drawing/rxmodulefile.h) is taken when it was built against the
// runtime's own interfaces or older ones of the same major number. Otherwise it is a file that
// can't be loaded, and none of its code runs. Three things aren't held to that: a file without a
// stamp; a file that is found by its bare name in the system's places and not in the linker's
// folders, which is refused too, but after the code that it runs when it is mapped; and the
// libraries that a module needs. A file that ends before what is to be loaded of it is refused too,
// since mapping it would end the process.
//
// Libraries stay mapped after their module is unloaded: objects that the module left behind, in a
// dictionary for instance, are released later and must find their code.
#pragma once

#include "drawing/odarray.h"
#include "drawing/rxmodule.h"

/// An opened shared library, as OdRxSystemServices::loadModuleLib hands it out.
struct OdRxModuleLibrary;

/// Why a module couldn't be loaded, in the words of whoever failed.
struct OdRxModuleFailure {
    OdString moduleName;
    OdString reason;
};

/// Used on the interface thread alone. A module's name is its file's name without the folder; a
/// name without an extension also stands for libNAME.so.
class DRAWING_EXPORT OdRxDynamicLinker : public OdRxObject {
  public:
    /// The module of an opened library, initialised on the first call; null when the library is no
    /// module, or another module of the same name is loaded. With `addReference` the result carries
    /// a reference for the caller. What the module's initApp raises passes through.
    virtual OdRxModule* moduleOfLibrary(OdRxModuleLibrary* library, bool addReference) = 0;

    /// Loads a module by name: one that is loaded already, or the file of that name. Null when
    /// there is none; unless `silent`, that raises OdError_FileException (eCantOpenFile) with the
    /// reason instead.
    virtual OdRxModulePtr loadModule(const OdString& name, bool silent) = 0;

    /// Ends a loaded module: its uninitApp runs, then the linker's reference goes, while the
    /// library stays mapped. False when no module of that name is loaded.
    virtual bool unloadModule(const OdString& name) = 0;

    /// The loaded module of that name, null when there is none.
    virtual OdRxModulePtr loadedModule(const OdString& name) const = 0;
    /// All loaded modules, in load order.
    virtual OdArray<OdRxModulePtr> loadedModules() const = 0;

    /// Names a folder, by its whole path, in which files are looked for that don't come with
    /// theirs, before the system's places. Folders are searched in the order in which they were
    /// named; the working folder never is, and a relative path names none.
    virtual void addModuleFolder(const OdString& folder) = 0;

    /// What couldn't be loaded since odInitialize, in order; a reason that comes twice in a row for
    /// one name is kept once.
    virtual OdArray<OdRxModuleFailure> failures() const = 0;
};

/// The linker. Raises OdError (eNotInitializedYet) while the runtime isn't up.
DRAWING_EXPORT OdRxDynamicLinker* odrxDynamicLinker();
