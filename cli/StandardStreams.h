#pragma once

#include <string>
#include <variant>

#include "toolkit/DocumentScan.h"

namespace cli {

/// The name of a command line that stands for a standard stream.
inline constexpr const char* kStream = "-";

/// The whole of standard input.
std::variant<std::string, toolkit::Problem> ReadStandardInput();

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
    /// @throws std::system_error if it cannot be made
    TemporarySession();
    ~TemporarySession();
    TemporarySession(const TemporarySession&) = delete;
    TemporarySession& operator=(const TemporarySession&) = delete;

    /// Its full path.
    const std::string& Path() const { return path_; }

    /// @throws std::system_error
    void Write(const std::string& content) const;

private:
    std::string path_;
    RemovalAtSignal removal_;
};

}  // namespace cli
