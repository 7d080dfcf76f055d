#include "utf8check.h"

#include <rapidjson/encodings.h>
#include <rapidjson/memorystream.h>

#include <cstdint>
#include <cstring>

namespace {

struct NoOutput {
    void Put(char /*byte*/) {}
};

// Eight bytes at a time, since most of any text is ASCII.
void skipAscii(std::string_view& text) {
    constexpr std::uint64_t highBits = 0x8080808080808080u;
    std::uint64_t block = 0;
    while (text.size() >= sizeof block) {
        std::memcpy(&block, text.data(), sizeof block);
        if ((block & highBits) != 0) {
            return;
        }
        text.remove_prefix(sizeof block);
    }
}

// Three bytes whose lead sets its follower no bounds of its own, as most of what isn't ASCII is.
void skipThreeByteCharacters(std::string_view& text) {
    const auto byte = [&text](std::size_t place) {
        return static_cast<unsigned char>(text[place]);
    };
    while (text.size() >= 3 && byte(0) >= 0xE1 && byte(0) <= 0xEC && (byte(1) & 0xC0) == 0x80 &&
           (byte(2) & 0xC0) == 0x80) {
        text.remove_prefix(3);
    }
}

}  // namespace

bool isUtf8(std::string_view text) {
    NoOutput nowhere;
    while (skipAscii(text), skipThreeByteCharacters(text), !text.empty()) {
        rapidjson::MemoryStream stream(text.data(), text.size());
        if (!rapidjson::UTF8<>::Validate(stream, nowhere)) {
            return false;
        }
        text.remove_prefix(stream.Tell());
    }
    return true;
}
