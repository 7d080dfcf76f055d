// Turns the events of a JSON reader into nodes.
//
// Members and items wait on one stack until their object or array ends, so that each container is
// made once, in its final size.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "utils/membertable.h"

class JsonTreeBuilder {
  public:
    /// Why an event was refused; null as long as none was.
    const char* refusal() const { return reason; }
    /// The finished tree; the builder is empty afterwards.
    VoJsonPtr takeRoot();

    // The reader's events. False ends the reading.
    bool Null();
    bool Bool(bool boolean);
    bool RawNumber(const char* text, unsigned length, bool copy);
    bool String(const char* text, unsigned length, bool copy);
    bool StartObject();
    bool Key(const char* text, unsigned length, bool copy);
    bool EndObject(unsigned count);
    bool StartArray();
    bool EndArray(unsigned count);

  private:
    // Items of arrays have no key.
    struct Pending {
        std::string_view key;
        VoJsonPtr node;
    };

    bool open();
    bool add(VoJsonPtr node);
    bool refuse(const char* why);

    std::vector<Pending> pending;
    std::string_view nextKey;
    int depth = 0;
    const char* reason = nullptr;
};
