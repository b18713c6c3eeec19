#pragma once

#include <cstddef>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "platform/kelcore/Types.h"
#include "toolkit/Conversion.h"

namespace toolkit {

/// A place in a file; both count from 1, and 0 means that there is none. Columns count characters.
struct Place {
    kelcore::uint64 line = 0;
    kelcore::uint64 column = 0;

    friend bool operator==(const Place&, const Place&) = default;
};

/// Why a file is no session that can be read.
struct Problem {
    Place place;         ///< none where the file as a whole is meant
    std::string what;    ///< "the root element is <foo>, not <orvo>"
    std::string advice;  ///< what to do about it, or what it means
};

/// Something in a session that is lost on conversion.
struct NotCarried {
    Place place;
    std::string what;  ///< "<tracks> with 12 elements in it"
};

/// What a look at a session file tells that the plug-in's result codes do not.
struct DocumentScan {
    /// Set when the file cannot be read as a session.
    std::optional<Problem> problem;

    /// In the document's order, up to where a problem ended the scan. Never more than the limit.
    std::vector<NotCarried> notCarried;

    /// How many there are, those beyond the limit included.
    std::size_t notCarriedCount = 0;

    /// Those of them for which a host cannot take the session at all, not more than the limit.
    std::vector<NotCarried> endTheRead;
};

/// How many losses are described one by one unless the caller says otherwise.
inline constexpr std::size_t kNotCarriedLimit = 20;

/// Looks the file over. What is not a regular file is never opened, so that a pipe without a writer
/// does not hang. Comments, processing instructions and layout are no content. Whatever else is not
/// in `format/Elements.h` is lost.
///
/// Starts and stops the XML library, which counts its starts: the plug-in may be loaded or not.
/// Of a media file with two paths that differ it asks whether they lead to a file.
///
/// @param path  of the file, as the system's calls take it
/// @param conversion  for which losses are looked for
/// @param stop  ends the scan before the next block of the file; it then tells what it found until
///              there, and of no problem
DocumentScan ScanDocument(const std::string& path, const Conversion& conversion = {},
                          std::size_t limit = kNotCarriedLimit, const std::stop_token& stop = {});

}  // namespace toolkit
