#include "fontproperties.h"

#include <string_view>
#include <unordered_map>

#include <utils/paths.h>

#include "treehelpers.h"

namespace vosi {

namespace {

constexpr std::uint16_t kSimplifiedChinese = 0x804;
constexpr std::uint16_t kLanguageNeutral = 0;

struct Typeface {
    const OdString* name;
    const TtfFaceRecord* record;  // the first of the name; null when there is none
    int styles;
};

int styleOf(const OdTtfDescriptor& face) {
    if (face.isBold() && face.isItalic()) {
        return 4;
    }
    return face.isBold() ? 1 : face.isItalic() ? 2 : 0;
}

const OdString& localNameOf(const Typeface& typeface) {
    if (!typeface.record) {
        return *typeface.name;
    }
    const FontNames& names = typeface.record->localNames;
    for (const std::uint16_t language : {kSimplifiedChinese, kLanguageNeutral}) {
        if (const auto name = names.find(language); name != names.end()) {
            return name->second;
        }
    }
    return *typeface.name;
}

std::vector<Typeface> typefacesOf(const OdArray<OdTtfDescriptor>& faces,
                                  const std::vector<TtfFaceRecord>& records) {
    std::vector<Typeface> typefaces;
    std::unordered_map<std::wstring_view, std::size_t> placeOf;
    placeOf.reserve(faces.size());
    for (const OdTtfDescriptor& face : faces) {
        const auto [place, isNew] = placeOf.emplace(face.typeface.view(), typefaces.size());
        if (isNew) {
            typefaces.push_back({&face.typeface, nullptr, 0});
        }
        typefaces[place->second].styles |= styleOf(face);
    }
    for (const TtfFaceRecord& record : records) {
        const auto place = placeOf.find(record.typeface.view());
        if (place != placeOf.end() && !typefaces[place->second].record) {
            typefaces[place->second].record = &record;
        }
    }
    return typefaces;
}

}  // namespace

VoJsonPtr fontFilesNode(const OdStringArray& paths) {
    VoJsonPtr files = tree::newArray();
    for (const OdString& path : paths) {
        const VoJsonPtr file = tree::newObject();
        file->set_propertysW("name", voutGetLastFileNameInPathW(path), false);
        file->set_propertysW("path", path, false);
        file->set_propertyB("canExt", true, false);
        files->append(file);
    }
    return files;
}

VoJsonPtr typefacesNode(const OdArray<OdTtfDescriptor>& faces,
                        const std::vector<TtfFaceRecord>& records) {
    VoJsonPtr nodes = tree::newArray();
    for (const Typeface& typeface : typefacesOf(faces, records)) {
        const VoJsonPtr names = tree::newObject();
        names->set_propertysW("default", *typeface.name, false);
        names->set_propertysW("zh-CN", localNameOf(typeface), false);
        const VoJsonPtr node = tree::newObject();
        node->set_propertyJ("facename", names);
        node->set_propertyI("flag", typeface.styles, false);
        nodes->append(node);
    }
    return nodes;
}

}  // namespace vosi
