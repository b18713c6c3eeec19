#pragma once

#include <memory>
#include <optional>
#include <string>

#include "cli/Messages.h"
#include "cli/StandInFile.h"
#include "cli/Stream.h"

namespace cli {

/// A session file as it was named on the command line. What comes from a stream goes into a
/// temporary file; relative paths in it count from the working directory.
class SessionFile {
public:
    /// Reads the stream to its end if the name stands for one.
    explicit SessionFile(const std::string& name);

    /// @param stream  the one that the name stands for, if any
    SessionFile(const std::string& name, const std::optional<Stream>& stream);

    /// For messages: the name, or "standard input".
    const std::string& Name() const { return name_; }

    /// As the system's calls take it.
    const std::string& Path() const { return path_; }

    /// The full path, as the plug-in takes it.
    const std::u16string& FullPath() const { return fullPath_; }

    /// Why the file could not even be opened. The paths are then empty.
    const std::optional<toolkit::Problem>& EarlyProblem() const { return problem_; }

private:
    void Spool(const Stream& stream);

    std::string name_;
    std::string path_;
    std::u16string fullPath_;
    std::shared_ptr<const StandInFile> spooled_;
    std::optional<toolkit::Problem> problem_;
};

/// The full path of a name, as the plug-in takes it.
std::u16string FullPathOf(const std::string& name);

/// A full path that no file need have, in the folder from which relative paths in streams count:
/// the working directory.
std::u16string FullPathOfStreams();

/// A problem with a file, for the person at the terminal.
Message ToMessage(const std::string& subject, const toolkit::Problem& problem);

}  // namespace cli
