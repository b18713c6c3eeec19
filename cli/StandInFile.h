#pragma once

#include <string>

#include "cli/TemporaryFolder.h"

namespace cli {

/// A temporary file that stands in for a session file of another place, which need not exist and is
/// not touched: the paths of media in it are relative to that place's folder.
///
/// The plug-in works those paths out by the names in the path that it is given, where ".." takes
/// away the name in front of it. The system, which opens the file, follows links first, and ".."
/// leads up from where it is then. So the path goes through a link that leads deeper than its name
/// tells:
///
///     /tmp/orvo-Ab12Cd/link/../../../home/ann/show/song.orvo     link -> tree/up/up/up
///
/// By name that is /home/ann/show/song.orvo, while the system opens
/// /tmp/orvo-Ab12Cd/tree/home/ann/show/song.orvo.
///
/// It is removed at the end as a `TemporaryFolder` is.
class StandInFile {
public:
    /// Makes the folders for the file, but no file yet.
    /// @param place  the full path that the file has by name, as kelcore::File::FullPath gives it
    /// @throws std::runtime_error if they cannot be made, with what to do about it
    explicit StandInFile(const std::u16string& place);

    /// Where it really is, as the system's calls take it.
    const std::string& Path() const { return path_; }

    /// What the plug-in is to be given.
    const std::u16string& PluginPath() const { return pluginPath_; }

    /// Makes a write error fit for people: names the folder for temporary files in place of the
    /// path that was not written, and says what to do. A reason that would be the same in any
    /// folder stays as it is.
    std::string Explain(std::string message) const;

    /// @throws std::runtime_error with the system's reason and what to do
    [[noreturn]] void FailToWrite(int systemError) const;

private:
    /// The place for temporary files.
    std::string Place() const;

    TemporaryFolder folder_;
    std::string place_;
    std::string path_;
    std::u16string pluginPath_;
};

}  // namespace cli
