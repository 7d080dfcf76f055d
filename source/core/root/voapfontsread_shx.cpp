// SHX headers: a line of text that ends in the byte 0x1A.
#include <algorithm>
#include <array>
#include <string_view>

#include "voapfontsread.h"

namespace vosi {

namespace {

constexpr std::size_t kShortestHeader = 23;
constexpr std::size_t kLongestText = 40;
constexpr std::uint8_t kHeaderEnd = 0x1A;

struct HeaderKind {
    std::string_view text;
    ShxKind kind;
};

// The first that fits decides: the header of a big font or a unifont holds "1.0" too.
constexpr HeaderKind kHeaderKinds[] = {{"bigfont", kShxBigFont},
                                       {"unifont 1.0", kShxUnifont},
                                       {"shapes 1.1", kShxShapes11},
                                       {"1.0", kShxVersion10},
                                       {"1.1", kShxVersion11}};

}  // namespace

ShxKind readShxKind(OdStreamBuf& stream) {
    // One byte more than the text is read when no end mark comes; it is no part of the text.
    std::array<char, kLongestText + 1> header{};
    stream.seek(0, kSeekFromStart);
    stream.getBytes(header.data(), kShortestHeader);
    std::size_t length = kShortestHeader;
    if (static_cast<std::uint8_t>(header[length - 1]) != kHeaderEnd) {
        std::uint8_t byte = 0;
        do {
            byte = stream.getByte();
            header[length++] = static_cast<char>(byte);
        } while (byte != kHeaderEnd && length <= kLongestText);
    }
    header[std::min(length, kLongestText)] = '\0';

    const std::string_view text(header.data());
    for (const HeaderKind& known : kHeaderKinds) {
        if (text.find(known.text) != std::string_view::npos) {
            return known.kind;
        }
    }
    return kShxUnknown;
}

}  // namespace vosi
