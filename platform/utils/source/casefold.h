// File names without regard to case, whatever the process's locale is.
#pragma once

#include <string>
#include <string_view>

/// Puts the UTF-8 text into `folded`, in lower case. A byte that is part of no well-formed
/// character becomes a code point beyond Unicode, in the form that UTF-8 would give it, so that it
/// equals that byte alone. Folded texts compare by their bytes in the order of their code points.
void foldCase(std::string_view text, std::string& folded);
std::string foldCase(std::string_view text);

/// Length in bytes of the character of a folded text that begins with the byte.
std::size_t foldedLength(char lead);
