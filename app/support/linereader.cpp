#include "linereader.h"

namespace vemoapp {

namespace {

constexpr int kEndOfStream = std::char_traits<char>::eof();

}  // namespace

LineReader::Result LineReader::next(std::string& line) {
    if (restPending) {
        skipRest();
    }
    line.clear();
    std::streambuf* bytes = input.rdbuf();
    int byte = bytes->sbumpc();
    if (byte == kEndOfStream) {
        return kEnd;
    }
    ++number;
    for (; byte != kEndOfStream && byte != '\n'; byte = bytes->sbumpc()) {
        if (line.size() == limit) {
            restPending = true;
            return kTooLong;
        }
        line.push_back(static_cast<char>(byte));
    }
    if (line.ends_with('\r')) {
        line.pop_back();
    }
    return kLine;
}

void LineReader::skipRest() {
    std::streambuf* bytes = input.rdbuf();
    int byte = bytes->sbumpc();
    while (byte != kEndOfStream && byte != '\n') {
        byte = bytes->sbumpc();
    }
    restPending = false;
}

}  // namespace vemoapp
