// The journal that a boot test and the modules it loads share: what happened, in order, and what
// the test tells the modules beforehand. It is a library of its own, so that there is one in the
// process.
#pragma once

#include <string>
#include <vector>

#define JOURNAL_EXPORT __attribute__((visibility("default")))

namespace journal {

JOURNAL_EXPORT void append(const std::string& line);
JOURNAL_EXPORT std::vector<std::string> lines();
JOURNAL_EXPORT void clear();

/// What the test set under the name, empty when it set nothing.
JOURNAL_EXPORT std::string setting(const std::string& name);
JOURNAL_EXPORT int numberSetting(const std::string& name, int defaultValue);
JOURNAL_EXPORT void set(const std::string& name, const std::string& value);

}  // namespace journal
