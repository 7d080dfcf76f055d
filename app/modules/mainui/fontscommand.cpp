#include "fontscommand.h"

#include <algorithm>

#include <app/services.h>

#include "say.h"
#include "text.h"

namespace vemoapp {

namespace {

// What is listed of each kind without a filter.
constexpr std::size_t kShownFonts = 12;

struct FaceStyle {
    int flag;
    const char* name;
};

constexpr FaceStyle kFaceStyles[] = {{1, "bold"}, {2, "italic"}, {4, "bold italic"}};

std::string textUnder(const VoJsonPtr& node, const char* path) {
    const VoJsonPtr child = node->quickGetProperty(path);
    return child ? child->strValue().str() : "";
}

std::string folded(const std::string& text) {
    return OdStringToUtf8String(OdUtf8StringToOdString(text).makeLower()).str();
}

bool fits(const std::string& name, const std::string& foldedFilter) {
    return folded(name).find(foldedFilter) != std::string::npos;
}

// A regular face leaves no mark in the index: what is listed are the styles beside it.
std::string describeFamily(const VoJsonPtr& family) {
    const std::string name = textUnder(family, "facename/default");
    const std::string chinese = textUnder(family, "facename/zh-CN");
    std::string line = name.empty() ? "(without a name)" : name;
    line += chinese == name || chinese.empty() ? "" : " (" + chinese + ")";
    int flags = 0;
    family->GetDataI("flag", flags);
    std::vector<std::string> styles;
    for (const FaceStyle& style : kFaceStyles) {
        if ((flags & style.flag) != 0) {
            styles.emplace_back(style.name);
        }
    }
    return styles.empty() ? line : line + ": " + joined(styles, ", ", styles.size());
}

std::string describeFile(const VoJsonPtr& file) {
    return textUnder(file, "name") + ": " + textUnder(file, "path");
}

struct FontList {
    const char* title;
    const char* key;
    std::vector<const char*> names;  // what a filter is compared with
    std::string (*describe)(const VoJsonPtr& font);
};

std::vector<std::string> linesOf(const FontList& list, const VoJsonPtr& fonts,
                                 const std::string& filter) {
    const std::string foldedFilter = folded(filter);
    std::vector<std::string> lines;
    for (int index = 0; index < fonts.ArrayCount(); ++index) {
        const VoJsonPtr font = fonts(index);
        for (const char* name : list.names) {
            if (fits(textUnder(font, name), foldedFilter)) {
                lines.push_back(list.describe(font));
                break;
            }
        }
    }
    return lines;
}

void showList(const FontList& list, const std::string& filter) {
    const VoJsonPtr fonts = vo_runtime_config(list.key);
    const std::vector<std::string> lines = linesOf(list, fonts, filter);
    const std::size_t shown = filter.empty() ? std::min(kShownFonts, lines.size()) : lines.size();
    const std::string total = std::to_string(fonts.ArrayCount());
    const std::string count =
        filter.empty() ? total : std::to_string(lines.size()) + " of " + total;
    say(std::string(list.title) + ": " + count);
    for (std::size_t index = 0; index < shown; ++index) {
        say("  " + lines[index]);
    }
    if (shown < lines.size()) {
        say("  and " + std::to_string(lines.size() - shown) + " more; a filter lists all that fit");
    }
}

void fontsCommand(const Command::Arguments& arguments) {
    const std::string filter = joined(arguments, " ", arguments.size());
    const FontList lists[] = {
        {"TrueType families", "Fonts/ttf", {"facename/default", "facename/zh-CN"}, describeFamily},
        {"SHX fonts", "Fonts/shx", {"name"}, describeFile},
        {"Big fonts", "Fonts/bigfont", {"name"}, describeFile}};
    for (const FontList& list : lists) {
        showList(list, filter);
    }
}

}  // namespace

void addFontsCommand(CommandTable& table) {
    table.add(
        {"FONTS", "[filter]", "lists the fonts, or all whose name holds the filter", fontsCommand});
}

}  // namespace vemoapp
