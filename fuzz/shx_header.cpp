// The header of an SHX file against a second reading of it.
#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include "bytestream.h"
#include "property.h"
#include "voapfontsread.h"

namespace {

struct Outcome {
    // Nothing when the file ends within its header.
    std::optional<unsigned int> kind;
    std::uint64_t consumed;
};

// Where the header ends: behind the first end mark from the 23rd byte on, after 41 bytes at the
// latest.
std::optional<std::size_t> headerSize(std::string_view bytes) {
    const std::size_t mark = bytes.size() < 23 ? std::string_view::npos : bytes.find('\x1A', 22);
    const std::size_t size = mark < 41 ? mark + 1 : 41;
    return size <= bytes.size() ? std::optional(size) : std::nullopt;
}

std::optional<unsigned int> expectedKind(std::string_view bytes) {
    const auto size = headerSize(bytes);
    if (!size) {
        return std::nullopt;
    }
    std::string_view text = bytes.substr(0, std::min<std::size_t>(*size, 40));
    text = text.substr(0, text.find('\0'));
    const auto holds = [text](const char* part) {
        return text.find(part) != std::string_view::npos;
    };
    if (holds("bigfont")) {
        return 1;
    }
    if (holds("unifont 1.0")) {
        return 2;
    }
    if (holds("shapes 1.1")) {
        return 264;
    }
    return holds("1.0") ? 4 : holds("1.1") ? 8 : 0;
}

Outcome read(std::string_view bytes) {
    const auto stream = newByteStream(bytes);
    stream->seek(0, kSeekFromEnd);
    try {
        const unsigned int kind = vosi::readShxKind(*stream);
        return {kind, stream->tell()};
    } catch (const OdError& error) {
        requireProperty(error.code() == eEndOfFile, "only the end of the file is an error");
        return {std::nullopt, 0};
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const Outcome outcome = read(bytes);
    requireProperty(outcome.kind == expectedKind(bytes), "the kind is that of the header's text");
    if (outcome.kind) {
        requireProperty(outcome.consumed == *headerSize(bytes), "just the header is read");
        const Outcome alone = read(bytes.substr(0, outcome.consumed));
        requireProperty(alone.kind == outcome.kind, "what follows the header counts for nothing");
    }
    return 0;
}
