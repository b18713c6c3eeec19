#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <orvo/Session.h>
#include "cli/files/Output.h"
#include "cli/terminal/Messages.h"

/// Where verbs that change session files save them.
namespace cli {

/// The names under which files are saved. Reports why there are none.
/// @param out  a file, or an existing folder, not a stream; empty: the files themselves
std::optional<std::vector<std::string>> FindTargets(const std::vector<std::string>& files,
                                                    const std::string& out);

/// What became of a file that was to be changed.
struct SavedFile {
    bool ok = false;
    std::optional<std::string> backup{};  ///< the name of the old file
    std::vector<Message> messages{};      ///< why nothing was saved
};

/// Saves a changed file, and keeps the old one if asked for. No signal ends the tool in between.
/// @param save  replaces the file at the path
SavedFile SaveChanged(const Output& target, bool keepsBackup,
                      const std::function<orvo::WriteResult(const std::string& path)>& save);

}  // namespace cli
