#pragma once

#include <string>
#include <string_view>
#include <system_error>
#include <variant>

#include "toolkit/DocumentScan.h"

namespace cli {

/// The name of a command line that stands for a standard stream.
inline constexpr const char* kStream = "-";

/// The whole of standard input.
std::variant<std::string, toolkit::Problem> ReadStandardInput();

/// Standard output took not all that went there; the code is that of the first failure.
class OutputError : public std::system_error {
public:
    using std::system_error::system_error;
};

/// Writes to standard output.
/// @throws OutputError if that fails, or has failed before
void Print(std::string_view text);

/// Writes what of standard output still waits: a full disk may show only here.
/// @throws OutputError if that fails, or anything that went there before has failed
void FlushOutput();

/// Removes a file if one of the signals that ask a program to end comes; then they end it as ever.
/// The one made last is to go first.
class RemovalAtSignal {
public:
    /// @param path  must stay where it is
    explicit RemovalAtSignal(const char* path);
    ~RemovalAtSignal();
    RemovalAtSignal(const RemovalAtSignal&) = delete;
    RemovalAtSignal& operator=(const RemovalAtSignal&) = delete;

private:
    const char* former_;
};

/// A temporary file in the working directory, removed at the end, also when the end is a signal
/// from the terminal or another program. It stands there, and not in the place for temporary files,
/// because the paths in a session are relative to the session's own folder.
class TemporarySession {
public:
    /// @throws std::runtime_error if it cannot be made, with what to do about it
    TemporarySession();
    ~TemporarySession();
    TemporarySession(const TemporarySession&) = delete;
    TemporarySession& operator=(const TemporarySession&) = delete;

    /// Its full path.
    const std::string& Path() const { return path_; }

    /// @throws std::runtime_error if that fails, with what to do about it
    void Write(const std::string& content) const;

private:
    std::string path_;
    RemovalAtSignal removal_;
};

}  // namespace cli
