#include "moduleplace.h"

#include <dlfcn.h>
#include <link.h>
#include <sys/stat.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

bool mayEveryoneWrite(const fs::path& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && (status.st_mode & S_IWOTH) != 0;
}

bool isFile(const fs::path& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}

OdString toText(const fs::path& path) {
    return OdUtf8StringToOdString(path.c_str());
}

OdString refusalAt(const fs::path& file) {
    // A sticky folder is no better: everyone may still put a new file there.
    if (mayEveryoneWrite(file.parent_path())) {
        return L"everyone may write its folder, " + toText(file.parent_path());
    }
    return mayEveryoneWrite(file) ? OdString(L"everyone may write the file") : OdString();
}

// The library that calls the loader: its run path is the one that counts.
void* ownHandle() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&ownHandle), &info) == 0) {
        return nullptr;
    }
    return dlopen(info.dli_fname, RTLD_LAZY | RTLD_NOLOAD);
}

std::vector<std::string> loaderFolders() {
    std::vector<std::string> folders;
    void* const own = ownHandle();
    Dl_serinfo size{};
    if (!own || dlinfo(own, RTLD_DI_SERINFOSIZE, &size) != 0) {
        return folders;
    }
    // The list is longer than its declared type says, and holds the texts behind it.
    std::vector<std::max_align_t> storage(size.dls_size / sizeof(std::max_align_t) + 1);
    auto* const list = reinterpret_cast<Dl_serinfo*>(storage.data());
    if (dlinfo(own, RTLD_DI_SERINFOSIZE, list) == 0 && dlinfo(own, RTLD_DI_SERINFO, list) == 0) {
        for (unsigned int index = 0; index < list->dls_cnt; ++index) {
            folders.emplace_back(list->dls_serpath[index].dls_name);
        }
    }
    return folders;
}

}  // namespace

OdString placeRefusal(const OdString& path) {
    const fs::path named(OdStringToUtf8String(path).str());
    const OdString refusal = refusalAt(named);
    std::error_code unknown;
    const fs::path real = refusal.isEmpty() ? fs::canonical(named, unknown) : fs::path();
    const bool leadsElsewhere = !real.empty() && real.native() != named.native();
    return leadsElsewhere ? refusalAt(real) : refusal;
}

LoaderPlace placeAmongLoaderFolders(const OdString& name) {
    LoaderPlace place;
    for (const std::string& folder : loaderFolders()) {
        const fs::path file = fs::path(folder) / OdStringToUtf8String(name).str();
        if (!isFile(file)) {
            continue;
        }
        const OdString refusal = file.is_absolute()
                                     ? placeRefusal(toText(file))
                                     : OdString(L"modules are not taken from the working folder");
        if (refusal.isEmpty()) {
            return {toText(file), {}};
        }
        place.refusal = refusal;
    }
    return place;
}
