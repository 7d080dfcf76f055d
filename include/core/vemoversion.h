// The version of the library that a program or module is compiled against.
#pragma once

// CMake compares these numbers with the project's, so they stay plain.
#define VEMO_VERSION_MAJOR 0
#define VEMO_VERSION_MINOR 1
#define VEMO_VERSION_PATCH 0
