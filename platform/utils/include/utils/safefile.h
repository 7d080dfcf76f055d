// Writing and copying files that must never be half there.
#pragma once

#include <string>
#include <string_view>

#include "utils/export.h"

/// Makes the text the file's whole content. At every moment, also after a crash or on a full disk,
/// the path shows the old content or the new one: the text goes to a temporary file in the same
/// folder, is flushed to disk and then takes the old file's place. The mode is kept, the owner
/// where the process may; a new file gets what the umask leaves of 0666. A symbolic link stays one:
/// what it leads to is replaced, or made where it leads nowhere. True on success. On false the path
/// is untouched and no temporary file is left; that is the answer, too, for what is no plain file
/// and for a file that the process may not write. Any thread; of two writers at once the last one
/// wins.
UTILS_EXPORT bool voutWriteFileSafely(const std::string& path, std::string_view text);

/// Makes a new file with the source's content and mode, and flushes it to disk: the target shows
/// the whole content or isn't there. True on success. On false, which is also the answer where the
/// target is there already, nothing has changed. Any thread.
UTILS_EXPORT bool voutCopyFileSafely(const std::string& source, const std::string& target);
