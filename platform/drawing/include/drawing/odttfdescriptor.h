// Description of one TrueType face.
#pragma once

#include <cstdint>

#include "drawing/odstring.h"

/// Kinds of font for substitution.
enum OdFontType {
    kFontTypeUnknown = 0,
    kFontTypeShx = 1,
    kFontTypeTrueType = 2,
    kFontTypeShape = 3,
    kFontTypeBig = 4,
    kFontTypeRsc = 5
};

/// One face: its style, the file that holds it and the name of its family. A plain value.
struct OdTtfDescriptor {
    static constexpr std::uint32_t kBold = 0x02000000u;
    static constexpr std::uint32_t kItalic = 0x01000000u;

    std::uint32_t flags = 0;
    OdString fileName;
    OdString typeface;
    std::int32_t reserved = 0;

    bool isBold() const { return (flags & kBold) != 0; }
    bool isItalic() const { return (flags & kItalic) != 0; }
    void setBold(bool on) { flags = on ? flags | kBold : flags & ~kBold; }
    void setItalic(bool on) { flags = on ? flags | kItalic : flags & ~kItalic; }
};
