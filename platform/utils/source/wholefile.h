// Reading a file at one go.
#pragma once

#include <optional>
#include <string>

/// The file's content. Nothing for what is no plain file, can't be read, or is longer than an int
/// counts.
std::optional<std::string> textOfFile(const char* path);
