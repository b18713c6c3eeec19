#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/ExitCode.h"
#include "cli/Stream.h"

namespace cli {

/// Where a verb saves to, as it was named on the command line: a file, or a stream.
class Output {
public:
    /// Opens and makes nothing yet.
    /// @throws std::runtime_error for a stream that is not open for writing
    explicit Output(const std::string& name);

    /// For messages: the name, or "standard output".
    const std::string& Name() const;

    bool IsStream() const { return stream_.has_value(); }

    /// By this the plug-in works out what paths in a session are relative to: the full path of the
    /// file, or for a stream that of some file in the working directory.
    std::u16string FullPath() const;

    /// Takes what is to be saved, piece by piece.
    using Sink = std::function<void(std::string_view)>;

    /// Replaces the file by what `produce` hands over, once it is whole and on the disk, or writes
    /// that to the stream. Says why if it cannot; what stood in the file then stays. What `produce`
    /// throws itself goes on, and the file stays too.
    ExitCode Save(const std::function<void(const Sink&)>& produce) const;

private:
    ExitCode SaveToFile(const std::function<void(const Sink&)>& produce) const;
    ExitCode SaveToStream(const std::function<void(const Sink&)>& produce) const;

    std::string name_;
    std::optional<Stream> stream_;
};

/// Says that something was not saved, once for each reason, and what the tool ends with then.
ExitCode FailToSave(const Output& out, const std::vector<std::string>& reasons);

}  // namespace cli
