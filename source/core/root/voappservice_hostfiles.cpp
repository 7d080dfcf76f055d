// Host file services: forwarders to the font search service, so that a module which registers
// another one changes what the drawing runtime finds.
#include <utils/paths.h>

#include "core/voservicekeys.h"
#include "core/vosifindfontsvr.h"
#include "rootservices.h"
#include "voappservice.h"

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
    return ExHostAppServices::getSubstituteFont(fontName, fontType);
}

bool VoAppService::ttfFileNameByDescriptor(const OdTtfDescriptor& description, OdString& filename) {
    return ExHostAppServices::ttfFileNameByDescriptor(description, filename);
}
