// Texts of result and message codes, and the tables that translators keep.
#include <algorithm>
#include <array>
#include <cstdarg>
#include <cwchar>
#include <map>
#include <set>

#include "boot_support.h"

using testing::ElementsAreArray;

namespace {

struct Row {
    unsigned int code;
    std::wstring_view chinese;
    std::wstring_view english;
};

constexpr Row kRows[] = {
#define DIAGNOSTIC(code, chinese, english) {code, L##chinese, L##english},
#include "messages/diagnostics.def"
#undef DIAGNOSTIC
};

const std::map<unsigned int, std::wstring_view> kResultNames = {
#define RESULT_NAME(code, name) {code, L## #name},
#include "messages/result_names.def"
#undef RESULT_NAME
};

/// The placeholders of a text in their order, flags and widths included.
std::vector<std::wstring> placeholders(std::wstring_view text) {
    std::vector<std::wstring> found;
    for (std::size_t at = text.find(L'%'); at != text.npos; at = text.find(L'%', at)) {
        const std::size_t last = text.find_first_not_of(L"%#+- .0123456789l", at);
        const std::size_t end = std::min(last, text.size() - 1) + 1;
        found.emplace_back(text.substr(at, end - at));
        at = end;
    }
    return found;
}

TEST(Diagnostics, BothLanguagesCarryTheSamePlaceholdersInTheSameOrder) {
    const std::set<std::wstring> known = {L"%d",  L"%f", L"%lf",  L"%g", L"%s",
                                          L"%ls", L"%X", L"%08X", L"%#x"};
    for (const Row& row : kRows) {
        EXPECT_EQ(placeholders(row.chinese), placeholders(row.english)) << row.code;
        for (const std::wstring& placeholder : placeholders(row.chinese)) {
            EXPECT_TRUE(known.contains(placeholder)) << row.code;
        }
        EXPECT_FALSE(row.chinese.empty()) << row.code;
    }
}

TEST(Diagnostics, FortyFourRowsStayUntranslated) {
    std::vector<unsigned int> same;
    for (const Row& row : kRows) {
        if (row.chinese == row.english) {
            same.push_back(row.code);
        }
    }
    EXPECT_THAT(same, ElementsAreArray({526, 527, 528, 529, 530, 531, 532, 533, 535, 536, 537,
                                        538, 539, 541, 542, 543, 566, 567, 568, 569, 570, 571,
                                        572, 628, 651, 654, 766, 767, 768, 783, 784, 785, 786,
                                        815, 819, 886, 887, 888, 889, 890, 891, 892, 893, 894}));
}

TEST(Diagnostics, ATranslatedRowIsWrittenInChinese) {
    for (const Row& row : kRows) {
        const bool hasChinese = std::any_of(row.chinese.begin(), row.chinese.end(),
                                            [](wchar_t c) { return c >= 0x4E00 && c <= 0x9FFF; });
        EXPECT_EQ(hasChinese, row.chinese != row.english) << row.code;
    }
}

// ---- the operation ----

class MessagesTest : public BootTest {
  protected:
    MessagesTest() { bootBare(); }

    static std::string text(unsigned int code) {
        return utf8(odrxSystemServices()->formatMessage(code, nullptr));
    }
};

TEST_F(MessagesTest, EveryCodeWithoutArguments) {
    for (unsigned int code = 0; code < 491; ++code) {
        const auto name = kResultNames.find(code);
        EXPECT_EQ(text(code),
                  name == kResultNames.end()
                      ? "eOk (code : 0)"
                      : utf8(OdString(name->second)) + " (code : " + std::to_string(code) + ")");
    }
    EXPECT_EQ(kResultNames.size(), 489);
    EXPECT_EQ(text(1), "eMakeMeProxy (code : 1)");
    EXPECT_EQ(text(449), "eOk (code : 0)");
    EXPECT_EQ(text(490), "eBrEmptyLoop (code : 490)");
    for (const Row& row : kRows) {
        EXPECT_EQ(text(row.code), utf8(OdString(row.chinese)));
    }
    EXPECT_EQ(text(491), "布局%d");
    EXPECT_EQ(text(894), "null object id(s) found");
    EXPECT_EQ(text(895), "Unknown message (code: 895)");
    EXPECT_EQ(text(900), "Unknown message (code: 900)");
}

/// The kinds of a text's arguments, told from its placeholders while compiling.
struct Kinds {
    consteval explicit Kinds(std::wstring_view text) {
        for (std::size_t index = 0; index < text.size(); ++index) {
            if (text[index] != L'%') {
                continue;
            }
            index = text.find_first_not_of(L"%#0123456789l", index);
            kinds.at(count++) = text[index];
        }
    }

    std::array<wchar_t, 8> kinds{};
    std::size_t count = 0;
};

/// An argument of the kind that its position tells from others.
template <wchar_t kind>
auto argument(std::size_t position) {
    if constexpr (kind == L's') {
        static const std::array<const wchar_t*, 4> texts = {L"第一", L"second", L"third", L"4th"};
        return texts.at(position);
    } else if constexpr (kind == L'f' || kind == L'g') {
        return static_cast<double>(position) + 0.25;
    } else {
        return 1000 + static_cast<int>(position);
    }
}

/// The English text's arguments, each as its own placeholder shows it, put into the Chinese text.
std::wstring expected(std::wstring_view form, const std::vector<std::wstring>& arguments) {
    std::wstring text(form);
    std::size_t from = 0;
    const auto marks = placeholders(text);
    for (std::size_t index = 0; index < marks.size(); ++index) {
        from = text.find(marks[index], from);
        text.replace(from, marks[index].size(), arguments.at(index));
        from += arguments[index].size();
    }
    return text;
}

template <class Argument>
std::wstring shown(const std::wstring& placeholder, Argument value) {
    std::array<wchar_t, 64> buffer{};
    // Wide text is "%ls" to the C library.
    const std::wstring format = placeholder == L"%s" ? L"%ls" : placeholder;
    std::swprintf(buffer.data(), buffer.size(), format.c_str(), value);
    return buffer.data();
}

template <Kinds kinds>
void checkFormatted(const Row& row) {
    [&]<std::size_t... index>(std::index_sequence<index...>) {
        const auto marks = placeholders(row.english);
        ASSERT_EQ(marks.size(), kinds.count) << row.code;
        const OdString text =
            odrxSystemServices()->formatMsg(row.code, argument<kinds.kinds[index]>(index)...);
        const std::vector<std::wstring> arguments = {
            shown(marks[index], argument<kinds.kinds[index]>(index))...};
        EXPECT_EQ(utf8(text), utf8(OdString(expected(row.chinese, arguments).c_str()))) << row.code;
    }
    (std::make_index_sequence<kinds.count>());
}

TEST_F(MessagesTest, EveryCodeWithArguments) {
    std::size_t index = 0;
#define DIAGNOSTIC(code, chinese, english) checkFormatted<Kinds(L##english)>(kRows[index++]);
#include "messages/diagnostics.def"
#undef DIAGNOSTIC
    EXPECT_EQ(index, 404);
    // The list plays no part outside the table.
    EXPECT_EQ(utf8(odrxSystemServices()->formatMsg(57, 3)), "eFileNotFound (code : 57)");
    EXPECT_EQ(utf8(odrxSystemServices()->formatMsg(895, 3)), "Unknown message (code: 895)");
}

std::string formatTwice(unsigned int code, ...) {
    va_list arguments;
    va_start(arguments, code);
    const OdString first = odrxSystemServices()->formatMessage(code, &arguments);
    const OdString second = odrxSystemServices()->formatMessage(code, &arguments);
    const int left = va_arg(arguments, int);
    va_end(arguments);
    return utf8(first) + "|" + utf8(second) + "|" + std::to_string(left);
}

TEST_F(MessagesTest, TheCallersListIsNotConsumed) {
    EXPECT_EQ(formatTwice(851, 3, 9), "需要 3 到 9 之间的整数.|需要 3 到 9 之间的整数.|3");
}

}  // namespace
