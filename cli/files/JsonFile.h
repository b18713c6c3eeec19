#pragma once

#include <optional>
#include <string>

#include <orvo/Session.h>
#include "cli/files/SessionFile.h"
#include "cli/terminal/ProgressBar.h"
#include "cli/terminal/Stream.h"
#include "platform/kelcore/Types.h"

namespace cli {

/// An input as named on the command line, and its stream if the name denotes one.
struct Input {
    explicit Input(const std::string& inputName)
        : name(inputName), stream(FindStream(inputName, Direction::In)) {}

    /// The name for messages.
    const std::string& Subject() const { return stream ? stream->name : name; }

    /// A path whose folder is the base of relative paths in the file.
    std::u16string Location() const { return stream ? FullPathOfStreams() : FullPathOf(name); }

    std::string name;
    std::optional<Stream> stream;
};

/// A session and the number of bytes that it was read from.
struct ReadInput {
    orvo::Session session;
    kelcore::uint64 size = 0;
};

/// Reads a session from JSON; its media have full paths then. Reports why there is none.
std::optional<ReadInput> ReadJson(const Input& in, Progress& progress);

}  // namespace cli
