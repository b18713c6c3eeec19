#pragma once

#include <optional>
#include <string>

#include <orvo/Interchange.h>
#include "cli/ExitCode.h"
#include "cli/files/JsonFile.h"
#include "cli/files/Output.h"
#include "cli/terminal/ProgressBar.h"

/// Files of other programs.
namespace cli {

/// How to convert from and to them.
struct InterchangeRule {
    orvo::Conventions conventions{};
    bool strict = false;  ///< convert only if nothing is lost
    bool embedMedia = false;
    std::optional<double> frameRate{};
    bool dropFrame = false;
};

/// Reads a file of another program. Adds what that changes to the report. Reports why there is no
/// session.
/// @param out  the media in the file go into a folder beside it, unless it is a stream
std::optional<ReadInput> ReadInterchange(const Input& in, orvo::InterchangeKind kind,
                                         const InterchangeRule& rule, const Output& out,
                                         Progress& progress, orvo::InterchangeReport& report);

/// Writes one in the phase `kWriting`. Reports failures.
ExitCode SaveInterchange(const orvo::Session& session, orvo::InterchangeKind kind,
                         const InterchangeRule& rule, const Output& out, Progress& progress,
                         orvo::InterchangeReport& report);

}  // namespace cli
