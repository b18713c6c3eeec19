#pragma once

#include <string>
#include <string_view>

/// What the names of files say without looking at the files.
namespace toolkit {

/// Whether the name ends like a folder's. The plug-in ignores such an ending.
bool IsNamedAsFolder(std::string_view name);

/// Turns the letters from A to Z into lower case; everything else stays.
char ToLower(char letter);
std::string ToLower(std::string_view text);

/// The extension without its point, in lower case; empty if there is none.
std::string ExtensionOf(std::string_view name);

}  // namespace toolkit
