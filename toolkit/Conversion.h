#pragma once

#include <string>
#include <string_view>

namespace toolkit {

/// What a session file becomes.
enum class Target { SessionFile, Json };

/// The conversion of a session file, on which it depends what of the session arrives.
struct Conversion {
    Target target = Target::SessionFile;

    /// The full path of the session file, from which the relative paths in it count. Empty: it is
    /// not known what becomes of paths, and they are not looked at.
    std::u16string from = {};

    /// The full path of the new session file; not used for JSON.
    std::u16string to = {};
};

}  // namespace toolkit
