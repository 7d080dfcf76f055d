// What the runtime's end does to the root class, which itself never ends.
#pragma once

/// Releases the protocol extensions of OdRxObject's class.
void dropRootExtensions();
