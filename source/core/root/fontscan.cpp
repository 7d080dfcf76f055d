#include "fontscan.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>

#include <utils/paths.h>

namespace vosi {

namespace {

using Paths = OdArray<OdAnsiString>;

bool isRepeated(const PathEntries& entries, PathEntries::const_iterator entry) {
    return std::any_of(entries.begin(), entry,
                       [&](const PathEntry& earlier) { return earlier.path == entry->path; });
}

Paths filesBelow(const PathEntries& entries, std::initializer_list<const char*> patterns) {
    Paths files;
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        if (isRepeated(entries, entry)) {
            continue;
        }
        const OdAnsiString folder = OdStringToUtf8String(entry->path);
        for (const char* pattern : patterns) {
            voutGlobNoCaseSensitive2(folder, pattern, files, entry->depth);
        }
    }
    return files;
}

}  // namespace

void scanShxFiles(const PathEntries& entries, OdStringArray& mainList, OdStringArray& bigList) {
    OdRxSystemServices& system = *odrxSystemServices();
    const Paths files = filesBelow(entries, {"*.shx", "*.shp"});
    for (const OdAnsiString& file : files) {
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

void scanTtfFiles(const PathEntries& entries, OdArray<OdTtfDescriptor>& descriptors,
                  std::vector<TtfFaceRecord>& records, OdStringArray& files) {
    const Paths found = filesBelow(entries, {"*.ttc", "*.ttf"});
    for (const OdAnsiString& file : found) {
        const OdString path = OdUtf8StringToOdString(file);
        std::vector<TtfFaceRecord> faces;
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
