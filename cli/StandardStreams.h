#pragma once

#include <string_view>
#include <system_error>

namespace cli {

/// A write to a stream failed. The code is that of the first failure.
class OutputError : public std::system_error {
public:
    using std::system_error::system_error;
};

/// Whether standard output is a terminal.
bool HasOutputTerminal();

/// Writes to standard output.
/// @throws OutputError if that fails, or has failed before
void Print(std::string_view text);

/// Writes what of standard output still waits: a full disk may show only here.
/// @throws OutputError if that fails, or anything that went there before has failed
void FlushOutput();

}  // namespace cli
