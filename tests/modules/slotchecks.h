// The module's checks: functions that the program calls when the application is up. They assert
// with the program's own copy of GoogleTest.
#pragma once

#include <gtest/gtest.h>

/// Defines a check that the program finds by its plain name.
#define SLOT_CHECK(name)                                           \
    extern "C" __attribute__((visibility("default"))) void name(); \
    extern "C" void name()
