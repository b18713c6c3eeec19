#pragma once

#include "toolkit/interchange/Format.h"

namespace toolkit::interchange {

/// Writes the clips and markers of a session as one table, in samples and in time, in order of
/// time. A text that a spreadsheet would take for a formula gets an apostrophe before it.
/// @throws Failure, Cancelled
void WriteCsv(const Export& job);

}  // namespace toolkit::interchange
