// A folder of a test's own under the system's temporary folder, removed with all it holds.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

class TestFolder {
  public:
    TestFolder() {
        std::string name = std::filesystem::temp_directory_path() / "vemotest.XXXXXX";
        if (!::mkdtemp(name.data())) {
            throw std::runtime_error("no temporary folder");
        }
        root = name;
    }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;
    ~TestFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(root, ignored);
    }

    const std::string& path() const { return root; }
    std::string path(const std::string& name) const { return root + '/' + name; }

    /// Makes the file with the folders above it, and gives its path.
    std::string file(const std::string& name, const std::string& content = "") const {
        std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
        std::ofstream(path(name), std::ios::binary) << content;
        return path(name);
    }
    std::string folder(const std::string& name) const {
        std::filesystem::create_directories(path(name));
        return path(name);
    }
    /// Makes a symbolic link that holds `target` as it is given.
    std::string link(const std::string& name, const std::string& target) const {
        std::filesystem::create_symlink(target, path(name));
        return path(name);
    }

  private:
    std::string root;
};

/// The file's content; empty when it isn't there.
inline std::string contentOf(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}
