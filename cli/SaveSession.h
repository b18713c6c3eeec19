#pragma once

#include <string>

#include "cli/ExitCode.h"
#include "cli/Losses.h"
#include "cli/Output.h"
#include "reference_host/Plugin.h"
#include "reference_host/model/Session.h"

namespace cli {

/// Each saves a session, replacing a file or writing to a stream, and says why if it cannot.

/// A session that may hold what a session file cannot. The file is made in the place for temporary
/// files, read again and compared with the session. Only then it becomes `out`, unless it lost
/// something and the rule does not allow that.
/// @param source  where the session comes from, which is what the messages about losses name
ExitCode SaveSession(refhost::Plugin& plugin, refhost::model::Session session, const Output& out,
                     const std::string& source, const LossRule& rule);

/// A session of which a session file holds everything.
ExitCode SaveWholeSession(refhost::Plugin& plugin, refhost::model::Session session,
                          const Output& out);

/// JSON holds everything of any session.
ExitCode SaveJson(const refhost::model::Session& session, const Output& out);

}  // namespace cli
