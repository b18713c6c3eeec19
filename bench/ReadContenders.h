#pragma once

#include <string>

#include "bench/Contender.h"
#include "reference_host/Plugin.h"

namespace bench {

/// The readers of a file: the bare parser, the plug-in with the null host and with the reference
/// host, and other parsers for scale. The plug-in and a `XercesLibrary` must outlive them.
/// @param path  in the form of the system calls
Contenders MakeReadContenders(refhost::Plugin& plugin, const std::string& path);

}  // namespace bench
