// Steps and module loads over time.
#pragma once

#include "reporthtml.h"
#include "runrecord.h"

namespace inspect {

/// A picture of what began from `begin` up to `end`, in milliseconds of the run, and the same as a
/// table with what each step did.
Markup timeline(const RunRecord& run, double begin, double end, const std::string& title);

}  // namespace inspect
