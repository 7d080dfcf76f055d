// Variables in paths, the paths that tree nodes hold, and the application's temporary folder.
#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "utils/paths.h"

namespace {

struct Variable {
    std::string_view name;
    const char* keyPath;
};

constexpr std::array<Variable, 5> kRuntimeVariables = {{
    {"EXEPATH", "Runtime/ExeRootPath"},
    {"APPDATAPATH", "Runtime/AppDataPath"},
    {"DOCUMENTPATH", "Runtime/DocumentPath"},
    {"TEMPPATH", "Runtime/TempPath"},
    {"SYSFONTPATH", "Runtime/SysFontPath"},
}};

constexpr const char* kDefaultLanguage = "zh-CN";

/// The text of a text node that has one.
std::optional<OdAnsiString> textOf(const VoJsonPtr& node) {
    const bool isText =
        node && (node->valueType() & (kElementKindMask | kElementNoValue)) == kElementText;
    return isText ? std::optional(node->strValue()) : std::nullopt;
}

std::optional<OdAnsiString> textAt(const VoJsonPtr& root, const char* keyPath) {
    return root ? textOf(root->quickGetProperty(keyPath)) : std::nullopt;
}

OdAnsiString languageOf(const VoJsonPtr& root) {
    for (const char* keyPath : {"User/language", "Core/AppInfo/language"}) {
        const std::optional<OdAnsiString> language = textAt(root, keyPath);
        if (language && !language->isEmpty()) {
            return *language;
        }
    }
    return kDefaultLanguage;
}

std::optional<OdAnsiString> valueOf(std::string_view name, const VoJsonPtr& root) {
    for (const Variable& variable : kRuntimeVariables) {
        if (variable.name == name) {
            return textAt(root, variable.keyPath);
        }
    }
    return name == "LANGUAGE" ? std::optional(languageOf(root)) : std::nullopt;
}

template <class Append>
void enumerateTexts(const VoJsonPtr& node, Append append) {
    if (const std::optional<OdAnsiString> text = textOf(node)) {
        append(*text);
        return;
    }
    const int count = node.ArrayCount();
    for (int index = 0; index < count; ++index) {
        if (const std::optional<OdAnsiString> text = textOf(node(index))) {
            append(*text);
        }
    }
}

OdAnsiString& temporaryFolder() {
    static OdAnsiString path;
    return path;
}

}  // namespace

void voutEnumPaths(const VoJsonPtr& node, OdArray<OdAnsiString>& list) {
    enumerateTexts(node, [&](const OdAnsiString& text) { list.append(text); });
}

void voutEnumPathsW(const VoJsonPtr& node, OdStringArray& list) {
    enumerateTexts(node,
                   [&](const OdAnsiString& text) { list.append(OdUtf8StringToOdString(text)); });
}

// A "%" that ends no variable may begin the next one: "100%/%EXEPATH%" holds one variable.
OdAnsiString vosiutEvaluatePath(const OdAnsiString& path, const VoJsonPtr& root) {
    std::string evaluated;
    std::string_view rest = path.view();
    for (;;) {
        const std::size_t begin = rest.find('%');
        const std::size_t end = begin == rest.npos ? rest.npos : rest.find('%', begin + 1);
        if (end == rest.npos) {
            evaluated += rest;
            return evaluated;
        }
        const auto value = valueOf(rest.substr(begin + 1, end - begin - 1), root);
        evaluated += rest.substr(0, value ? begin : end);
        if (value) {
            evaluated += value->view();
        }
        rest.remove_prefix(value ? end + 1 : end);
    }
}

void setTempPath(const OdAnsiString& path) {
    temporaryFolder() = path;
}

OdAnsiString voutTempPath() {
    return temporaryFolder();
}
