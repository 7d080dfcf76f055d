// Turns the events of a JSON reader into nodes.
//
// What has been read waits on one stack: a container, then its members or items, which go into it
// when it ends, so that its storage is made once and in its final size. Texts of the events stay
// where they are until the reading is over.
#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "nodeblock.h"
#include "utils/elementvaluebase.h"

class JsonTreeBuilder {
  public:
    /// `escapes`: the texts may hold what was written as \u, which needn't be a character.
    explicit JsonTreeBuilder(bool escapes) : checksTexts(escapes) {}

    /// The tree of a document that was read to its end.
    VoJsonPtr root() const;
    /// Why an event was refused; null when none was.
    const char* refusal() const { return reason; }

    // Events. False ends the reading.
    bool Null();
    bool Bool(bool boolean);
    bool RawNumber(const char* text, unsigned length, bool copy);
    bool String(const char* text, unsigned length, bool copy);
    bool Key(const char* text, unsigned length, bool copy);
    bool StartObject();
    bool EndObject(unsigned count);
    bool StartArray();
    bool EndArray(unsigned count);

    // Numbers come as text, so these never happen.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(std::int64_t) { return false; }
    bool Uint64(std::uint64_t) { return false; }
    bool Double(double) { return false; }

  private:
    // A key waits without a node until its value comes; items have no key.
    struct Pending {
        Pending(std::string_view text, VoJsonPtr value) : key(text), node(std::move(value)) {}

        std::string_view key;
        VoJsonPtr node;
    };

    bool add(VoJsonPtr node);
    bool open(VoJsonPtr container);
    bool isText(std::string_view text);
    bool refuse(const char* why);

    NodeMaker nodes;
    std::vector<Pending> pending;
    int depth = 0;
    bool checksTexts;
    const char* reason = nullptr;
};
