#pragma once

#include <optional>
#include <string>

#include "cli/RemovalAtSignal.h"

namespace cli {

/// A folder of the tool's own in the place for temporary files, which TMPDIR names (else /tmp). It
/// is removed with everything in it at the end, also when the end is a signal that asks a program
/// to end. The one made last goes first.
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
