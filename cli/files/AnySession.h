#pragma once

#include <optional>
#include <string>

#include <orvo/Model.h>
#include "cli/files/Kind.h"
#include "cli/terminal/ProgressBar.h"

namespace cli {

/// A session that is only looked at, and the name of its file for messages.
struct NamedSession {
    std::string name;
    orvo::Session session;
};

/// The kind that the name implies, else the stated one, else a session file.
Kind KindToLookAt(const std::string& name, const std::string& stated);

/// Reads a session file or its JSON in the phase `kReading`. Reports why it cannot be read.
std::optional<NamedSession> ReadToLookAt(const std::string& name, Kind kind, Progress& progress);

}  // namespace cli
