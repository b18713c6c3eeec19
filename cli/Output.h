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

    /// The path against which the plug-in makes media paths relative: the full path of the file
    /// that is written, behind all links, or for a stream some path in the working directory.
    std::u16string FullPath() const;

    /// Takes what is to be saved, piece by piece.
    using Sink = std::function<void(std::string_view)>;

    /// Replaces the file with what `produce` hands over, once all of it is on the disk, or writes
    /// it to the stream. On failure says why and leaves the file alone; so does an exception from
    /// `produce`, which passes through.
    ExitCode Save(const std::function<void(const Sink&)>& produce) const;

private:
    ExitCode SaveToFile(const std::function<void(const Sink&)>& produce) const;
    ExitCode SaveToStream(const std::function<void(const Sink&)>& produce) const;

    std::string name_;
    std::optional<Stream> stream_;
};

/// Reports each reason why something was not saved; returns `ExitCode::Failure`.
ExitCode FailToSave(const Output& out, const std::vector<std::string>& reasons);

}  // namespace cli
