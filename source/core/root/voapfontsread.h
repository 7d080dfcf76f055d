// What the font index needs to know of a font file, read from its header: the kind of an SHX file,
// the family names and style of each face of an sfnt file (TrueType and OpenType, ISO/IEC 14496-22)
// or collection. No glyph is looked at, and no file is read whole.
//
// The readers have no state but flags by which each malformation is reported once a process.
// Callers are serialised.
#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include <drawing/runtime.h>

namespace vosi {

/// What an SHX file says it is. The values are those of the compiled files' own kind codes.
enum ShxKind : unsigned int {
    kShxUnknown = 0,
    kShxBigFont = 1,
    kShxUnifont = 2,
    kShxVersion10 = 4,
    kShxVersion11 = 8,
    kShxShapes11 = 264,
};

/// Family names by the 16-bit language identifier of the file, whatever platform it belongs to.
using FontNames = std::map<std::uint16_t, OdString>;

/// One face of a font file.
struct TtfFaceRecord : OdTtfDescriptor {
    FontNames localNames;
};

/// The kind of the SHX file in the stream, read from its start. Raises what the stream raises;
/// a file that ends within its header raises OdError (eEndOfFile).
ShxKind readShxKind(OdStreamBuf& stream);

class MeteredStream;

/// Reads the family names and the style of the face whose sfnt offset table begins at the stream's
/// position. Names are added to `localNames` unless their language is there already; `typeface` is
/// set on success; `bold` and `italic` are set to true or left alone. True when a name was added.
/// Raises what the stream raises, and OdError (eFileInternalErr) for a file that names its parts so
/// often that more would be read than is in it, give or take 64 KiB.
bool readTtfNameTable(const OdStreamBufPtr& stream, OdString& typeface, FontNames& localNames,
                      bool& bold, bool& italic);
/// The same as part of a reading that has one limit.
bool readTtfNameTable(MeteredStream& stream, OdString& typeface, FontNames& localNames, bool& bold,
                      bool& italic);

/// Appends the faces of the font file or collection, with an empty `fileName`. True when at least
/// one was appended. A file that can't be opened or read to its end, or is beyond the limit of
/// readTtfNameTable in all its faces together, gives false; faces appended before the failure stay.
bool readTtfDescriptors(const OdString& path, std::vector<TtfFaceRecord>& records);

}  // namespace vosi
