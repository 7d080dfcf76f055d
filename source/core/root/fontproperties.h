// Lists of fonts as nodes of a value tree, made anew for each read.
#pragma once

#include <vector>

#include <utils/elementvaluebase.h>

#include "voapfontsread.h"

namespace vosi {

/// An array of {"name", "path", "canExt"}, one object a path, in the list's order.
VoJsonPtr fontFilesNode(const OdStringArray& paths);

/// An array of {"facename": {"default", "zh-CN"}, "flag"}, one object a typeface, in the order in
/// which they first appear. "flag" is a sum over the faces: 1 for one that is bold, 2 for one that
/// is italic, 4 for one that is both. Names by language come from the first record of the typeface.
VoJsonPtr typefacesNode(const OdArray<OdTtfDescriptor>& faces,
                        const std::vector<TtfFaceRecord>& records);

}  // namespace vosi
