// Whether bytes are text.
#pragma once

#include <string_view>

/// True when the whole text is well-formed UTF-8.
bool isUtf8(std::string_view text);
