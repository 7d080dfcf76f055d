// The folders in which the system keeps its fonts.
#pragma once

#include <string>
#include <vector>

/// The folders that there are of the fonts folders of the XDG data folders and of ~/.fonts, the
/// user's first; absolute paths, none twice and none inside another.
std::vector<std::string> systemFontFolders();
