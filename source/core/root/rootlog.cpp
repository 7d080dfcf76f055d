#include "rootlog.h"

#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

#include <global/log.h>

namespace rootlog {

namespace {

constexpr std::size_t kBufferSize = 2048;
constexpr std::size_t kTextSize = 2044;  // what formatting may fill, the terminator included

using Buffer = std::array<char, kBufferSize>;

// A text that was cut inside a UTF-8 character ends before that character.
void dropBrokenTail(Buffer& buffer) {
    std::size_t end = std::strlen(buffer.data());
    std::size_t lead = end;
    while (lead > 0 && (static_cast<unsigned char>(buffer[lead - 1]) & 0xC0u) == 0x80u) {
        --lead;
    }
    if (lead == 0) {
        return;
    }
    const auto first = static_cast<unsigned char>(buffer[lead - 1]);
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : first >= 0xC0 ? 2 : 1;
    if (end - (lead - 1) < length) {
        buffer[lead - 1] = '\0';
    }
}

}  // namespace

void write(int level, int line, const char* unit, const char* function, const char* format, ...) {
    if (vemo_log_level() > level) {
        return;
    }
    Buffer buffer{};
    va_list arguments;
    va_start(arguments, format);
    const int wanted = std::vsnprintf(buffer.data(), kTextSize, format, arguments);
    va_end(arguments);
    if (wanted >= static_cast<int>(kTextSize)) {
        dropBrokenTail(buffer);
    }
    vo_Log(level, line, unit, function, buffer.data());
}

void writeAsFormat(int level, int line, const char* unit, const char* function, const char* text) {
    std::string shown;
    for (std::string_view rest(text); !rest.empty();) {
        shown += rest.front();
        rest.remove_prefix(rest.substr(0, 2) == "%%" ? 2 : 1);
    }
    write(level, line, unit, function, "%s", shown.c_str());
}

}  // namespace rootlog
