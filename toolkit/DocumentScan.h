#pragma once

#include <cstddef>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "platform/kelcore/Types.h"
#include "toolkit/Conversion.h"
#include "toolkit/scan/LibraryUse.h"

namespace toolkit {

/// A place in a file. Both count from 1; 0 means that there is no place. Columns count characters.
struct Place {
    kelcore::uint64 line = 0;
    kelcore::uint64 column = 0;

    friend bool operator==(const Place&, const Place&) = default;
};

/// Why a file cannot be read as a session.
struct Problem {
    Place place;               ///< 0 if the whole file is meant
    std::string what;          ///< "the root element is <foo>, not <orvo>"
    std::string advice;        ///< what to do about it, or what it means
    bool isMalformed = false;  ///< whether it is no XML, or no text, at all
};

/// Why something is lost.
enum class LossCause {
    UnknownElement,  ///< no element of that name stands in its parent
    IgnoredElement,  ///< accepted in old files, but without effect
    RepeatedElement,
    RepeatedKey,  ///< two elements with a key that must tell them apart
    MissingKey,
    MissingKeyThatEndsTheRead,
    StrayText,
    NotBase64,
    UnknownAttribute,
    IgnoredAttribute,  ///< accepted in old files, but without effect
    HiddenAttribute,   ///< another attribute counts in its place
    WrongValue,
    Joint,  ///< it follows from several attributes, or from the kind of conversion
};

/// Something in a session that is lost on conversion.
struct NotCarried {
    Place place;
    std::string what;  ///< "<tracks> with 12 elements in it"
    LossCause cause = LossCause::Joint;
    std::size_t element = 0;        ///< its number in the document's order; the root is 0
    std::u16string attribute = {};  ///< with its prefix; empty if no single one is meant

    friend bool operator==(const NotCarried&, const NotCarried&) = default;
};

/// What a scan of a session file finds and the plug-in's result codes do not say.
struct DocumentScan {
    /// Set when the file cannot be read as a session.
    std::optional<Problem> problem;

    /// In the document's order, up to the problem that ended the scan. Never more than the limit.
    std::vector<NotCarried> notCarried;

    /// How many there are, including those beyond the limit.
    std::size_t notCarriedCount = 0;

    /// Those of them that keep a host from reading the session at all. Never more than the limit.
    std::vector<NotCarried> endTheRead;
};

/// How many losses are described one by one unless the caller says otherwise.
inline constexpr std::size_t kNotCarriedLimit = 20;

/// Scans the file. Never opens what is not a regular file, so that a pipe without a writer does not
/// hang. Comments, processing instructions and layout are not content. Everything else that is not
/// in `format/Elements.h` is lost.
///
/// Starts and stops the XML library, which counts its starts, so the plug-in may be loaded or not.
/// If a media file has two different paths, checks whether they lead to a file.
///
/// @param path  of the file, as the system's calls take it
/// @param conversion  whose losses are reported
/// @param stop  ends the scan before the next block of the file; the result then holds what was
///              found until there, and no problem
DocumentScan ScanDocument(const std::string& path, const Conversion& conversion = {},
                          std::size_t limit = kNotCarriedLimit, const std::stop_token& stop = {});

/// The same for a file that a host reads meanwhile, in half the time if nothing is lost. A problem
/// that keeps the host from reading the file may be missing. Neither starts nor stops the XML
/// library, which must not happen while the host reads in another thread.
DocumentScan ScanFileBesideRead(const LibraryUse& library, const std::string& path,
                                const Conversion& conversion = {},
                                std::size_t limit = kNotCarriedLimit,
                                const std::stop_token& stop = {});

}  // namespace toolkit
