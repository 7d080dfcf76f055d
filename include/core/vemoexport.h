// Marks what the kernel library shows to others.
#pragma once

#define VEMO_EXPORT __attribute__((visibility("default")))
