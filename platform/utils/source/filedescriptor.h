// An open file that closes itself.
#pragma once

#include <unistd.h>

#include <utility>

class FileDescriptor {
  public:
    /// Takes over what open(2) answered.
    explicit FileDescriptor(int opened) : number(opened) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() { close(); }

    bool isOpen() const { return number >= 0; }
    int get() const { return number; }
    /// False when the system reports what a write left undone.
    bool close() {
        const int closed = std::exchange(number, -1);
        return closed < 0 || ::close(closed) == 0;
    }

  private:
    int number;
};
