#include "fontscan.h"

#include <algorithm>
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

// Whether the path ends in the extension, which is in small letters. No letter but those of ASCII
// has one of its letters for its small form.
bool hasExtension(std::string_view path, std::string_view extension) {
    const auto isSame = [](char letter, char small) {
        const bool isCapital = letter >= 'A' && letter <= 'Z';
        return (isCapital ? letter - 'A' + 'a' : letter) == small;
    };
    return path.size() >= extension.size() &&
           std::equal(extension.rbegin(), extension.rend(), path.rbegin(),
                      [&](char small, char letter) { return isSame(letter, small); });
}

void takeFiles(OdArray<OdAnsiString>& found, const char* extension, Paths& files) {
    for (OdAnsiString& file : found) {
        if (hasExtension(file.view(), extension)) {
            files.push_back(std::move(file));
        }
    }
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
        takeFiles(found, ".shx", files.shx);
        takeFiles(found, ".shp", files.shx);
        takeFiles(found, ".ttc", files.trueType);
        takeFiles(found, ".ttf", files.trueType);
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
    std::vector<TtfFaceRecord> faces;
    for (const OdAnsiString& file : paths) {
        const OdString path = OdUtf8StringToOdString(file);
        faces.clear();
        if (!readTtfDescriptors(path, faces)) {
            continue;
        }
        for (const TtfFaceRecord& face : faces) {
            // A record is asked for its names alone, and a path takes more room than they.
            OdTtfDescriptor descriptor = face;
            descriptor.fileName = path;
            descriptors.append(std::move(descriptor));
        }
        std::move(faces.begin(), faces.end(), std::back_inserter(records));
        files.append(path);
    }
}

}  // namespace vosi
