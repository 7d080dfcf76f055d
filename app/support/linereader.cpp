#include "linereader.h"

#include <algorithm>
#include <array>
#include <limits>

namespace vemoapp {

LineReader::LineReader(std::istream& stream, std::size_t lengthLimit)
    : input(stream), limit(lengthLimit) {
    input.exceptions(input.exceptions() | std::ios_base::badbit);
}

LineReader::Result LineReader::next(std::string& line) {
    if (restPending) {
        input.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
        restPending = false;
    }
    line.clear();
    const bool isFull = readPart(line);
    if (line.empty() && input.fail()) {
        return kEnd;
    }
    ++number;
    for (bool goesOn = isFull; goesOn; goesOn = readPart(line)) {
        if (line.size() == limit) {
            restPending = true;
            return kTooLong;
        }
    }
    if (line.ends_with('\r')) {
        line.pop_back();
    }
    return kLine;
}

bool LineReader::readPart(std::string& line) {
    std::array<char, 512> part;
    const std::size_t size = std::min(part.size(), limit - line.size() + 1);
    input.getline(part.data(), static_cast<std::streamsize>(size));
    auto count = static_cast<std::size_t>(input.gcount());
    const bool isEnd = input.eof();
    // Neither the line's end nor the stream's came within the part.
    const bool isFull = input.fail() && !isEnd;
    if (isFull) {
        input.clear();
    } else if (!isEnd) {
        --count;
    }
    line.append(part.data(), count);
    return isFull;
}

}  // namespace vemoapp
