#include "outdateduserfile.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <utils/safefile.h>

#include "runobserver.h"

namespace {

namespace fs = std::filesystem;

bool isSameFile(const fs::path& a, const fs::path& b) {
    std::error_code ignored;
    return fs::equivalent(a, b, ignored);
}

// Of a path that the system can't look at, nothing is known; nothing can be written there either.
bool isSomethingAt(const fs::path& path) {
    std::error_code ignored;
    const fs::file_status status = fs::symlink_status(path, ignored);
    return fs::status_known(status) && fs::exists(status);
}

bool haveSameContent(const fs::path& a, const fs::path& b) {
    std::ifstream first(a, std::ios::binary);
    std::ifstream second(b, std::ios::binary);
    using Bytes = std::istreambuf_iterator<char>;
    return first && second && std::equal(Bytes(first), Bytes(), Bytes(second), Bytes());
}

}  // namespace

void OutdatedUserFile::note(const OdAnsiString& discardedFile, int majorVersion, int minorVersion) {
    file = discardedFile;
    major = majorVersion;
    minor = minorVersion;
}

bool OutdatedUserFile::keepBefore(const OdAnsiString& writtenFile) {
    if (file.isEmpty() || !isSameFile(writtenFile.str(), file.str())) {
        return true;
    }
    const fs::path original(file.str());
    const std::string stem =
        original.stem().string() + ".v" + std::to_string(major) + '.' + std::to_string(minor);
    fs::path kept = original.parent_path() / (stem + original.extension().string());
    // A start that came no further than this has left the same copy.
    for (int number = 2; isSomethingAt(kept) && !haveSameContent(original, kept); ++number) {
        kept.replace_filename(stem + '-' + std::to_string(number) + original.extension().string());
    }
    if (!isSomethingAt(kept) && !voutCopyFileSafely(original, kept)) {
        return false;
    }
    run::note([&] { return "kept the outdated user file as " + OdAnsiString(kept.string()); });
    forget();
    return true;
}
