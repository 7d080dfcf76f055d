// Host file services: forwarders to the font search service, so that a module which registers
// another one changes what the drawing runtime finds.
#include <utils/paths.h>

#include "core/voservicekeys.h"
#include "core/vosifindfontsvr.h"
#include "rootservices.h"
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

}  // namespace

OdString VoAppService::findFile(const OdString& filename, OdDbBaseDatabase* database,
                                FindFileHint hint) {
    if (filename.isEmpty()) {
        return filename;
    }
    const auto finder = optionalService<vosi::VosiFindFontSvr>(vosi::kFindFontsKey);
    return finder.isNull() ? OdString() : finder->findFile(filename, database, hint);
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
    const char* key = substituteKey(fontType);
    if (const OdAnsiString font = tree::textOr(tree::at(sysConfig, key), ""); !font.isEmpty()) {
        return OdUtf8StringToOdString(font);
    }
    return ExHostAppServices::getSubstituteFont(fontName, fontType);
}

bool VoAppService::ttfFileNameByDescriptor(const OdTtfDescriptor& description, OdString& filename) {
    if (description.typeface.isEmpty()) {
        return false;
    }
    const auto finder = optionalService<vosi::VosiFindFontSvr>(vosi::kFindFontsKey);
    OdString stored;
    if (!finder.isNull() && finder->ttfFileNameByDescriptor(description, stored)) {
        // The stored path may have gone stale; the bare name is then looked for everywhere.
        for (const OdString& name : {stored, voutGetLastFileNameInPathW(stored)}) {
            if (OdString found = findFile(name, nullptr, kTrueTypeFontFile); !found.isEmpty()) {
                filename = found;
                return true;
            }
        }
    }
    return ExHostAppServices::ttfFileNameByDescriptor(description, filename);
}
