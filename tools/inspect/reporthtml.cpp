#include "reporthtml.h"

#include <cstdio>
#include <string_view>

namespace inspect {

namespace {

constexpr const char* kReplacement = "\xEF\xBF\xBD";

// The number of bytes of the character at the beginning; 0 when it is ill-formed.
std::size_t lengthOfCharacter(std::string_view text) {
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    const unsigned char lead = byte(0);
    const std::size_t length = lead < 0x80                   ? 1
                               : lead >= 0xC2 && lead < 0xE0 ? 2
                               : lead >= 0xE0 && lead < 0xF0 ? 3
                               : lead >= 0xF0 && lead < 0xF5 ? 4
                                                             : 0;
    if (length > text.size()) {
        return 0;
    }
    for (std::size_t at = 1; at < length; ++at) {
        if ((byte(at) & 0xC0) != 0x80) {
            return 0;
        }
    }
    // Overlong forms, surrogates and what lies beyond U+10FFFF.
    const bool isBad =
        length > 2 && ((lead == 0xE0 && byte(1) < 0xA0) || (lead == 0xED && byte(1) >= 0xA0) ||
                       (lead == 0xF0 && byte(1) < 0x90) || (lead == 0xF4 && byte(1) >= 0x90));
    return isBad ? 0 : length;
}

bool canBeShown(std::string_view character) {
    const unsigned char first = static_cast<unsigned char>(character[0]);
    if (character.size() == 1) {
        return (first >= 0x20 && first != 0x7F) || first == '\n' || first == '\t';
    }
    const bool isC1Control = first == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0;
    // Marks that turn the direction of what follows them.
    const bool isDirection = (character >= "\u202A" && character <= "\u202E") ||
                             (character >= "\u2066" && character <= "\u2069");
    return !isC1Control && !isDirection && character != "\xEF\xBF\xBE" &&
           character != "\xEF\xBF\xBF";
}

void appendEscaped(std::string& result, std::string_view character) {
    switch (character[0]) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        case '\'':
            result += "&#39;";
            break;
        default:
            result += canBeShown(character) ? character : std::string_view(kReplacement);
    }
}

}  // namespace

Markup escaped(const std::string& plain) {
    std::string result;
    for (std::string_view rest = plain; !rest.empty();) {
        const std::size_t length = lengthOfCharacter(rest);
        if (length == 0) {
            result += kReplacement;
        } else {
            appendEscaped(result, rest.substr(0, length));
        }
        rest.remove_prefix(length == 0 ? 1 : length);
    }
    return Markup(result);
}

Markup trusted(const char* markup) {
    return Markup(markup);
}

Markup element(const std::string& name, const Attributes& attributes, const Markup& content) {
    std::string result = "<" + name;
    for (const auto& [key, value] : attributes) {
        result += std::string(" ") + key + "=\"" + escaped(value).str() + "\"";
    }
    return Markup(result + ">" + content.str() + "</" + name + ">");
}

Markup element(const std::string& name, const Markup& content) {
    return element(name, {}, content);
}

Markup element(const std::string& name, const std::string& plain) {
    return element(name, {}, escaped(plain));
}

Markup table(const std::vector<Column>& columns, const std::vector<Row>& rows) {
    Markup head;
    for (const Column& column : columns) {
        head += element(
            "th", {{"scope", "col"}, {"style", "width:" + std::to_string(column.width) + "%"}},
            escaped(column.title));
    }
    Markup body;
    for (const Row& row : rows) {
        Markup cells;
        for (std::size_t index = 0; index < row.cells.size(); ++index) {
            cells += element("td", {{"data-title", columns[index].title}}, row.cells[index]);
        }
        body += element("tr", row.kind.empty() ? Attributes() : Attributes{{"class", row.kind}},
                        cells) +
                trusted("\n");
    }
    return element("table", element("thead", element("tr", head)) + element("tbody", body));
}

std::string durationText(double milliseconds) {
    constexpr double kHalfMicrosecond = 0.0005;
    if (milliseconds < kHalfMicrosecond) {
        return "under 1 \u00B5s";
    }
    char text[64] = "";
    if (milliseconds < 1) {
        std::snprintf(text, sizeof text, "%.0f \u00B5s", milliseconds * 1000);
    } else {
        std::snprintf(text, sizeof text, "%.*f ms", milliseconds < 100 ? 1 : 0, milliseconds);
    }
    return text;
}

std::string counted(std::size_t count, const std::string& one, const std::string& several) {
    return std::to_string(count) + " " + (count == 1 ? one : several);
}

}  // namespace inspect
