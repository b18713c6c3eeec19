#pragma once

#include <string>

#include "bench/Contender.h"
#include "reference_host/Plugin.h"

namespace bench {

/// All that read the file: the bare parser, the plug-in with the host that does nothing and with
/// the reference host, and other parsers for scale. The plug-in must outlive them, and a
/// `XercesLibrary` as well.
/// @param path  as the system's calls take it
Contenders MakeReadContenders(refhost::Plugin& plugin, const std::string& path);

}  // namespace bench
