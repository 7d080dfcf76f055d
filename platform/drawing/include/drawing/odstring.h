// The runtime's strings: OdString is wide, OdAnsiString holds bytes, which in this system are
// UTF-8. Both are plain values, of which a wide one shares its characters with its copies; an index
// outside a string raises OdError (eInvalidIndex).
#pragma once

#include <cstdarg>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "drawing/export.h"
#include "drawing/sharedtext.h"

using OdChar = wchar_t;

/// Code pages by the runtime's own numbers.
enum class OdCodePageId : int {
    kUndefined = 0,
    kAscii = 1,
    kAnsi1252 = 30,
    kAnsi936 = 39,
    kUtf8 = 46,
};

/// What both strings can do, written once over their characters and what holds them.
template <class Derived, class Char, class Text>
class OdStringCore {
  public:
    using View = std::basic_string_view<Char>;

    bool isEmpty() const { return text.empty(); }
    int getLength() const { return static_cast<int>(text.size()); }
    const Char* c_str() const { return text.c_str(); }
    View view() const { return {text.c_str(), text.size()}; }
    void empty() { text.clear(); }

    /// The character at the index. Raises OdError (eInvalidIndex) outside the string.
    Char getAt(int index) const {
        checkIndex(index);
        return text[static_cast<std::size_t>(index)];
    }

    /// Index of the first occurrence at or after `start`, -1 when there is none.
    int find(View part, int start = 0) const { return position(view().find(part, from(start))); }
    int find(Char character, int start = 0) const {
        return position(view().find(character, from(start)));
    }
    int reverseFind(Char character) const { return position(view().rfind(character)); }
    /// Index of the first character that is one of the set, -1 when there is none.
    int findOneOf(View set) const { return position(view().find_first_of(set)); }

    /// Part of the string; what lies outside it counts as empty.
    Derived mid(int start, int count = -1) const {
        std::size_t first = from(start);
        if (first > text.size()) {
            return Derived();
        }
        return Derived(
            view().substr(first, count < 0 ? View::npos : static_cast<std::size_t>(count)));
    }
    Derived left(int count) const { return mid(0, count < 0 ? 0 : count); }
    Derived right(int count) const {
        return count >= getLength() ? self() : mid(getLength() - (count < 0 ? 0 : count));
    }

    /// Removes the run of the character at the end.
    Derived& trimRight(Char character) {
        text.erase(view().find_last_not_of(character) + 1);
        return self();
    }

    Derived& operator+=(View other) {
        text.append(other);
        return self();
    }
    Derived& operator+=(Char character) {
        text.push_back(character);
        return self();
    }

    friend Derived operator+(const Derived& a, const Derived& b) { return Derived(a) += b.view(); }
    friend Derived operator+(const Derived& a, const Char* b) { return Derived(a) += View(b); }
    friend Derived operator+(const Char* a, const Derived& b) { return Derived(a) += b.view(); }
    friend Derived operator+(const Derived& a, Char b) { return Derived(a) += b; }

    friend bool operator==(const Derived& a, const Derived& b) { return a.view() == b.view(); }
    friend bool operator==(const Derived& a, const Char* b) { return a.view() == View(b); }
    friend bool operator<(const Derived& a, const Derived& b) { return a.view() < b.view(); }

  protected:
    OdStringCore() = default;
    explicit OdStringCore(View other) : text(other) {}

    Text text;

  private:
    Derived& self() { return static_cast<Derived&>(*this); }
    const Derived& self() const { return static_cast<const Derived&>(*this); }
    static std::size_t from(int start) { return start < 0 ? 0 : static_cast<std::size_t>(start); }
    static int position(std::size_t found) {
        return found == View::npos ? -1 : static_cast<int>(found);
    }
    void checkIndex(int index) const;
};

/// 8-bit string; UTF-8 wherever this system holds one.
class OdAnsiString : public OdStringCore<OdAnsiString, char, std::string> {
  public:
    OdAnsiString() = default;
    /// A copy of the text; null counts as empty.
    OdAnsiString(const char* other) : OdStringCore(other ? View(other) : View()) {}
    explicit OdAnsiString(View other) : OdStringCore(other) {}
    OdAnsiString(const std::string& other) : OdStringCore(View(other)) {}
    OdAnsiString(std::string&& other) { text = std::move(other); }

    operator const char*() const { return c_str(); }
    std::string str() const { return text; }
};

/// Wide string. Its characters are Unicode code points.
class OdString : public OdStringCore<OdString, OdChar, OdSharedText> {
  public:
    OdString() = default;
    /// A copy of the text; null counts as empty.
    OdString(const OdChar* other) : OdStringCore(other ? View(other) : View()) {}
    explicit OdString(View other) : OdStringCore(other) {}
    /// Text of ASCII characters; for UTF-8 see OdUtf8StringToOdString.
    OdString(const char* ascii);
    /// Bytes in a code page. kUtf8 and kAscii are known; another page raises OdError
    /// (eNotImplementedYet). Ill-formed UTF-8 becomes U+FFFD, one for each maximal ill-formed part.
    DRAWING_EXPORT OdString(const OdAnsiString& bytes, OdCodePageId codePage);

    operator const OdChar*() const { return c_str(); }

    /// Lower-case by the process's locale.
    DRAWING_EXPORT OdString& makeLower();

    /// Replaces the string by the formatted text. The format is the C library's wide one, except
    /// that "%s" takes wide text as "%ls" does. A format that can't be carried out, or
    /// comes to more than about a million characters, raises OdError (eInvalidInput) and leaves the
    /// string as it was. formatV does not consume the caller's list.
    DRAWING_EXPORT OdString& format(const OdChar* format, ...);
    DRAWING_EXPORT OdString& formatV(const OdChar* format, va_list arguments);
};

inline OdString::OdString(const char* ascii) {
    const std::string_view bytes(ascii ? ascii : "");
    wchar_t* out = text.overwrite(bytes.size());
    for (const char byte : bytes) {
        *out++ = static_cast<unsigned char>(byte);
    }
}

/// Raises OdError (eInvalidIndex); out of line, so that strings and arrays need not know errors.
[[noreturn]] DRAWING_EXPORT void odThrowInvalidIndex();

template <class Derived, class Char, class Text>
void OdStringCore<Derived, Char, Text>::checkIndex(int index) const {
    if (index < 0 || index >= getLength()) {
        odThrowInvalidIndex();
    }
}

/// Wide text as UTF-8. What is no Unicode code point becomes U+FFFD.
DRAWING_EXPORT OdAnsiString OdStringToUtf8String(const OdString& text);

/// UTF-8 as wide text. Each maximal ill-formed part becomes one U+FFFD.
DRAWING_EXPORT OdString OdUtf8StringToOdString(const OdAnsiString& text);

/// Compares two 8-bit texts, ASCII letters without regard to case: negative, 0 or positive.
DRAWING_EXPORT int Od_stricmpA(const char* a, const char* b);

/// @cond
template <>
struct std::hash<OdString> {
    std::size_t operator()(const OdString& key) const noexcept {
        return std::hash<std::wstring_view>()(key.view());
    }
};

template <>
struct std::hash<OdAnsiString> {
    std::size_t operator()(const OdAnsiString& key) const noexcept {
        return std::hash<std::string_view>()(key.view());
    }
};
/// @endcond
