// The library's state and services, as modules and main programs reach them.
//
// Unless a function says otherwise it is used from the interface thread or from a fiber that holds
// the baton, and answers without the application too: before vemo_root and after vemo_exit look-ups
// give null and changes do nothing.
#pragma once

#include <ctime>

#include <drawing/runtime.h>
#include <utils/elementvaluebase.h>

#include "core/vemoexport.h"

/// Stores a service under a key of the service dictionary, which takes a reference; a service that
/// stood there loses the dictionary's reference. A null service takes the entry out. Raises
/// OdError_InvalidKey for the empty key.
VEMO_EXPORT void vo_arbitDict_regservice(const OdString& key, OdRxObjectPtr service);

/// Takes a service out of the dictionary; an unknown key is no error.
VEMO_EXPORT void vo_arbitDict_clearservice(const OdString& key);

/// The service under the key, null when there is none. Only between vemo_root and vemo_exit:
/// otherwise it raises OdError (eNotInitializedYet).
VEMO_EXPORT OdRxObjectPtr vo_arbitDict_getservice(const OdString& key);

/// A node of the configuration tree by its "/"-separated path, null when it isn't there; the empty
/// path gives the root, with its branches Core, User and Runtime.
VEMO_EXPORT VoJsonPtr vo_sys_config(const OdAnsiString& key);

/// The same below Runtime; the empty path gives that branch. Runtime is never written to a file.
VEMO_EXPORT VoJsonPtr vo_runtime_config(const OdAnsiString& key);

/// A node of the user's tree, which is what is saved. The empty path gives the User branch of the
/// configuration tree instead. With `createType` 1 (array) or 2 (object) a node that isn't there is
/// made, with the objects above it; with 0 nothing is made and null is given. So it is where
/// something that is no object stands in the way.
VEMO_EXPORT VoJsonPtr vo_user_config(const OdAnsiString& key, int createType);

/// Writes the user's tree to the file at the path, or for the empty path to the user's own file. A
/// failure is logged and leaves the old file as it was.
VEMO_EXPORT void vo_save_user_config(const OdAnsiString& path);

/// Does nothing, by design: the call is there for modules to make, and neither saves nor fires.
VEMO_EXPORT void vo_notify_user_config_changed(VoJsonPtr node);

/// When the library was built, in seconds since the epoch; the compiler's stamp has no time zone
/// and is read as UTC. Any thread, at any time.
VEMO_EXPORT std::time_t vo_build_timestamp();

/// True before vemo_root, from the first step of vemo_exit on, and after it. Any thread.
VEMO_EXPORT bool vo_is_appQuiting();

/// Loads an extension module by its file name, or gives the one that is loaded already; null when
/// it can't be loaded. The pointer carries no reference: the library keeps the module. Only between
/// vemo_root and vemo_exit: otherwise it raises OdError (eNotInitializedYet).
VEMO_EXPORT OdRxModule* voLoad_extModule(const OdString& name, bool silent);

/// Unloads the extension modules of that name; folder, extension and case are not compared.
VEMO_EXPORT void voUnload_extModule(const OdString& name);

/// The host application services of the application, null without it.
VEMO_EXPORT ExHostAppServices* vodbSystemServices();
