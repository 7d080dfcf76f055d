#include "testjournal.h"

#include <map>

namespace journal {

namespace {

struct Journal {
    std::vector<std::string> lines;
    std::map<std::string, std::string> settings;
};

// Never destroyed: objects that go with the process may still write.
Journal& only() {
    static Journal& journal = *new Journal;
    return journal;
}

}  // namespace

void append(const std::string& line) {
    only().lines.push_back(line);
}

std::vector<std::string> lines() {
    return only().lines;
}

void clear() {
    only().lines.clear();
}

std::string setting(const std::string& name) {
    const auto found = only().settings.find(name);
    return found == only().settings.end() ? std::string() : found->second;
}

int numberSetting(const std::string& name, int defaultValue) {
    const std::string value = setting(name);
    return value.empty() ? defaultValue : std::stoi(value);
}

void set(const std::string& name, const std::string& value) {
    only().settings[name] = value;
}

}  // namespace journal
