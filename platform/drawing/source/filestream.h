// Streams over files of the system.
#pragma once

#include "drawing/odstreambuf.h"

/// Opens a regular file, or to be read a device that has positions; no folder, pipe or terminal.
/// Raises OdError_FileException: eNoFileName, eFileNotFound, eCantOpenFile, or eInvalidInput for an
/// access or a disposition that doesn't exist, and for making or cutting a file without write
/// access.
OdStreamBufPtr openFileStream(const OdString& name, std::uint32_t access,
                              std::uint32_t disposition);
