#pragma once

#include <string>
#include <vector>

#include "cli/ExitCode.h"
#include "reference_host/Plugin.h"
#include "reference_host/model/Session.h"

namespace cli {

/// Whether what a session file cannot hold of a session is named, for which the file is read.
enum class Losses { Impossible, Told };

/// Saves a session to the file of that name, or to standard output for "-", and says why if it
/// cannot.
ExitCode SaveSession(refhost::Plugin& plugin, refhost::model::Session session,
                     const std::string& name, Losses losses);

/// Says that a file was not saved, once for each reason, and what the tool ends with then.
ExitCode FailToSave(const std::string& subject, const std::vector<std::string>& reasons);

/// A failure of it shows when the tool ends.
ExitCode WriteToStream(const std::string& content);

}  // namespace cli
