#pragma once

#include <string>
#include <vector>

#include "cli/Messages.h"
#include "cli/SessionFile.h"

namespace cli {

/// Explains why the plug-in refused to read a file, by inspecting the file or from the parser's
/// messages. Does not parse the file again if the plug-in itself refused it.
/// @param parserMessages  what the log target received
std::vector<Message> ExplainRefusal(const SessionFile& file,
                                    const std::vector<std::u16string>& parserMessages);

}  // namespace cli
