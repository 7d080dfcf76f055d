// The log's file: lines are appended, and a file that would grow beyond its limit becomes NAME.1.
//
// Several processes may append to one file. Each line is a single write at the end, so lines don't
// mix; before each the path is compared with the open file, so that a process notices when another
// one (or a person) has moved the file away. An object belongs to one thread at a time.
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

class LogFile {
  public:
    static constexpr off_t kDefaultLimit = off_t{10} * 1024 * 1024;

    explicit LogFile(off_t sizeLimit = kDefaultLimit) : limit(sizeLimit) {}
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;
    ~LogFile() { close(); }

    /// Names the file, UTF-8, and closes the one before; a relative path counts from the working
    /// folder of this moment. Nothing is opened yet. Empty for no file.
    void setPath(const std::string& path);

    /// Appends the line, opening the file if need be. False when it couldn't be written whole.
    bool append(std::string_view line);

    void close();

  private:
    bool open();
    bool isAtPath() const;
    bool isFullWith(std::string_view line) const;
    void rotate();

    std::string path;
    off_t limit;
    int descriptor = -1;
};
