// Markup out of texts and elements: well-formed, and text stays text.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace inspect {

/// Text in which "<" and "&" mean markup. Made by the functions here alone, so that what a run
/// names never becomes any.
class Markup {
  public:
    Markup() = default;

    Markup& operator+=(const Markup& more) {
        text += more.text;
        return *this;
    }
    const std::string& str() const { return text; }
    bool empty() const { return text.empty(); }

  private:
    friend Markup escaped(const std::string& plain);
    friend Markup trusted(const char* markup);
    friend Markup element(const std::string&,
                          const std::vector<std::pair<const char*, std::string>>&, const Markup&);
    explicit Markup(std::string markup) : text(std::move(markup)) {}

    std::string text;
};

inline Markup operator+(Markup first, const Markup& second) {
    return first += second;
}

/// The text as it is read. What no page can show (control characters, ill-formed UTF-8) and what
/// would turn the text around it becomes
/// U+FFFD.
Markup escaped(const std::string& plain);

/// A constant of the program that is markup already.
Markup trusted(const char* markup);

using Attributes = std::vector<std::pair<const char*, std::string>>;

/// The element with its end; attribute values are escaped.
Markup element(const std::string& name, const Attributes& attributes, const Markup& content);
Markup element(const std::string& name, const Markup& content);
Markup element(const std::string& name, const std::string& plain);

struct Column {
    std::string title;
    int width;  // per cent of the table
};

struct Row {
    std::vector<Markup> cells;
    std::string kind;  // class of the row, may be empty
};

/// In narrow windows each row becomes a block of titled values.
Markup table(const std::vector<Column>& columns, const std::vector<Row>& rows);

/// A number of milliseconds with its unit, as exact as is of interest.
std::string durationText(double milliseconds);

/// "1 file", "2 files".
std::string counted(std::size_t count, const std::string& one, const std::string& several);

}  // namespace inspect
