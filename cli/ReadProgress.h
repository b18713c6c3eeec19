#pragma once

#include <string>

#include "cli/ProgressBar.h"

namespace cli {

/// Tells how far this process has read a file that it has open. The plug-in reads a session as a
/// stream and reports only the ends of its seven steps, so this looks where the system is in it.
ShareSource ShareRead(const std::string& path);

/// The size of a file in bytes, as a weight among others; 1 where it is not known.
double SizeOrOne(const std::string& path);

}  // namespace cli
