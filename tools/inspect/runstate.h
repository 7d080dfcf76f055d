// Parts of a run's record that are read from the trees and from what was asked for.
#pragma once

#include <string>
#include <vector>

#include <utils/elementvalue.h>

#include "runobserver.h"
#include "runrecord.h"

namespace inspect {

/// The lists below the node, and which of their folders and files are there now.
std::vector<PathList> pathListsOf(const VoJsonPtr& node);

/// What the node "Fonts" lists now.
FontLists fontListsOf(const VoJsonPtr& node);

/// What a font was looked for as, in words; empty when the search wasn't for a font.
std::string askedAs(run::SearchKind kind, int detail);

}  // namespace inspect
