#pragma once

#include <string>
#include <vector>

#include "cli/ExitCode.h"
#include "cli/Kind.h"
#include "cli/Losses.h"
#include "cli/Output.h"
#include "cli/ProgressBar.h"
#include "reference_host/Plugin.h"
#include "reference_host/model/Session.h"

namespace cli {

/// The phases of saving, weighted by the time that they take beside a read of the session.
std::vector<ProgressPhase> PhasesOfSaving(Kind kind);

// Both replace a file or write to a stream, and say why if they cannot. The progress has the phases
// of saving.

/// Saves a session that may hold what a session file cannot. Writes a temporary file, reads it
/// again and compares it with the session. Delivers it to `out` unless something was lost and the
/// rule forbids that.
/// @param source  where the session comes from, which is what the messages about losses name
ExitCode SaveSession(refhost::Plugin& plugin, refhost::model::Session session, const Output& out,
                     const std::string& source, const LossRule& rule, Progress& progress);

/// Saves a session of which a session file holds everything.
ExitCode SaveWholeSession(refhost::Plugin& plugin, refhost::model::Session session,
                          const Output& out, Progress& progress);

/// Saves a session as JSON, which holds everything of any session.
/// @param expectedSize  about how many bytes it will have, for the progress; 0 if that is not known
ExitCode SaveJson(const refhost::model::Session& session, const Output& out, Progress& progress,
                  kelcore::uint64 expectedSize);

}  // namespace cli
