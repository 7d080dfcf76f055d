#include "pathtext.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "utils/paths.h"

namespace {

/// Index behind the last separator, which is where the last component begins.
std::size_t lastComponentStart(std::string_view path) {
    return path.find_last_of("/\\") + 1;
}
std::size_t lastComponentStart(std::wstring_view path) {
    return path.find_last_of(L"/\\") + 1;
}

template <class String>
String parentOf(const String& path) {
    return String(path.view().substr(0, lastComponentStart(path.view())));
}

template <class String>
String lastComponentOf(const String& path) {
    return String(path.view().substr(lastComponentStart(path.view())));
}

}  // namespace

std::string joinPath(std::string_view folder, std::string_view name) {
    std::string joined(folder);
    if (!folder.ends_with('/')) {
        joined += '/';
    }
    return joined += name;
}

std::string absolutePath(std::string_view path) {
    if (path.starts_with('/')) {
        return std::string(path);
    }
    std::error_code error;
    const std::filesystem::path working = std::filesystem::current_path(error);
    while (path.starts_with("./")) {
        path.remove_prefix(1);
        path.remove_prefix(std::min(path.find_first_not_of('/'), path.size()));
    }
    return error ? std::string() : joinPath(working.native(), path == "." ? "" : path);
}

std::string_view stemOf(std::string_view fileName) {
    const std::size_t named = fileName.find_first_not_of('.');
    const std::size_t dot = fileName.rfind('.');
    const bool hasExtension =
        dot != std::string_view::npos && named != std::string_view::npos && dot > named;
    return hasExtension ? fileName.substr(0, dot) : fileName;
}

OdAnsiString voutCombinePath(const OdAnsiString& first, const OdAnsiString& second) {
    if (first.isEmpty()) {
        return second;
    }
    std::string_view front = first.view();
    std::string_view back = second.view();
    front = front.substr(0, front.find_last_not_of('/') + 1);
    back.remove_prefix(std::min(back.find_first_not_of('/'), back.size()));
    std::string joined(front);
    joined += '/';
    joined += back;
    return joined;
}

OdAnsiString voutGetParentDir(const OdAnsiString& path) {
    return parentOf(path);
}
OdString voutGetParentDirW(const OdString& path) {
    return parentOf(path);
}

OdAnsiString voutGetFileName(const OdAnsiString& path) {
    return lastComponentOf(path);
}
OdAnsiString voutGetLastFileNameInPath(const OdAnsiString& path) {
    return lastComponentOf(path);
}
OdString voutGetLastFileNameInPathW(const OdString& path) {
    return lastComponentOf(path);
}

OdAnsiString voutGetFileNoExtName(const OdAnsiString& path) {
    const OdAnsiString name = lastComponentOf(path);
    return OdAnsiString(stemOf(name.view()));
}
