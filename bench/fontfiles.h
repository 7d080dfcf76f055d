// The fonts that are measured, and the least that reading them can cost.
#pragma once

#include <string>
#include <vector>

/// At most `count` TrueType files of the system's font folders, in the order of their paths; those
/// that several packages bring count once each.
std::vector<std::string> systemFonts(std::size_t count);

/// Shows the files in the folder, numbered so that their names differ: by further names of the same
/// files where the file system allows it, else by copies.
void showIn(const std::string& folder, const std::vector<std::string>& files);

/// What any reader of family names has to do with a file at least: open it in its folder, read 512
/// bytes of its start and the beginning of its table of names (at most 4 KiB), close it. Gives the
/// bytes read.
std::size_t readAtLeast(int folder, const char* name);

/// The paths split into folder and name, with the folders open; a path costs nothing but
/// readAtLeast.
class OpenFolders {
  public:
    explicit OpenFolders(const std::vector<std::string>& paths);
    OpenFolders(const OpenFolders&) = delete;
    OpenFolders& operator=(const OpenFolders&) = delete;
    ~OpenFolders();

    /// Reads every file as readAtLeast does; the sum of what was read.
    std::size_t readAllAtLeast() const;

  private:
    struct File {
        int folder;
        std::string name;
    };
    std::vector<int> folders;
    std::vector<File> files;
};
