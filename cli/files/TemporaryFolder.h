#pragma once

#include <optional>
#include <string>

#include "cli/RemovalAtSignal.h"

namespace cli {

/// A private folder in TMPDIR (default /tmp). Removed with its content at the end, also if a signal
/// ends the tool. Destroy the newest object first.
class TemporaryFolder {
public:
    /// @throws std::runtime_error  with advice, if the folder cannot be created
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    /// The full path, without links and "..".
    const std::string& Path() const { return path_; }

private:
    std::string path_;
    std::optional<RemovalAtSignal> removal_;
};

}  // namespace cli
