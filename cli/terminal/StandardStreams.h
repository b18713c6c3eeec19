#pragma once

#include <string_view>
#include <system_error>

namespace cli {

/// A failed write to a stream, with the error of the first failure.
class OutputError : public std::system_error {
public:
    using std::system_error::system_error;
};

/// Whether standard output is a terminal.
bool HasOutputTerminal();

/// Whether to colour standard output: it is a terminal and NO_COLOR is not set.
bool MayColourOutput();

/// Writes to standard output.
/// @throws OutputError  if this or an earlier write fails
void Print(std::string_view text);

/// Flushes standard output: a full disk may only show here.
/// @throws OutputError  if this or an earlier write fails
void FlushOutput();

}  // namespace cli
