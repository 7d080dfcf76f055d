// The two waves of modules around the main window.
#pragma once

#include <drawing/runtime.h>
#include <utils/elementvaluebase.h>

/// The first wave: the lists OdaLibrary, CoreLibrary and Library of the Core branch, in that order.
/// What was loaded is recorded under Runtime/loadedModules; what can't be loaded is logged and left
/// out. What a module's initialiser raises passes through.
void loadModules();

/// One module of the first wave by its bare name, libNAME.so being its file; its own name goes into
/// the record. Null for the empty name and for a module that can't be loaded, which is logged.
OdRxModulePtr loadConfiguredModule(const OdString& name, VoJsonPtr record);

/// The second wave: the user's list and the command line's, each entry a file name.
void loadUserLibraries();

/// Unloads the modules of the list Library, last loaded first, and gives the list of their names.
VoJsonPtr unloadFixedModules();
