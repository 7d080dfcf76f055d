// The library's own services and the imported run-time classes: bring-up and tear-down side by
// side.
#pragma once

/// Initialises the imported classes and the dialog layer and registers "Core/Fiber",
/// "Core/FiberCoroutine" and "Core/FindFonts". The event dispatcher and the service dictionary must
/// be there. Interface thread.
void registerCoreServices();

/// Takes all of that down in the opposite order; does nothing without the application.
void unregisterCoreServices();
