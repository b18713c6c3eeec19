#pragma once

#include <string>
#include <vector>

#include "cli/Messages.h"
#include "cli/SessionFile.h"

namespace cli {

/// Why the plug-in refused to read a file: what a look at the file tells, or else what the parser
/// said. What the plug-in refused on its own account is not parsed a second time.
/// @param parserMessages  what the log target was told
std::vector<Message> ExplainRefusal(const SessionFile& file,
                                    const std::vector<std::u16string>& parserMessages);

}  // namespace cli
