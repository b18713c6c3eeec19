#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cli/Messages.h"
#include "cli/StandardStreams.h"

namespace cli {

/// A session file as it was named on the command line, "-" included: what comes from standard input
/// goes into a temporary file in the working directory, so that relative paths in it count from
/// there.
class SessionFile {
public:
    /// Reads standard input if the name says so.
    /// @throws std::exception if that fails
    explicit SessionFile(const std::string& name);

    /// For messages: the name, or "standard input".
    const std::string& Name() const { return name_; }

    /// As the system's calls take it.
    const std::string& Path() const { return path_; }

    /// The full path, as the plug-in takes it.
    std::u16string FullPath() const;

private:
    std::string name_;
    std::string path_;
    std::shared_ptr<const TemporarySession> spooled_;
};

/// The full path of a name, as the plug-in takes it.
std::u16string FullPathOf(const std::string& name);

/// Why the plug-in refused to read a file: what a look at the file tells, or else what the parser
/// said.
/// @param parserMessages  the lines of the log target
std::vector<Message> ExplainRefusal(const SessionFile& file,
                                    const std::vector<std::u16string>& parserMessages);

/// A problem with a file, for the person at the terminal.
Message ToMessage(const std::string& subject, const toolkit::Problem& problem);

}  // namespace cli
