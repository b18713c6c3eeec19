#pragma once

#include <string>
#include <vector>

#include <orvo/Message.h>
#include "cli/files/SessionFile.h"
#include "cli/terminal/Messages.h"

namespace cli {

/// Explains why the plug-in refused to read a file, by inspecting the file or from the parser's
/// messages. Does not parse the file again if the plug-in itself refused it.
/// @param reasons  from the library, or from the log target
std::vector<Message> ExplainRefusal(const SessionFile& file,
                                    const std::vector<orvo::Message>& reasons);

}  // namespace cli
