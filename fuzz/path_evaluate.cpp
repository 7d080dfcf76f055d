// Paths, patterns and dates as texts. The lines of the input are, as far as there are any: a path,
// a second one, a pattern, a name to look for, and the texts of the tree in kTexts.
#include <locale.h>
#include <sys/stat.h>
#include <wctype.h>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "property.h"
#include "support/testfolder.h"
#include "utils/elementvalue.h"
#include "utils/paths.h"

namespace {

using Lines = std::vector<std::string>;

constexpr std::pair<const char*, const char*> kTexts[] = {
    {"Runtime", "ExeRootPath"}, {"Runtime", "AppDataPath"}, {"Runtime", "DocumentPath"},
    {"Runtime", "TempPath"},    {"Runtime", "SysFontPath"}, {"User", "language"}};
constexpr const char* kVariables[] = {"EXEPATH",  "APPDATAPATH", "DOCUMENTPATH",
                                      "TEMPPATH", "SYSFONTPATH", "LANGUAGE"};
constexpr std::size_t kFirstText = 4;

Lines linesOf(std::string_view text) {
    Lines lines{""};
    for (const char letter : text) {
        if (letter == '\n') {
            lines.emplace_back();
        } else {
            lines.back() += letter;
        }
    }
    return lines;
}

std::string lineAt(const Lines& lines, std::size_t index) {
    return index < lines.size() ? lines[index] : std::string();
}

// ---- variables ----

std::optional<std::string> valueOf(std::string_view name, const Lines& lines) {
    for (std::size_t index = 0; index < std::size(kVariables); ++index) {
        if (name != kVariables[index]) {
            continue;
        }
        const std::string value = lineAt(lines, kFirstText + index);
        if (name == "LANGUAGE" && value.empty()) {
            return "zh-CN";
        }
        return kFirstText + index < lines.size() ? std::optional(value) : std::nullopt;
    }
    return std::nullopt;
}

std::string expectedPath(std::string_view path, const Lines& lines) {
    std::string result;
    for (std::size_t at = 0; at < path.size(); ++at) {
        const std::size_t end = path[at] == '%' ? path.find('%', at + 1) : path.npos;
        const auto value =
            end == path.npos ? std::nullopt : valueOf(path.substr(at + 1, end - at - 1), lines);
        result += value ? *value : std::string(1, path[at]);
        at = value ? end : at;
    }
    return result;
}

void checkVariables(const Lines& lines) {
    const VoJsonPtr root = ElementValue::createObject(kElementObject);
    for (std::size_t index = 0; index < std::size(kTexts); ++index) {
        if (kFirstText + index < lines.size()) {
            const auto [branch, key] = kTexts[index];
            root->makePath(branch)->set_propertys(key, OdAnsiString(lines[kFirstText + index]),
                                                  false);
        }
    }
    requireProperty(vosiutEvaluatePath(lines[0], root).view() == expectedPath(lines[0], lines),
                    "each variable has its value, in one pass");
    requireProperty(vosiutEvaluatePath(lines[0], nullptr).view() == expectedPath(lines[0], {}),
                    "without a tree there is the default language alone");
}

// ---- parts ----

void checkParts(const OdAnsiString& path) {
    const OdAnsiString parent = voutGetParentDir(path);
    const OdAnsiString name = voutGetLastFileNameInPath(path);
    requireProperty(parent + name == path, "folder and name make the path");
    requireProperty(name.findOneOf("/\\") < 0, "a name has no separator");
    requireProperty(voutGetFileName(path) == name, "both ask for the name");
    requireProperty(name.view().starts_with(voutGetFileNoExtName(path).view()),
                    "a name begins with its stem");

    const OdString wide = OdUtf8StringToOdString(path);
    requireProperty(voutGetParentDirW(wide) == OdUtf8StringToOdString(parent),
                    "the wide folder is the same");
    requireProperty(voutGetLastFileNameInPathW(wide) == OdUtf8StringToOdString(name),
                    "the wide name is the same");
}

void checkJoin(const std::string& first, const std::string& second) {
    const OdAnsiString joined = voutCombinePath(first, second);
    if (first.empty()) {
        requireProperty(joined.view() == second, "nothing and a path is the path");
        return;
    }
    std::string front = first;
    front.erase(front.find_last_not_of('/') + 1);
    const std::string back = second.substr(std::min(second.find_first_not_of('/'), second.size()));
    requireProperty(joined.view() == front + "/" + back, "one separator joins two paths");
}

// ---- patterns and names ----

// In the order of Unicode, small letters; a byte that is part of no character is one beyond
// Unicode.
std::u32string folded(std::string_view text) {
    static const locale_t unicode = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    constexpr char32_t kBeyond = 0x110000;
    std::u32string result;
    while (!text.empty()) {
        const auto lead = static_cast<unsigned char>(text[0]);
        std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        const OdString one =
            OdUtf8StringToOdString(OdAnsiString(text.substr(0, std::min(length, text.size()))));
        // Well formed when it comes back.
        const bool isCharacter = one.getLength() == 1 && length <= text.size() &&
                                 OdStringToUtf8String(one).view() == text.substr(0, length);
        if (isCharacter) {
            result +=
                static_cast<char32_t>(::towlower_l(static_cast<wint_t>(one.getAt(0)), unicode));
        } else {
            result += static_cast<char32_t>(kBeyond + lead);
            length = 1;
        }
        text.remove_prefix(length);
    }
    return result;
}

// Which beginnings of the name fit each beginning of the pattern.
bool fits(const std::u32string& pattern, const std::u32string& name) {
    std::vector<bool> fitting(name.size() + 1, false);
    fitting[0] = true;
    for (const char32_t wanted : pattern) {
        std::vector<bool> next(name.size() + 1, false);
        next[0] = wanted == U'*' && fitting[0];
        for (std::size_t length = 1; length <= name.size(); ++length) {
            const bool same = wanted == U'?' || wanted == name[length - 1];
            next[length] =
                wanted == U'*' ? fitting[length] || next[length - 1] : same && fitting[length - 1];
        }
        fitting = next;
    }
    return fitting.back();
}

struct File {
    const char* path;
    int level;
    bool isLinked;  // is also found below "linked" in place of "sub"
};

constexpr File kFiles[] = {{"a.txt", 1, false},
                           {"A.TXT", 1, false},
                           {"Ab.lin", 1, false},
                           {"a.b.c", 1, false},
                           {".hidden", 1, false},
                           {"back\\slash.txt", 1, false},
                           {"\xC3\x84hre.dxf", 1, false},
                           {"\xE4\xBA\x8C.ttf", 1, false},
                           {"\xF0\x9F\x98\x80x", 1, false},
                           {"x\xFFy", 1, false},
                           {"sub/a.txt", 2, true},
                           {"sub/C.LIN", 2, true},
                           {"sub/Deep/a.txt", 3, true},
                           {"SUB/d.txt", 2, false}};

// A small tree of files, four levels below the temporary folder.
class Place {
  public:
    Place() {
        for (const File& file : kFiles) {
            files.file(kTop + ("/" + std::string(file.path)));
        }
        files.link(kTop + std::string("/loop"), ".");
        files.link(kTop + std::string("/dead"), "nowhere");
        files.link(kTop + std::string("/linked"), "sub");
    }

    std::string top() const { return files.path(kTop); }

  private:
    static constexpr const char* kTop = "1/2/3/4";

    TestFolder files;
};

const Place& place() {
    static const Place thePlace;
    return thePlace;
}

std::vector<std::string> expectedFiles(const std::string& pattern, int depth) {
    std::vector<std::string> expected;
    const std::u32string wanted = folded(pattern);
    for (const File& file : kFiles) {
        const std::string path = file.path;
        if (file.level > depth || !fits(wanted, folded(path.substr(path.rfind('/') + 1)))) {
            continue;
        }
        expected.push_back(place().top() + '/' + path);
        if (file.isLinked) {
            expected.push_back(place().top() + "/linked" + path.substr(3));
        }
    }
    std::sort(expected.begin(), expected.end());
    return expected;
}

void checkPattern(const std::string& pattern, int depth) {
    OdArray<OdAnsiString> answers;
    answers.append("before");
    voutGlobNoCaseSensitive2(place().top(), pattern, answers, depth);
    requireProperty(answers.first() == "before", "answers are appended");
    std::vector<std::string> found;
    for (const OdAnsiString& answer : answers) {
        found.push_back(answer.str());
    }
    found.erase(found.begin());
    const bool isName =
        depth > 0 && pattern.find_first_of(std::string_view("*?/\0", 4)) == std::string::npos;
    const bool hasExact = isName && voutIsExistFile(place().top() + '/' + pattern);
    requireProperty(!hasExact || (!found.empty() && found[0] == place().top() + '/' + pattern),
                    "a name that fits exactly comes first");
    std::sort(found.begin(), found.end());
    requireProperty(found == expectedFiles(pattern, depth), "just the files that fit are found");
}

std::vector<std::u32string> components(std::string_view path) {
    std::vector<std::u32string> parts;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find_first_of("/\\"), path.size());
        if (end > 0 && path.substr(0, end) != ".") {
            parts.push_back(folded(path.substr(0, end)));
        }
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return parts;
}

std::size_t stepsUp(std::string_view name) {
    std::size_t count = 0;
    for (std::size_t at = name.find(".."); at != name.npos; at = name.find("..", at + 1)) {
        ++count;
    }
    return count;
}

void checkLookup(const std::string& name) {
    // Not out of the temporary folder.
    if (stepsUp(name) > 3) {
        return;
    }
    const std::string path = place().top() + '/' + name;
    OdAnsiString found = "unchanged";
    const bool isThere = voutIsExistFileNoCaseSensitive(path, found);
    struct stat status {};
    if (!isThere) {
        requireProperty(found == "unchanged", "a miss leaves the answer");
        const bool isPath = name.find('\0') == std::string::npos;
        requireProperty(!isPath || ::stat(path.c_str(), &status) != 0, "what is there is found");
        return;
    }
    requireProperty(::stat(found.c_str(), &status) == 0, "what is found is there");
    requireProperty(found.view().starts_with('/'), "an answer is an absolute path");
    OdAnsiString again;
    requireProperty(voutIsExistFileNoCaseSensitive(found, again) && again == found,
                    "an answer leads to itself");
    if (stepsUp(name) == 0) {
        requireProperty(components(found.view()) == components(path),
                        "an answer differs in case alone");
    }
}

// ---- dates ----

void checkTime(const std::string& text) {
    const std::time_t time = voutStrToTime(OdAnsiString(text));
    if (time == -1) {
        return;
    }
    static constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                              "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    std::tm parts{};
    ::gmtime_r(&time, &parts);
    char rest[64];
    std::snprintf(rest, sizeof rest, "%02d %04d %02d:%02d:%02d", parts.tm_mday,
                  parts.tm_year + 1900, parts.tm_hour, parts.tm_min, parts.tm_sec);
    std::string expected = kMonths[parts.tm_mon] + (" " + std::string(rest));
    // The day may be padded with a space.
    if (text.size() > 4 && text[4] == ' ') {
        expected[4] = expected[4] == '0' ? ' ' : expected[4];
    }
    requireProperty(text == expected, "a time comes back as its text");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Lines lines = linesOf({reinterpret_cast<const char*>(data), size});
    checkVariables(lines);
    checkParts(lines[0]);
    checkJoin(lines[0], lineAt(lines, 1));
    checkTime(lineAt(lines, 1));
    checkPattern(lineAt(lines, 2), static_cast<int>(size % 5));
    checkLookup(lineAt(lines, 3));
    return 0;
}
