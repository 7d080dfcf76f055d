// Texts of a DXF drawing: from the drawing's code page to UTF-8.
#pragma once

#include <string>

namespace vemoapp {

/// Turns a drawing's texts into UTF-8. A code page that is known to the system's converter is
/// converted; with any other, and from version AC1021 on, the text is taken as UTF-8. What can't be
/// read becomes U+FFFD. The escape "\U+XXXX" stands for the character with that number.
class DxfTextDecoder {
  public:
    DxfTextDecoder() = default;
    ~DxfTextDecoder();
    DxfTextDecoder(const DxfTextDecoder&) = delete;
    DxfTextDecoder& operator=(const DxfTextDecoder&) = delete;

    /// Names the code page and version as the drawing's header gives them; either may be empty.
    void setEncoding(const std::string& codePage, const std::string& version);

    std::string decode(const std::string& bytes);

  private:
    void openConverter();
    void closeConverter();
    std::string converted(const std::string& bytes) const;

    // The converter's name while it is still to be opened, which loads a library of the system's:
    // the first text that isn't ASCII asks for it.
    std::string encoding;
    void* converter = nullptr;  // an iconv_t, null for UTF-8
};

}  // namespace vemoapp
