#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "toolkit/DocumentScan.h"

namespace cli {

/// The name of a command line that stands for standard input or standard output.
inline constexpr const char* kStream = "-";

enum class Direction { In, Out };

/// A descriptor that was open before the tool began. What is written goes to its end as the shell
/// set it up; no file is replaced or cut for it.
struct Stream {
    int descriptor = -1;
    std::string name;  ///< for messages: as it was named, or "standard input"
};

/// The stream that a name stands for: "-", or a name that leads, also through links, to an open
/// descriptor (/dev/stdout, /dev/fd/3, /proc/self/fd/3). Nothing for a file.
std::optional<Stream> FindStream(const std::string& name, Direction direction);

/// Why a stream cannot be used: it is not open, or only for the other direction.
std::optional<toolkit::Problem> FindProblem(const Stream& stream, Direction direction);

/// Whether the name leads to an open file of another process. To write there would replace the
/// file.
bool IsStreamOfAnotherProcess(const std::string& name);

/// Hands over what comes until the end, block by block.
/// @return why that failed, if it did
std::optional<toolkit::Problem> ReadBlocks(const Stream& stream,
                                           const std::function<void(std::string_view)>& take);

/// A write to a stream failed.
class StreamError : public std::system_error {
public:
    using std::system_error::system_error;
};

/// Writes all of it.
/// @throws StreamError with the system's reason
void WriteBlock(const Stream& stream, std::string_view block);

}  // namespace cli
