#pragma once

#include <string>
#include <vector>

#include <orvo/Json.h>
#include <orvo/Session.h>
#include "cli/ExitCode.h"
#include "cli/files/Kind.h"
#include "cli/files/Losses.h"
#include "cli/files/Output.h"
#include "cli/terminal/ProgressBar.h"

namespace cli {

/// The name of the phase that writes a file.
inline constexpr const char* kWriting = "writing";

/// The phases of a save. Their weights are relative to a read of the same session.
std::vector<ProgressPhase> PhasesOfSaving(Kind kind);

// These replace a file or write to a stream, and report failures. The progress must contain the
// phases of a save.

/// Saves a session that may contain something that session files cannot hold. Writes a temporary
/// file, reads it back and compares the two. Delivers the file to `out` unless something was lost
/// and the rule forbids losses.
/// @param source  the origin of the session, which messages about losses name
ExitCode SaveSession(const orvo::Session& session, const Output& out, const std::string& source,
                     const LossRule& rule, Progress& progress);

/// Saves a session that session files can hold completely.
ExitCode SaveWholeSession(const orvo::Session& session, const Output& out, Progress& progress);

/// Saves a session as JSON, which can hold any session.
/// @param options       without a function for progress, which is the progress bar's
/// @param expectedSize  an estimate in bytes for the progress bar; 0 if unknown
ExitCode SaveJson(const orvo::Session& session, orvo::JsonOptions options, const Output& out,
                  Progress& progress, kelcore::uint64 expectedSize);

}  // namespace cli
