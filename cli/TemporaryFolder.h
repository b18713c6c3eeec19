#pragma once

#include <optional>
#include <string>

#include "cli/RemovalAtSignal.h"

namespace cli {

/// A folder of the tool's own in TMPDIR, or else in /tmp. Removed with its contents at the end,
/// also when a signal ends the tool. Destroy the newest first.
class TemporaryFolder {
public:
    /// @throws std::runtime_error if it cannot be made, with what to do about it
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    /// Its full path, in which no link and no ".." stands.
    const std::string& Path() const { return path_; }

private:
    std::string path_;
    std::optional<RemovalAtSignal> removal_;
};

}  // namespace cli
