#pragma once

#include <optional>
#include <stop_token>
#include <string>
#include <variant>

#include "toolkit/DocumentScan.h"

namespace toolkit {

/// What tells a file from another, and its content from what it was before a change.
struct FileIdentity {
    kelcore::uint64 device = 0;
    kelcore::uint64 number = 0;
    kelcore::uint64 size = 0;
    kelcore::int64 changedSeconds = 0;
    kelcore::int64 changedNanoseconds = 0;

    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

/// Of the file that stands at the path now; nothing if there is none.
std::optional<FileIdentity> IdentityOf(const std::string& path);

/// Why there is no file at the path whose content could be had, as far as that shows without it
/// being opened.
std::optional<Problem> FindProblem(const std::string& path);

/// The whole content of a file, or why it cannot be had. Never waits: what is not a regular file is
/// a problem, also when something else takes the file's place while it is looked at.
/// @param path  as the system's calls take it
/// @param stop  ends the reading before the next block; the content is then cut there
std::variant<std::string, Problem> ReadFileContent(const std::string& path,
                                                   const std::stop_token& stop = {});

}  // namespace toolkit
