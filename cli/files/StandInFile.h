#pragma once

#include <filesystem>
#include <string>

#include "cli/files/TemporaryFolder.h"

namespace cli {

/// A temporary file that stands in for a session file at another place. That place need not exist
/// and is not touched, but media paths in the file are relative to its folder.
///
/// The plug-in resolves ".." in its path by name, so that ".." cancels the name before it. The
/// system follows links first, so that ".." leads up from the target of a link. The path therefore
/// goes through a link to a deeper folder:
///
///     /tmp/orvo-Ab12Cd/link/../../../home/ann/show/song.orvo     link -> tree/up/up/up
///
/// By name this is /home/ann/show/song.orvo, but the system opens
/// /tmp/orvo-Ab12Cd/tree/home/ann/show/song.orvo.
///
/// It is removed at the end like a `TemporaryFolder`.
class StandInFile {
public:
    /// Creates the folders for the file, but not the file.
    /// @param place  the full path that the file has by name, as from kelcore::File::FullPath
    /// @throws std::runtime_error  with advice, if they cannot be created
    explicit StandInFile(const std::u16string& place);

    /// The real path, for system calls.
    const std::string& Path() const { return path_; }

    /// The path for the plug-in.
    const std::u16string& PluginPath() const { return pluginPath_; }

    /// The same for the library.
    std::filesystem::path FullName() const;

    /// Rewrites a write error for the user: names the folder for temporary files instead of the
    /// path, and adds advice. Leaves the reason alone if it would be the same in any folder.
    std::string Explain(std::string message) const;

    /// @throws std::runtime_error  with the system's reason and advice
    [[noreturn]] void FailToWrite(int systemError) const;

private:
    /// The folder for temporary files.
    std::string Place() const;

    TemporaryFolder folder_;
    std::string place_;
    std::string path_;
    std::u16string pluginPath_;
};

}  // namespace cli
