// Marks what the drawing runtime's shared library shows to others.
#pragma once

#define DRAWING_EXPORT __attribute__((visibility("default")))
