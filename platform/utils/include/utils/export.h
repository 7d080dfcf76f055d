// Marks what the utility library shows to others.
#pragma once

#define UTILS_EXPORT __attribute__((visibility("default")))
