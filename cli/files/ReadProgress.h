#pragma once

#include <string>

#include "cli/terminal/ProgressBar.h"

namespace cli {

/// Returns how far this process has read a file that it has open. The plug-in reports only the ends
/// of its seven steps, so this looks at the position of the descriptor.
ShareSource ShareRead(const std::string& path);

/// The size of a file in bytes, for use as a weight; 1 if unknown.
double SizeOrOne(const std::string& path);

}  // namespace cli
