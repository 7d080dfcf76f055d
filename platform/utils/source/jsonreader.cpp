// The reader works in a copy of the text, where strings are decoded in their place; the text itself
// tells the line of an error.
#include "jsonreader.h"

#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

#include <algorithm>

#include "jsontreebuilder.h"
#include "utf8check.h"

namespace {

using rapidjson::GetParseError_En;

// Numbers come as text: the library's own conversion isn't exact in the last bit and reads beyond
// its tables for a number with hundreds of zeros behind the point.
constexpr unsigned parseFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseInsituFlag |
                                rapidjson::kParseNumbersAsStringsFlag;

// At the first byte of a character the parser's check takes all those that should follow, whatever
// stands there; so there is something behind a text that ends within one.
std::string copyToParse(std::string_view text) {
    constexpr std::size_t mostFollowing = 3;
    std::string copy;
    copy.reserve(text.size() + mostFollowing);
    return copy.append(text).append(mostFollowing, '\0');
}

std::string_view withoutByteOrderMark(std::string_view text) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    return text.substr(text.starts_with(mark) ? mark.size() : 0);
}

JsonError errorAt(std::string_view text, std::size_t offset, const char* reason) {
    const std::string_view before = text.substr(0, offset);
    const std::string_view line = before.substr(before.rfind('\n') + 1);
    const auto lineEnds = std::count(before.begin(), before.end(), '\n');
    const auto characters = std::count_if(line.begin(), line.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
    });
    return {static_cast<int>(lineEnds) + 1, static_cast<int>(characters) + 1, reason};
}

// Text that is known to be well formed is read without a second look at each character; any other
// fails at the place that the look finds.
rapidjson::ParseResult parse(rapidjson::InsituStringStream& stream, bool wellFormed,
                             JsonTreeBuilder& builder) {
    rapidjson::Reader reader;
    return wellFormed
               ? reader.Parse<parseFlags>(stream, builder)
               : reader.Parse<parseFlags | rapidjson::kParseValidateEncodingFlag>(stream, builder);
}

}  // namespace

std::optional<JsonError> readJsonText(std::string_view wholeText, VoJsonPtr& root) {
    const std::string_view text = withoutByteOrderMark(wholeText);
    std::string copy = copyToParse(text);
    rapidjson::InsituStringStream stream(copy.data());
    JsonTreeBuilder builder(text.find("\\u") != std::string_view::npos);
    const rapidjson::ParseResult result = parse(stream, isUtf8(text), builder);
    if (result.IsError()) {
        const char* refusal = builder.refusal();
        return errorAt(text, result.Offset(), refusal ? refusal : GetParseError_En(result.Code()));
    }
    // The parser takes a NUL for the end of the text.
    if (stream.Tell() < text.size()) {
        return errorAt(text, stream.Tell(),
                       GetParseError_En(rapidjson::kParseErrorDocumentRootNotSingular));
    }
    root = builder.root();
    return std::nullopt;
}
