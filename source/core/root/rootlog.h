// The library's log lines.
//
// A line carries the path of the unit that the work belongs to, by the name that the log's readers
// know: a constant of the unit, also where its code stands in several files, and never __FILE__.
// The same goes for the function.
#pragma once

namespace rootlog {

inline constexpr const char* kVemoRoot = "../../../source/core/root/vemo_root";
inline constexpr const char* kAppService = "../../../source/core/root/voappservice";
inline constexpr const char* kFontsService = "../../../source/core/root/voapfontsservice";

// Levels in use.
inline constexpr int kSurvived = 4;  // a failure that the application survives
inline constexpr int kError = 5;

/// Writes a line when the log's threshold lets it pass. The text is cut at 2043 bytes, at the edge
/// of a character.
[[gnu::format(printf, 5, 6)]] void write(int level, int line, const char* unit,
                                         const char* function, const char* format, ...);

/// Writes a text that callers have always seen go through the format without arguments: "%%" reads
/// as "%", and every other conversion stays as it stands, since there is nothing to put in its
/// place.
void writeAsFormat(int level, int line, const char* unit, const char* function, const char* text);

}  // namespace rootlog
