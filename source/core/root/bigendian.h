// Integers as sfnt files hold them: the high byte first.
#pragma once

#include <cstdint>

inline std::uint16_t bigEndian16(const std::uint8_t* bytes) {
    return static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
}

inline std::uint32_t bigEndian32(const std::uint8_t* bytes) {
    return static_cast<std::uint32_t>(bigEndian16(bytes)) << 16 | bigEndian16(bytes + 2);
}
