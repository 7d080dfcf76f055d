// Room for a moment's bytes or characters: in place while they are few, in one block when they
// aren't.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

template <class T, std::size_t kFew>
class ScratchBuffer {
  public:
    /// So many elements of any value. Elements given before are gone.
    T* take(std::size_t count) {
        if (count <= kFew) {
            return few.data();
        }
        many.resize(count);
        return many.data();
    }

  private:
    std::array<T, kFew> few;
    std::vector<T> many;
};
