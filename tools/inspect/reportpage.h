// A run as one page for a support ticket.
#pragma once

#include <string>

#include "runrecord.h"

namespace inspect {

/// The page: HTML in UTF-8 that is well-formed XML too, fetches nothing and needs no script.
/// `made` says when, in words.
std::string reportPage(const RunRecord& run, const std::string& made);

}  // namespace inspect
