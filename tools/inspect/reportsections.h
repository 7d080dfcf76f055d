// The parts of the page below its head, one function each.
#pragma once

#include "reporthtml.h"
#include "runrecord.h"

namespace inspect {

/// Those that failed come first.
Markup modulesSection(const RunRecord& run);
Markup servicesSection(const RunRecord& run);
Markup pathsSection(const RunRecord& run);
Markup configurationSection(const RunRecord& run);
Markup logSection(const RunRecord& run);

/// The fonts that were asked for, and what served.
Markup fontSearchesSection(const RunRecord& run);
/// All fonts that there are.
Markup fontListsSection(const RunRecord& run);

/// The names that no file and no substitute answered.
std::size_t fontsNotFound(const RunRecord& run);

}  // namespace inspect
