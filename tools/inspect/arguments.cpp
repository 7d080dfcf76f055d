#include "arguments.h"

#include <charconv>

namespace inspect {

Arguments::Arguments(const std::vector<std::string>& words, const OptionTable& table) {
    for (auto word = words.begin(); word != words.end(); ++word) {
        if (*word == "--") {
            others.assign(word + 1, words.end());
            return;
        }
        if (table.flags.contains(*word)) {
            flags.insert(*word);
        } else if (table.values.contains(*word)) {
            if (word + 1 == words.end() || *(word + 1) == "--") {
                throw UsageError("The option " + *word + " lacks its value.");
            }
            if ((word + 1)->starts_with("--")) {
                throw UsageError("The option " + *word + " lacks its value: behind it stands " +
                                 *(word + 1) + ".");
            }
            if (!values.emplace(*word, *(word + 1)).second) {
                throw UsageError("The option " + *word + " is given twice.");
            }
            ++word;
        } else if (word->size() > 1 && word->front() == '-') {
            throw UsageError("There is no option " + *word + ".");
        } else {
            own.push_back(*word);
        }
    }
}

std::optional<std::string> Arguments::value(const std::string& option) const {
    const auto found = values.find(option);
    return found == values.end() ? std::nullopt : std::optional(found->second);
}

std::optional<unsigned int> readNumber(const std::string& text, unsigned int limit) {
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    const char* const begin = text.data() + (hexadecimal ? 2 : 0);
    const char* const end = text.data() + text.size();
    unsigned int number = 0;
    const auto [rest, error] = std::from_chars(begin, end, number, hexadecimal ? 16 : 10);
    const bool good = begin != end && error == std::errc() && rest == end && number <= limit;
    return good ? std::optional(number) : std::nullopt;
}

}  // namespace inspect
