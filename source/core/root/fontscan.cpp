#include "fontscan.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <utility>

#include <utils/paths.h>

namespace vosi {

namespace {

bool isRepeated(const PathEntries& entries, PathEntries::const_iterator entry) {
    return std::any_of(entries.begin(), entry,
                       [&](const PathEntry& earlier) { return earlier.path == entry->path; });
}

constexpr std::array<std::string_view, 4> kExtensions = {".shx", ".shp", ".ttc", ".ttf"};

// Which of the extensions the path ends in, in any case; their number when it is none. No letter
// but those of ASCII has one of its letters for its small form.
std::size_t extensionOf(std::string_view path) {
    std::array<char, 4> end{};
    path.substr(path.size() - std::min(path.size(), end.size())).copy(end.data(), end.size());
    for (char& letter : end) {
        letter = letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    }
    const auto found =
        std::find(kExtensions.begin(), kExtensions.end(), std::string_view(end.data(), end.size()));
    return static_cast<std::size_t>(found - kExtensions.begin());
}

void moveTo(Paths& files, Paths& found) {
    if (files.empty()) {
        files = std::move(found);
        return;
    }
    std::move(found.begin(), found.end(), std::back_inserter(files));
}

}  // namespace

FontFiles fontFilesBelow(const PathEntries& entries) {
    FontFiles files;
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        if (isRepeated(entries, entry)) {
            continue;
        }
        // One walk for all: the order doesn't depend on the pattern.
        OdArray<OdAnsiString> found;
        voutGlobNoCaseSensitive2(OdStringToUtf8String(entry->path), "*", found, entry->depth);
        std::array<Paths, kExtensions.size() + 1> sorted;
        for (OdAnsiString& file : found) {
            sorted[extensionOf(file.view())].push_back(std::move(file));
        }
        moveTo(files.shx, sorted[0]);
        moveTo(files.shx, sorted[1]);
        moveTo(files.trueType, sorted[2]);
        moveTo(files.trueType, sorted[3]);
    }
    return files;
}

void scanShxFiles(const Paths& paths, OdStringArray& mainList, OdStringArray& bigList) {
    OdRxSystemServices& system = *odrxSystemServices();
    for (const OdAnsiString& file : paths) {
        const OdString path = OdUtf8StringToOdString(file);
        if (!system.accessFile(path, kFileRead)) {
            continue;
        }
        const OdStreamBufPtr stream =
            system.createFile(path, kFileRead, kShareDenyNo, kOpenExisting);
        switch (readShxKind(*stream)) {
            case kShxUnifont:
                mainList.append(path);
                break;
            case kShxBigFont:
                bigList.append(path);
                break;
            default:
                break;
        }
    }
}

void scanTtfFiles(const Paths& paths, OdArray<OdTtfDescriptor>& descriptors,
                  std::vector<TtfFaceRecord>& records, OdStringArray& files) {
    // A file has one face, but for the few collections.
    const auto fileCount = static_cast<unsigned int>(paths.size());
    descriptors.reserve(descriptors.size() + fileCount);
    records.reserve(records.size() + fileCount);
    files.reserve(files.size() + fileCount);
    std::vector<TtfFaceRecord> faces;
    for (const OdAnsiString& file : paths) {
        const OdString path = OdUtf8StringToOdString(file);
        faces.clear();
        if (!readTtfDescriptors(path, faces)) {
            continue;
        }
        for (TtfFaceRecord& face : faces) {
            face.fileName = path;
            descriptors.append(face);
        }
        std::move(faces.begin(), faces.end(), std::back_inserter(records));
        files.append(path);
    }
}

}  // namespace vosi
