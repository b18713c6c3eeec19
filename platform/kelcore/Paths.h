#pragma once

#include <string>
#include <string_view>

/// Paths as session files store them: absolute, or relative to the session file, with "/" between
/// names.
namespace kelcore {

/// A path as the system's calls take it (bytes). Names on disk are bytes and need not be UTF-8: a
/// byte that is part of no UTF-8 sequence travels as the lone surrogate U+DC00 + byte and becomes
/// that byte again, so that every file that has a name can be named:
/// `PathToBytes(PathFromBytes(bytes)) == bytes`.
std::string PathToBytes(std::u16string_view path);
std::u16string PathFromBytes(std::string_view bytes);

/// The path as a message shows it: "\0" stands for a zero, which would end the line for many.
std::u16string PathForMessage(std::u16string_view path);

/// The path of `path` as seen from the folder that holds the file `location`: an absolute path
/// stays, a relative one is joined to that folder. "." and ".." and doubled separators are worked
/// out by name, and
/// "\" separates names as "/" does when `path` is relative: session files travel between systems.
/// ".." above the root stays at the root. An empty `path` leads to no file, and is returned.
std::u16string MakeFileFromPath(std::u16string_view path, std::u16string_view location);

/// `path` as seen from the folder of the file `location`, so that `MakeFileFromPath` on the result
/// and a moved location finds a file that moved along. Both are worked out by name; nothing need
/// exist. The folder itself is ".". Empty when there is no such form: one of the two is not
/// absolute, or a name has a "\" in it, which `MakeFileFromPath` would take for a separator.
std::u16string MakeNormalizedRelativePath(std::u16string_view path, std::u16string_view location);

/// Whether `relative`, as `MakeFileFromPath` takes it, leads to exactly the absolute `path`, as far
/// as that can be seen without working anything out: false for paths with empty names, with names
/// that begin with a dot (but for ".." at the front of `relative`) or with a "\".
bool LeadsPlainlyTo(std::u16string_view path, std::u16string_view relative,
                    std::u16string_view location);

namespace FileUtils {

/// The form in which the platform opens paths of 260 and more code units: absolute, without "." and
/// doubled separators (Linux has no prefix for it and opens it as it is). ".." stays: where it
/// leads behind a link only the system knows. A relative path stays relative if the working
/// directory no longer exists; an empty one stays empty.
std::u16string PrepAsLongPathName(std::u16string_view path);

}  // namespace FileUtils
}  // namespace kelcore
