#include "indentedjson.h"

#include <algorithm>

namespace inspect {

std::string indentedJson(const std::string& json) {
    std::string result;
    std::size_t depth = 0;
    bool inText = false;
    const auto newLine = [&] { result += "\n" + std::string(2 * depth, ' '); };
    for (std::size_t at = 0; at < json.size(); ++at) {
        const char c = json[at];
        if (inText) {
            result += c;
            if (c == '\\' && at + 1 < json.size()) {
                result += json[++at];
            }
            inText = c != '"';
        } else if ((c == '{' || c == '[') && at + 1 < json.size() && json[at + 1] == c + 2) {
            // Nothing in it; both kinds of bracket close with the second character after them.
            result += {c, json[++at]};
        } else if (c == '{' || c == '[') {
            result += c;
            ++depth;
            newLine();
        } else if (c == '}' || c == ']') {
            depth -= std::min<std::size_t>(depth, 1);
            newLine();
            result += c;
        } else {
            inText = c == '"';
            result += c;
            if (c == ',') {
                newLine();
            } else if (c == ':') {
                result += ' ';
            }
        }
    }
    return result;
}

}  // namespace inspect
