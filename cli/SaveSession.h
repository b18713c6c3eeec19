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

/// Each saves a session, replacing a file or writing to a stream, and says why if it cannot.
/// @param progress  has the phases of saving
/// A session that may hold what a session file cannot. The file is made in the place for temporary
/// files, read again and compared with the session. Only then it becomes `out`, unless it lost
/// something and the rule does not allow that.
/// @param source  where the session comes from, which is what the messages about losses name
ExitCode SaveSession(refhost::Plugin& plugin, refhost::model::Session session, const Output& out,
                     const std::string& source, const LossRule& rule, Progress& progress);

/// A session of which a session file holds everything.
ExitCode SaveWholeSession(refhost::Plugin& plugin, refhost::model::Session session,
                          const Output& out, Progress& progress);

/// JSON holds everything of any session.
/// @param expectedSize  about how many bytes it will have, for the progress; 0 if that is not known
ExitCode SaveJson(const refhost::model::Session& session, const Output& out, Progress& progress,
                  kelcore::uint64 expectedSize);

}  // namespace cli
