#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Paths as sessions state them: of this system or another, in UTF-8.
namespace toolkit {

/// A path taken apart. The views are into the path.
struct PathNames {
    bool isWindows = false;  ///< begins with a drive or "\": "/" and "\" separate names
    bool isFull = false;
    std::vector<std::string_view> names;  ///< with the drive, without empty ones
};

PathNames NamesOf(std::string_view path);

/// The last name; empty if there is none.
std::string_view LastNameOf(std::string_view path);

/// How many of the folders around two files have the same name, counted from the file until the
/// first that differs. Ignores the case of letters.
std::size_t SharedFolders(std::string_view one, std::string_view other);

/// The names behind a beginning of the path; no value if it begins otherwise, or has no more names.
std::optional<std::vector<std::string_view>> NamesBehind(std::string_view path,
                                                         std::string_view beginning);

}  // namespace toolkit
