// Which files serve the text styles of a drawing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <drawing/runtime.h>

#include "dxfdrawing.h"

namespace vemoapp {

/// A font as a text style names it. Texts are UTF-8.
struct FontRequest {
    OdFontType type = kFontTypeShx;
    std::string file;         // empty when only a typeface is named
    std::string typeface;     // of a TrueType font, else empty
    std::uint32_t style = 0;  // bold and italic as in OdTtfDescriptor

    friend bool operator<(const FontRequest& a, const FontRequest& b) {
        return std::tie(a.type, a.file, a.typeface, a.style) <
               std::tie(b.type, b.file, b.typeface, b.style);
    }
};

/// The fonts of a text style: a TrueType one, or a compiled one and perhaps a big font. None when
/// the style names none.
std::vector<FontRequest> fontsOf(const DxfTextStyle& style);

/// Looks fonts up through the host services as the drawing runtime does: a compiled font by its
/// file name, a TrueType font by its typeface and then by its file name. A path that leads nowhere
/// falls to its bare name. In place of a font that isn't there the host's substitute is looked up.
/// Each font is looked up once, however many styles name it.
///
/// Used on the interface thread; raises what the host services raise.
class FontResolution {
  public:
    /// The database is the drawing's, in whose folder files are looked for first, or null. Both
    /// outlive this object.
    FontResolution(OdDbBaseHostAppServices& fontHost, OdDbBaseDatabase* drawingDatabase)
        : host(fontHost), database(drawingDatabase) {}

    /// For people: one line a style, with the file that serves each of its fonts, or what serves
    /// instead and why. Styles that miss a font come first; beyond `limit` styles the rest is
    /// counted in a line of its own.
    std::vector<std::string> describe(const std::vector<DxfTextStyle>& styles, std::size_t limit);

  private:
    struct Answer {
        std::string text;
        bool missing;
    };

    const Answer& answerTo(const FontRequest& request);
    Answer resolved(const FontRequest& request);
    std::string substituteFor(const FontRequest& request);
    OdString fileOfFace(const FontRequest& request);
    OdString lookUp(const std::string& name, OdDbBaseHostAppServices::FindFileHint hint);

    OdDbBaseHostAppServices& host;
    OdDbBaseDatabase* database;
    std::map<FontRequest, Answer> answers;
    // One substitute serves many.
    std::map<std::pair<std::string, OdDbBaseHostAppServices::FindFileHint>, OdString> files;
};

}  // namespace vemoapp
