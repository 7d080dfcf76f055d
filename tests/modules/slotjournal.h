// What the library called in the module of slots: a line of the journal for each call, with the
// interface, the operation's position and its arguments.
#pragma once

#include <string>

#include "testjournal.h"

namespace slots {

inline void note(const std::string& interface, int position, const std::string& arguments = "") {
    const std::string line = interface + ' ' + std::to_string(position);
    journal::append(arguments.empty() ? line : line + ' ' + arguments);
}

}  // namespace slots
