// Where an object's class comes from.
#pragma once

#include <string>

#include <drawing/runtime.h>

namespace inspect {

/// The C++ class of the object, demangled.
std::string classOf(const OdRxObject& object);

/// The shared object or program that holds the class.
std::string fileOf(const OdRxObject& object);

}  // namespace inspect
