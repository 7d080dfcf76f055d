// What the other units of the library need of paths as texts.
#pragma once

#include <string>
#include <string_view>

/// The folder and the name with one "/" between them; the folder is left as it is otherwise.
std::string joinPath(std::string_view folder, std::string_view name);

/// The path from the root: a relative one is joined to the working folder. Empty when the working
/// folder is gone.
std::string absolutePath(std::string_view path);

/// The file name without its extension, of which a name that only begins with "." has none.
std::string_view stemOf(std::string_view fileName);
