// File names and files. Texts are UTF-8; the forms that end in W are wide. A path is split at "/"
// and at "\", since names come out of drawings made elsewhere; what is joined is joined with "/".
// Unless a function says otherwise it may be called on any thread.
#pragma once

#include <ctime>

#include "utils/elementvaluebase.h"

/// The two with exactly one "/" between them. An empty first gives the second, an empty second the
/// first followed by one "/".
UTILS_EXPORT OdAnsiString voutCombinePath(const OdAnsiString& first, const OdAnsiString& second);

/// The path without its last component; the closing separator stays: "/a/b" gives "/a/", "b" gives
/// "".
UTILS_EXPORT OdAnsiString voutGetParentDir(const OdAnsiString& path);
UTILS_EXPORT OdString voutGetParentDirW(const OdString& path);

/// The last component of the path, empty when the path ends in a separator.
UTILS_EXPORT OdAnsiString voutGetFileName(const OdAnsiString& path);
UTILS_EXPORT OdAnsiString voutGetLastFileNameInPath(const OdAnsiString& path);
UTILS_EXPORT OdString voutGetLastFileNameInPathW(const OdString& path);

/// The last component without its extension; a name that only begins with a "." has none.
UTILS_EXPORT OdAnsiString voutGetFileNoExtName(const OdAnsiString& path);

/// True for a file that isn't a folder.
UTILS_EXPORT bool voutIsExistFile(const OdAnsiString& path);

/// Whether a file or folder stands at the path when each component is compared without regard to
/// case; `found` is then its absolute path as it stands on disk, symbolic links not resolved. A
/// name that fits exactly comes before one that differs in case, and every folder that fits is
/// tried. "." and ".." are resolved, ".." behind a symbolic link stays; a closing separator asks
/// for a folder. A path that fits exactly with each "\" taken as part of a name comes first of all.
/// `found` is unchanged on a miss.
UTILS_EXPORT bool voutIsExistFileNoCaseSensitive(const OdAnsiString& path, OdAnsiString& found);
UTILS_EXPORT bool voutIsExistFileNoCaseSensitiveW(const OdString& path, OdString& found);

/// Makes the folder with its missing parents; true when it is there afterwards.
UTILS_EXPORT bool voutCreateDir(const OdAnsiString& path);

/// Copies a file, or the content of a folder with all below it, to the target; missing folders are
/// made, existing files replaced, modes kept. Symbolic links are copied as what they lead to; one
/// that leads back into its own folders is left out, and so is a target that lies within the
/// source. True when everything else was copied; what fails, or is neither file nor folder, is
/// passed over.
UTILS_EXPORT bool voutCopyFile(const OdAnsiString& source, const OdAnsiString& target);

/// Appends the absolute paths of the plain files whose name fits the pattern, in which "*" and "?"
/// are wildcards and case doesn't count. `depth` levels of folders are searched, 1 being the folder
/// alone.
///
/// The folder is taken as it stands. Its own files come before those of its subfolders; in a
/// folder, by name without extension (case ignored, then byte order), then by extension. Without a
/// wildcard a name that fits exactly comes first. Symbolic links to folders are followed and loops
/// end; answers keep the path as asked for. Folders that can't be read are skipped.
UTILS_EXPORT void voutGlobNoCaseSensitive2(const OdAnsiString& folder, const OdAnsiString& pattern,
                                           OdArray<OdAnsiString>& result, int depth);

/// Appends the paths that the node holds: a text node's text, an array's texts in order; entries of
/// another kind and null nodes add nothing.
UTILS_EXPORT void voutEnumPaths(const VoJsonPtr& node, OdArray<OdAnsiString>& list);
UTILS_EXPORT void voutEnumPathsW(const VoJsonPtr& node, OdStringArray& list);

/// The path with each variable, a name between two "%", replaced by its value, in one pass. `root`
/// is the system tree. Known are EXEPATH, APPDATAPATH, DOCUMENTPATH, TEMPPATH and SYSFONTPATH
/// (texts ExeRootPath, AppDataPath, DocumentPath, TempPath and SysFontPath of its "Runtime" branch)
/// and LANGUAGE (the text at "User/language", else at "Core/AppInfo/language", else zh-CN). A
/// variable that is unknown, or whose text isn't in the tree, stays as it is.
UTILS_EXPORT OdAnsiString vosiutEvaluatePath(const OdAnsiString& path, const VoJsonPtr& root);

/// Stores the application's temporary folder; set it on one thread before others read it.
UTILS_EXPORT void setTempPath(const OdAnsiString& path);
/// What was stored; empty before.
UTILS_EXPORT OdAnsiString voutTempPath();

/// A date and time in the form of "Jul 15 2021 04:22:04", read as UTC; -1 for any other text.
UTILS_EXPORT std::time_t voutStrToTime(const OdAnsiString& text);
