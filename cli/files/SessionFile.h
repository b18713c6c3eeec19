#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "cli/files/StandInFile.h"
#include "cli/terminal/Messages.h"
#include "cli/terminal/Stream.h"

namespace cli {

/// A session file named on the command line. A stream is copied to a temporary file; relative paths
/// in it count from the working directory.
class SessionFile {
public:
    /// Reads the whole stream if the name denotes one.
    explicit SessionFile(const std::string& name);

    /// @param stream  the stream that the name denotes, if any
    SessionFile(const std::string& name, const std::optional<Stream>& stream);

    /// A copy of a file that is to be read as if it stood at another place, to which the relative
    /// paths in it refer.
    static SessionFile At(const std::string& name, const std::string& place);

    /// The name for messages, or "standard input".
    const std::string& Name() const { return name_; }

    /// The path for system calls.
    const std::string& Path() const { return path_; }

    /// The full path for the plug-in.
    const std::u16string& FullPath() const { return fullPath_; }

    /// The same for the library.
    std::filesystem::path FullName() const;

    /// Why the file could not be opened. If set, the paths are empty.
    const std::optional<toolkit::Problem>& EarlyProblem() const { return problem_; }

private:
    SessionFile() = default;
    void Spool(const Stream& stream, const std::u16string& place);

    std::string name_;
    std::string path_;
    std::u16string fullPath_;
    std::shared_ptr<const StandInFile> spooled_;
    std::optional<toolkit::Problem> problem_;
};

/// The full path of a name, for the plug-in.
std::u16string FullPathOf(const std::string& name);

/// A full path in the working directory, the base of relative paths in streams. The file need not
/// exist.
std::u16string FullPathOfStreams();

/// Converts a problem with a file to a message for the user.
Message ToMessage(const std::string& subject, const toolkit::Problem& problem);

}  // namespace cli
