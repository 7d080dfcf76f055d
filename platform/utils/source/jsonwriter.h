// Trees as JSON text.
#pragma once

#include <string>

#include "utils/elementvaluebase.h"

enum class JsonForm { kCompact, kIndented };

/// Replaces `text` by the tree's JSON text in UTF-8; false, and no change, when the tree is deeper
/// than IElementValueBase::kMaxDepth. Pointers, nodes without a value and reals that JSON has no
/// form for become null; ill-formed parts of texts become U+FFFD. The indented form ends with a
/// newline.
bool writeJsonText(const IElementValueBase& node, JsonForm form, std::string& text);
