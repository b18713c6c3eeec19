#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "toolkit/DocumentScan.h"

namespace cli {

/// The command-line name of standard input or standard output.
inline constexpr const char* kStream = "-";

enum class Direction { In, Out };

/// A descriptor that was open when the tool started. Writes continue where the shell set it up and
/// replace or truncate no file.
struct Stream {
    int descriptor = -1;
    std::string name;  ///< for messages: as named on the command line, or "standard input"
};

/// Returns the stream that a name denotes: "-", or a name that leads to an open descriptor,
/// possibly through links (/dev/stdout, /dev/fd/3, /proc/self/fd/3). Nothing for a file.
std::optional<Stream> FindStream(const std::string& name, Direction direction);

/// Returns why a stream cannot be used: it is not open, or only for the other direction.
std::optional<toolkit::Problem> FindProblem(const Stream& stream, Direction direction);

/// Whether the name leads to an open file of another process. Writing there would replace the file.
bool IsStreamOfAnotherProcess(const std::string& name);

/// Passes everything up to the end of the stream to `take`, block by block.
/// @return why that failed, if it did
std::optional<toolkit::Problem> ReadBlocks(const Stream& stream,
                                           const std::function<void(std::string_view)>& take);

/// A failed write to a stream.
class StreamError : public std::system_error {
public:
    using std::system_error::system_error;
};

/// Writes the whole block.
/// @throws StreamError  with the system's reason
void WriteBlock(const Stream& stream, std::string_view block);

}  // namespace cli
