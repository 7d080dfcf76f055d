// The scans that fill the index.
#include <filesystem>
#include <system_error>

#include <utils/paths.h>

#include "core/voexports.h"
#include "core/vosifontlists.h"
#include "fontscan.h"
#include "fontwarmup.h"
#include "runobserver.h"
#include "voapfontsservice.h"

namespace vosi {

namespace {

constexpr int kFontFolderDepth = 5;
constexpr int kApplicationFolderDepth = 1;

void addFolders(PathEntries& entries, const OdStringArray& folders) {
    for (const OdString& folder : folders) {
        entries.push_back({folder, kFontFolderDepth});
    }
}

OdString folderOf(VosiDocument& document) {
    const bool hasFile = (document.documentStateBits() & VosiDocument::kUnnamed) == 0;
    return hasFile ? voutGetParentDirW(document.documentFilePath()) : OdString();
}

// A folder that isn't there is usual. One that is there and keeps its files to itself is told to
// who looks, since the scan passes it over in silence.
void noteUnreadable(const PathEntries& entries) {
    if (!run::isObserved()) {
        return;
    }
    for (const PathEntry& entry : entries) {
        const OdAnsiString folder = OdStringToUtf8String(entry.path);
        std::error_code error;
        const std::filesystem::directory_iterator opened(folder.str(), error);
        if (error && error != std::errc::no_such_file_or_directory) {
            run::note([&] { return folder + " can't be read: " + error.message(); });
        }
    }
}

}  // namespace

void VoApFontsService::scanFonts(int flags) {
    PathEntries entries;
    if ((flags & kScanSystemFolders) != 0) {
        OdStringArray folders;
        vodbSystemServices()->getSystemFontFolders(folders);
        addFolders(entries, folders);
    }
    if ((flags & kScanConfiguredFolders) != 0) {
        OdStringArray folders;
        voutEnumPathsW(vo_runtime_config("paths/fontPaths"), folders);
        addFolders(entries, folders);
        if (const OdAnsiString application = exeRootPath(); !application.isEmpty()) {
            entries.push_back({OdUtf8StringToOdString(application), kApplicationFolderDepth});
        }
    }
    const run::Span span(run::SpanKind::kStep, "font scan");
    noteUnreadable(entries);
    const FontFiles found = fontFilesBelow(entries);
    warmUpFonts(found.shx);
    warmUpFonts(found.trueType);
    scanShxFiles(found.shx, mainShxFiles, bigShxFiles);
    scanTtfFiles(found.trueType, ttfDescriptors, ttfFaceRecords, ttfFiles);
    run::note([this] {
        return "the index holds " + std::to_string(ttfFaceRecords.size()) + " faces in " +
               std::to_string(ttfFiles.size()) + " files, " + std::to_string(mainShxFiles.size()) +
               " main SHX fonts, " + std::to_string(bigShxFiles.size()) + " big fonts";
    });
}

// Gives a document that has a file its three lists, and leaves them empty: the drawing's folder
// isn't scanned, since findFile looks there anyway, and a module that wants fonts indexed for one
// drawing fills the lists itself.
void VoApFontsService::scanDocumentFonts(OdRxObject* document) {
    if (!document) {
        return;
    }
    const OdSmartPtr<VosiDocument> holder{OdRxObjectPtr(document)};
    const auto data =
        folderOf(*holder).isEmpty() ? OdSmartPtr<VosiDocumentData>() : holder->documentData();
    const auto dictionary = data.isNull() ? OdRxDictionaryPtr() : data->dictionary();
    if (dictionary.isNull()) {
        return;
    }
    const auto faces = OdRxObjectImpl<VosiMapTrueTypeFont>::createObject();
    const auto mainFonts = OdRxObjectImpl<VosiMapShxFont>::createObject();
    const auto bigFonts = OdRxObjectImpl<VosiMapShxFont>::createObject();
    dictionary->putAt(kDocumentFacesKey, faces.get());
    dictionary->putAt(kDocumentMainShxKey, mainFonts.get());
    dictionary->putAt(kDocumentBigShxKey, bigFonts.get());
}

}  // namespace vosi
