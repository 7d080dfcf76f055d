// Marks what the global library shows to others.
#pragma once

#define GLOBAL_EXPORT __attribute__((visibility("default")))
