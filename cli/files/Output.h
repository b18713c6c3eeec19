#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/ExitCode.h"
#include "cli/terminal/Stream.h"

namespace cli {

/// The destination of a verb, as named on the command line: a file or a stream.
class Output {
public:
    /// Opens and creates nothing yet.
    /// @throws std::runtime_error  for a stream that is not open for writing
    explicit Output(const std::string& name);

    /// @param place  the name of the file to which the content is moved later
    Output(const std::string& name, const std::string& place);

    /// The name for messages, or "standard output".
    const std::string& Name() const;

    bool IsStream() const { return stream_.has_value(); }

    /// For content of another kind than a session's.
    /// @param session  a file that is read or saved; it need not exist yet
    /// @throws std::runtime_error  if a save would replace that file, also by a link
    void RequireOther(const std::string& session) const;

    /// The path to which the plug-in makes media paths relative: the full path of the file after
    /// following links, or, for a stream, a path in the working directory.
    std::u16string FullPath() const;

    /// Receives the content piece by piece.
    using Sink = std::function<void(std::string_view)>;

    /// Runs `produce` and replaces the file once the content is on disk, or writes the content to
    /// the stream. On failure, reports the reason and leaves the file unchanged. Passes exceptions
    /// of `produce` on, also with the file unchanged.
    ExitCode Save(const std::function<void(const Sink&)>& produce) const;

private:
    ExitCode SaveToFile(const std::function<void(const Sink&)>& produce) const;
    ExitCode SaveToStream(const std::function<void(const Sink&)>& produce) const;

    std::string name_;
    std::string place_;  // empty: the name itself
    std::optional<Stream> stream_;
};

/// Reports each reason for a failed save and returns `ExitCode::Failure`.
ExitCode FailToSave(const Output& out, const std::vector<std::string>& reasons);

}  // namespace cli
