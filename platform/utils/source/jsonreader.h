// JSON text as a tree.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "utils/elementvaluebase.h"

/// What is wrong with a text, and where; lines and columns count from 1, columns in characters.
struct JsonError {
    int line;
    int column;
    std::string reason;
};

/// Reads a whole document into `root`: strict, in UTF-8 with or without a byte order mark, at most
/// IElementValueBase::kMaxDepth levels deep. On an error `root` is unchanged. Of equal keys in one
/// object the last wins, in the place of the first.
std::optional<JsonError> readJsonText(std::string_view text, VoJsonPtr& root);
