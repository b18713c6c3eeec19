#pragma once

#include <string>
#include <string_view>

/// What names of files tell without a look at the files.
namespace toolkit {

/// Whether the name ends like a folder's. The plug-in would ignore that ending.
bool IsNamedAsFolder(std::string_view name);

/// The letters from A to Z in lower case; all else stays.
char ToLower(char letter);
std::string ToLower(std::string_view text);

/// The extension without its point, in lower case; empty if there is none.
std::string ExtensionOf(std::string_view name);

}  // namespace toolkit
