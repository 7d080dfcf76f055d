// Host file services: forwarders to the font search service, so that a module which registers
// another one changes what the drawing runtime finds.
#include <utils/paths.h>

#include "core/voservicekeys.h"
#include "core/vosifindfontsvr.h"
#include "rootservices.h"
#include "runobserver.h"
#include "treehelpers.h"
#include "voappservice.h"

namespace {

// Where the user names the font that serves for any missing one of the type.
const char* substituteKey(OdFontType fontType) {
    switch (fontType) {
        case kFontTypeUnknown:
            return "User/SubstituteFont/FontTypeUnknown";
        case kFontTypeShx:
            return "User/SubstituteFont/FontTypeShx";
        case kFontTypeTrueType:
            return "User/SubstituteFont/FontTypeTrueType";
        case kFontTypeShape:
            return "User/SubstituteFont/FontTypeShape";
        case kFontTypeBig:
            return "User/SubstituteFont/FontTypeBig";
        case kFontTypeRsc:
            return "User/SubstituteFont/FontTypeRsc";
    }
    return "";
}

auto fontFinder() {
    return optionalService<vosi::VosiFindFontSvr>(vosi::kFindFontsKey);
}

OdString fileOfName(const OdString& name, OdDbBaseDatabase* database, int hint) {
    const auto finder = fontFinder();
    const bool canFind = !finder.isNull() && !name.isEmpty();
    return canFind ? finder->findFile(name, database, hint) : OdString();
}

bool fileOfFace(const OdTtfDescriptor& description, OdString& filename) {
    const auto finder = fontFinder();
    OdString stored;
    if (finder.isNull() || !finder->ttfFileNameByDescriptor(description, stored)) {
        return false;
    }
    // The stored path may have gone stale; the bare name is then looked for everywhere.
    for (const OdString& name : {stored, voutGetLastFileNameInPathW(stored)}) {
        OdString found = fileOfName(name, nullptr, OdDbBaseHostAppServices::kTrueTypeFontFile);
        if (!found.isEmpty()) {
            filename = found;
            return true;
        }
    }
    return false;
}

}  // namespace

OdString VoAppService::findFile(const OdString& filename, OdDbBaseDatabase* database,
                                FindFileHint hint) {
    if (filename.isEmpty()) {
        return filename;
    }
    return run::searched(run::SearchKind::kFile, filename, hint,
                         fileOfName(filename, database, hint));
}

void VoAppService::collectFilePathsInDirectory(OdStringArray& result, const OdString& directory,
                                               const OdString& mask) {
    OdArray<OdAnsiString> paths;
    voutGlobNoCaseSensitive2(OdStringToUtf8String(directory), OdStringToUtf8String(mask), paths, 1);
    for (const OdAnsiString& path : std::as_const(paths)) {
        if (!path.isEmpty()) {
            result.append(OdUtf8StringToOdString(path));
        }
    }
}

OdString VoAppService::getSubstituteFont(const OdString& fontName, OdFontType fontType) {
    const OdAnsiString font = tree::textOr(tree::at(sysConfig, substituteKey(fontType)), "");
    return run::searched(run::SearchKind::kSubstitute, fontName, fontType,
                         font.isEmpty() ? ExHostAppServices::getSubstituteFont(fontName, fontType)
                                        : OdUtf8StringToOdString(font));
}

bool VoAppService::ttfFileNameByDescriptor(const OdTtfDescriptor& description, OdString& filename) {
    if (description.typeface.isEmpty()) {
        return false;
    }
    const bool isFound = fileOfFace(description, filename) ||
                         ExHostAppServices::ttfFileNameByDescriptor(description, filename);
    run::searched(run::SearchKind::kFace, description.typeface, static_cast<int>(description.flags),
                  isFound ? filename : OdString());
    return isFound;
}
