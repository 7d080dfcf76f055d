#include "runstate.h"

#include <utility>

#include <utils/paths.h>

#include "treehelpers.h"

namespace inspect {

namespace {

std::vector<std::string> pathsOfFiles(const VoJsonPtr& files) {
    std::vector<std::string> paths;
    const int count = tree::isArray(files) ? files->itemCount() : 0;
    paths.reserve(static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index) {
        paths.push_back(tree::textOr(tree::at(files->getItem(index), "path"), "").str());
    }
    return paths;
}

std::string fileAskedAs(int hint) {
    switch (hint) {
        case OdDbBaseHostAppServices::kFontFile:
            return "font file of any kind";
        case OdDbBaseHostAppServices::kCompiledShapeFile:
            return "SHX file";
        case OdDbBaseHostAppServices::kTrueTypeFontFile:
            return "TrueType file";
        default:
            return "";
    }
}

std::string faceAskedAs(int style) {
    OdTtfDescriptor face;
    face.flags = static_cast<std::uint32_t>(style);
    return std::string("TrueType face") + (face.isBold() ? ", bold" : "") +
           (face.isItalic() ? ", italic" : "");
}

std::string substituteAskedAs(int type) {
    switch (type) {
        case kFontTypeShx:
            return "substitute for an SHX font";
        case kFontTypeTrueType:
            return "substitute for a TrueType font";
        case kFontTypeShape:
            return "substitute for a shape file";
        case kFontTypeBig:
            return "substitute for a big font";
        case kFontTypeRsc:
            return "substitute for a font resource";
        default:
            return "substitute for a font of unknown type";
    }
}

}  // namespace

std::vector<PathList> pathListsOf(const VoJsonPtr& node) {
    std::vector<PathList> lists;
    const int count = tree::isObject(node) ? node->propertyCount() : 0;
    for (int index = 0; index < count; ++index) {
        OdAnsiString key;
        OdArray<OdAnsiString> paths;
        voutEnumPaths(node->propertyAt(index, key), paths);
        PathList& list = lists.emplace_back();
        list.key = key.str();
        for (const OdAnsiString& path : std::as_const(paths)) {
            OdAnsiString found;
            list.paths.push_back({path.str(), voutIsExistFileNoCaseSensitive(path, found)});
        }
    }
    return lists;
}

FontLists fontListsOf(const VoJsonPtr& node) {
    FontLists lists;
    lists.mainShx = pathsOfFiles(tree::at(node, "shx"));
    lists.bigShx = pathsOfFiles(tree::at(node, "bigfont"));
    const VoJsonPtr families = tree::at(node, "ttf");
    const int count = tree::isArray(families) ? families->itemCount() : 0;
    for (int index = 0; index < count; ++index) {
        const VoJsonPtr family = families->getItem(index);
        lists.families.push_back({tree::textOr(tree::at(family, "facename/default"), "").str(),
                                  tree::textOr(tree::at(family, "facename/zh-CN"), "").str(),
                                  tree::integerPropertyOr(family, "flag", 0)});
    }
    return lists;
}

std::string askedAs(run::SearchKind kind, int detail) {
    switch (kind) {
        case run::SearchKind::kFile:
            return fileAskedAs(detail);
        case run::SearchKind::kFace:
            return faceAskedAs(detail);
        case run::SearchKind::kSubstitute:
            return substituteAskedAs(detail);
    }
    return "";
}

}  // namespace inspect
