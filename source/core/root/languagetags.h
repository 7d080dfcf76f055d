// Language tags of the 16-bit language identifiers that font files carry.
#pragma once

#include <cstdint>

#include <drawing/runtime.h>

namespace vosi {

/// The tag of a language, as "zh-CN" for 0x0804; "en-US" for an identifier that isn't known.
OdString languageTag(std::uint16_t languageId);

}  // namespace vosi
