#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

#include <orvo/Api.h>

namespace orvo {

enum class Severity {
    Error,   ///< the operation failed
    Warning  ///< the operation succeeded, with a remark
};

/// Something to tell a person. All texts are UTF-8.
struct Message {
    Severity severity = Severity::Error;
    std::string file{};        ///< the file concerned, as the caller named it; empty: no file
    std::uint64_t line = 0;    ///< from 1; 0: the file as a whole is meant
    std::uint64_t column = 0;  ///< from 1; 0 as for the line. Counts UTF-16 code units in a session
                               ///< file, characters in JSON
    std::string what{};        ///< what is wrong
    std::string advice{};      ///< what to do about it; may be empty

    friend bool operator==(const Message&, const Message&) = default;
};

/// Prints "error" or "warning".
ORVO_API std::ostream& operator<<(std::ostream& out, Severity severity);

/// Prints "FILE:LINE:COLUMN: what; advice", each part only where there is one, without a line end.
ORVO_API std::ostream& operator<<(std::ostream& out, const Message& message);

}  // namespace orvo
