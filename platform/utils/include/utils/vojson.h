// Value trees in files: JSON as RFC 8259 has it, in UTF-8.
#pragma once

#include <string>

#include "utils/elementvaluebase.h"

/// A tree with its file access. Starts null.
class UTILS_EXPORT VoJson : public VoJsonPtr {
  public:
    /// Forms of a written file.
    enum fileFormat {
        kCompact = 0,
        kIndented = 1,  // for people to edit: indented, nothing escaped that need not be
    };

    VoJson() = default;
    explicit VoJson(const VoJsonPtr& tree) : VoJsonPtr(tree) {}

    /// Reads the file at the UTF-8 path and points to its root. False, with the pointer unchanged,
    /// when the file isn't there or can't be read, is no JSON, holds ill-formed UTF-8 or is nested
    /// too deeply; what is wrong with a file's text is logged at level 4 with line and column. A
    /// byte order mark is skipped; of equal keys in one object the last wins. The last two
    /// arguments are -1 and null in this system and have no effect.
    bool read(const OdAnsiString& path, int sizeLimit, const char* encoding);

    /// Writes the tree so that the file is at every moment the old text or the new one, whole: a
    /// temporary file in the same folder, flushed to disk, then renamed. Keeps the file's mode and
    /// follows a symbolic link. False on failure, with the old file untouched; so for a null tree.
    bool write(const std::string& path, fileFormat format, const char* encoding) const;
};
