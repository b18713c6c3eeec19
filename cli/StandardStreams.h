#pragma once

#include <string>
#include <variant>

#include "toolkit/DocumentScan.h"

namespace cli {

/// The name of a command line that stands for a standard stream.
inline constexpr const char* kStream = "-";

/// The whole of standard input.
std::variant<std::string, toolkit::Problem> ReadStandardInput();

/// A temporary file in the working directory, removed at the end. It stands there, and not in the
/// place for temporary files, because the paths in a session are relative to the session's own
/// folder.
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
};

}  // namespace cli
