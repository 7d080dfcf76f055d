// Reads an input as a program: letters for what is done, digits for what it is done with.
//
// Every byte means something, since each choice is taken by remainder; behind the end every choice
// is the first. Programs written by hand are text: "c2" is the third operation with the third
// object.
#pragma once

#include <cstddef>
#include <cstdint>

class Bytes {
  public:
    Bytes(const std::uint8_t* data, std::size_t size) : next(data), left(size) {}

    bool atEnd() const { return left == 0; }

    /// A number below the count, which isn't 0: 'a' is 0, 'b' is 1.
    std::size_t letter(std::size_t count) { return take('a') % count; }
    /// A number below the count, which isn't 0: '0' is 0, '1' is 1.
    std::size_t digit(std::size_t count) { return take('0') % count; }
    /// '1' is true.
    bool coin() { return digit(2) == 1; }
    /// One of an enumeration that ends with kCount, by letter.
    template <class Enum>
    Enum choice() {
        return static_cast<Enum>(letter(static_cast<std::size_t>(Enum::kCount)));
    }

  private:
    std::size_t take(std::uint8_t first) {
        if (atEnd()) {
            return 0;
        }
        --left;
        return static_cast<std::uint8_t>(*next++ - first);
    }

    const std::uint8_t* next;
    std::size_t left;
};
