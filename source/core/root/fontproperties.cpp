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
    OdString defaultName;
    OdString localName;
    int styles;
};

int styleOf(const OdTtfDescriptor& face) {
    if (face.isBold() && face.isItalic()) {
        return 4;
    }
    return face.isBold() ? 1 : face.isItalic() ? 2 : 0;
}

OdString localNameOf(const TtfFaceRecord& record) {
    for (const std::uint16_t language : {kSimplifiedChinese, kLanguageNeutral}) {
        if (const auto name = record.localNames.find(language); name != record.localNames.end()) {
            return name->second;
        }
    }
    return record.typeface;
}

std::vector<Typeface> typefacesOf(const OdArray<OdTtfDescriptor>& faces,
                                  const std::vector<TtfFaceRecord>& records) {
    std::unordered_map<std::wstring_view, const TtfFaceRecord*> recordOf;
    for (const TtfFaceRecord& record : records) {
        recordOf.emplace(record.typeface.view(), &record);
    }
    std::vector<Typeface> typefaces;
    std::unordered_map<std::wstring_view, std::size_t> placeOf;
    for (const OdTtfDescriptor& face : faces) {
        const auto [place, isNew] = placeOf.emplace(face.typeface.view(), typefaces.size());
        if (isNew) {
            const auto record = recordOf.find(face.typeface.view());
            const bool named = record != recordOf.end();
            typefaces.push_back(
                {face.typeface, named ? localNameOf(*record->second) : face.typeface, 0});
        }
        typefaces[place->second].styles |= styleOf(face);
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
        names->set_propertysW("default", typeface.defaultName, false);
        names->set_propertysW("zh-CN", typeface.localName, false);
        const VoJsonPtr node = tree::newObject();
        node->set_propertyJ("facename", names);
        node->set_propertyI("flag", typeface.styles, false);
        nodes->append(node);
    }
    return nodes;
}

}  // namespace vosi
