// Command lines of the subcommands.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace inspect {

/// Wrong use: exit status 2.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// What could not be done: exit status 1.
class Failure : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The options that a subcommand knows.
struct OptionTable {
    std::set<std::string> flags;
    std::set<std::string> values;
};

/// A command line taken apart: options first or among the operands, and what stands behind "--".
class Arguments {
  public:
    /// Raises UsageError for an option that isn't in the table, is given twice or lacks its value.
    /// No value begins with "--".
    Arguments(const std::vector<std::string>& words, const OptionTable& table);

    bool has(const std::string& flag) const { return flags.contains(flag); }
    std::optional<std::string> value(const std::string& option) const;
    const std::vector<std::string>& operands() const { return own; }
    const std::vector<std::string>& behindDashes() const { return others; }

  private:
    std::set<std::string> flags;
    std::map<std::string, std::string> values;
    std::vector<std::string> own;
    std::vector<std::string> others;
};

/// A decimal or, with "0x", hexadecimal number up to the limit; nothing for any other text.
std::optional<unsigned int> readNumber(const std::string& text, unsigned int limit);

}  // namespace inspect
