#pragma once

#include <string>
#include <string_view>

/// Paths as session files store them: absolute, or relative to the session file, with "/" between
/// names.
namespace kelcore {

/// A path in the bytes that system calls take. File names are bytes and need not be UTF-8. Each
/// byte that is not part of a UTF-8 sequence becomes the lone surrogate U+DC00 + byte and turns
/// back into that byte, so that every file can be named: `PathToBytes(PathFromBytes(bytes)) ==
/// bytes`.
std::string PathToBytes(std::u16string_view path);
std::u16string PathFromBytes(std::string_view bytes);

/// The path for messages: zeros become "\0", because many programs end a line at a zero.
std::u16string PathForMessage(std::u16string_view path);

/// Resolves `path` against the folder that contains the file `location`. Absolute paths stay
/// absolute. Resolves ".", ".." and doubled separators by name; ".." at the root stays at the root.
/// In a relative `path`, "\" separates names like "/", because session files travel between
/// systems. An empty `path` names no file and stays empty.
std::u16string MakeFileFromPath(std::u16string_view path, std::u16string_view location);

/// The path relative to the folder of the file `location`, so that `MakeFileFromPath` still finds
/// the file after both have moved together. Resolves both by name; neither needs to exist. The
/// folder itself is ".". Empty if no relative form exists: one of the two is not absolute, or a
/// name contains "\", which `MakeFileFromPath` would take for a separator.
std::u16string MakeNormalizedRelativePath(std::u16string_view path, std::u16string_view location);

/// Whether `MakeFileFromPath(relative, location)` is exactly the absolute `path`, decided without
/// resolving anything. False for paths with empty names, names that begin with a dot (except ".."
/// at the front of `relative`) or names that contain "\".
bool LeadsPlainlyTo(std::u16string_view path, std::u16string_view relative,
                    std::u16string_view location);

namespace FileUtils {

/// The form in which the platform opens paths of 260 and more code units: absolute, without "." and
/// doubled separators (Linux needs no prefix). Keeps "..", because only the system knows where it
/// leads after a link. A relative path stays relative if the working directory no longer exists; an
/// empty path stays empty.
std::u16string PrepAsLongPathName(std::u16string_view path);

}  // namespace FileUtils
}  // namespace kelcore
