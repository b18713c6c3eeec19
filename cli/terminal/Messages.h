#pragma once

#include <string>
#include <string_view>

#include "toolkit/DocumentScan.h"

namespace cli {

/// A message for the user.
struct Message {
    std::string subject;        ///< the file as named on the command line; may be empty
    toolkit::Place place = {};  ///< in the file; unset if the message is about the whole file
    std::string what;           ///< what is wrong
    std::string advice = {};    ///< what to do about it; may be empty
};

/// Formats "orvo: PATH:LINE:COLUMN: what: what to do" without a line end, omitting missing parts.
std::string FormatMessage(const Message& message);

/// Writes the message and a line end to standard error.
void Complain(const Message& message);

/// Makes a text (UTF-8) safe for a single line: control characters and bytes that are not part of a
/// character become "\x1b".
std::string Printable(std::string_view text);

}  // namespace cli
