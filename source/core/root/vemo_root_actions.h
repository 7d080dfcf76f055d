// What start-up does once the main window is up. Each action runs on the interface thread and
// reports nothing: what goes wrong is logged or passed over, and start-up goes on. A service that
// an action can't do without and that no module registered raises OdError (eKeyNotFound).
#pragma once

/// Tells the document manager and then the reactors that the main window is up.
void notifyMainWindowReady();

/// Has the command aliases read.
void loadAliasFile();

/// Plays the command line's script to its end, or else starts recording where that is configured.
void vemo_root_load_script();

/// Connects the remote debugger where both its halves are there.
void connectRemoteDebug();

/// Opens the first drawing: the command line's files, else its template, else a new drawing.
void vemo_root_open_file();

/// Sets the units of insertions from the measurement of new drawings.
void applyInsertUnits();
