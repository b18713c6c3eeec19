#pragma once

#include <stop_token>
#include <string>
#include <variant>

#include "toolkit/DocumentScan.h"

namespace toolkit {

/// The whole content of a file, or why it cannot be had. Never waits: what is not a regular file is
/// a problem, also when something else takes the file's place while it is looked at.
/// @param path  as the system's calls take it
/// @param stop  ends the reading before the next block; the content is then cut there
std::variant<std::string, Problem> ReadFileContent(const std::string& path,
                                                   const std::stop_token& stop = {});

}  // namespace toolkit
