#pragma once

#include <string>
#include <string_view>

namespace toolkit {

/// What a session file is converted to.
enum class Target { SessionFile, Json };

/// The conversion of a session file. It decides what of the session is carried over.
struct Conversion {
    Target target = Target::SessionFile;

    /// The full path of the session file, to which its relative paths refer. If empty, the
    /// conversion of paths is unknown and paths are not checked.
    std::u16string from = {};

    /// The full path of the new session file; not used for JSON.
    std::u16string to = {};
};

}  // namespace toolkit
