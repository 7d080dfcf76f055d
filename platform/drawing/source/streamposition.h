// The arithmetic of OdStreamBuf::seek.
#pragma once

#include "drawing/odstreambuf.h"

/// The position that a seek in the stream comes to. Raises OdError (eInvalidInput) for one before
/// the start, or beyond what a signed 64-bit number can hold.
std::uint64_t soughtPosition(const OdStreamBuf& stream, std::int64_t offset, OdSeekType from);
