#pragma once

#include <string>
#include <string_view>

#include "toolkit/DocumentScan.h"

namespace cli {

/// Something to tell the person at the terminal.
struct Message {
    std::string subject;        ///< the file as it was named; may be empty
    toolkit::Place place = {};  ///< in the file; none where the file as a whole is meant
    std::string what;           ///< what is wrong
    std::string advice = {};    ///< what to do about it; may be empty
};

/// "orvo: PATH:LINE:COLUMN: what: what to do" without a line end, each part only where there is
/// one.
std::string FormatMessage(const Message& message);

/// Writes the message as a line to standard error.
void Complain(const Message& message);

/// The text (UTF-8) on one line: the bytes of what a terminal would obey, and those that are part
/// of no character, are shown as "\x1b".
std::string Printable(std::string_view text);

}  // namespace cli
