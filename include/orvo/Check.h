#pragma once

#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <orvo/Api.h>
#include <orvo/Message.h>
#include <orvo/Model.h>

/// Checks sessions: what a read ignores, what a save drops, and what in a session does not fit
/// together.
///
///     for (const orvo::Finding& finding : orvo::CheckFile("song.orvo").findings) {
///         std::cout << finding << '\n';
///     }
///
/// Nothing but std::bad_alloc is thrown.
namespace orvo {

/// A kind of finding.
struct CheckCode {
    std::string_view code;         ///< "missing-media"; it does not change between versions
    Severity severity;             ///< of all its findings
    std::string_view title;        ///< one line
    std::string_view explanation;  ///< what it means
    std::string_view example;      ///< a piece of a session file with the defect
    std::string_view remedy;       ///< how to mend it
};

/// All kinds of findings, in the order of the documentation.
ORVO_API std::span<const CheckCode> CheckCodes();

/// The kind with a code, or null.
ORVO_API const CheckCode* FindCheckCode(std::string_view code);

/// Something that is wrong.
struct Finding {
    Severity severity = Severity::Error;
    std::string code{};

    /// The file, as the caller named it; empty if a session in memory was checked.
    std::string file{};

    /// The place in a session file, from 1; 0 if there is none. Columns count characters.
    std::uint64_t line = 0;
    std::uint64_t column = 0;

    /// The place in the session's JSON: "/audioTracks/0/audioClips/3/fileID". Empty for what stands
    /// in a session file and not in the session, such as an unknown element.
    std::string path{};

    std::string what{};  ///< UTF-8, on one line

    friend bool operator==(const Finding&, const Finding&) = default;
};

/// Prints "FILE:LINE:COLUMN: severity: what [code]". Without a line, the path is the place.
ORVO_API std::ostream& operator<<(std::ostream& out, const Finding& finding);

/// What a file is taken for.
enum class CheckedKind {
    ByName,  ///< JSON if the name ends in ".json", in any case; else a session file
    SessionFile,
    Json
};

struct CheckOptions {
    CheckedKind kind = CheckedKind::ByName;

    /// Whether to look for media files and into them. Each costs a few accesses to its folder.
    bool media = true;
};

struct CheckResult {
    /// Whether the session could be read. If not, a finding says why.
    bool isRead = false;

    /// Those of a file in the order of their places; those of a session in memory in the order of
    /// its members.
    std::vector<Finding> findings{};

    /// Whether there is nothing to report.
    explicit operator bool() const { return isRead && findings.empty(); }
};

/// Checks a file. Takes as much memory as reading it, and twice its size if there is something to
/// report.
ORVO_API CheckResult CheckFile(const std::filesystem::path& file, const CheckOptions& options = {});

/// Checks a session in memory. Findings have paths only.
ORVO_API std::vector<Finding> CheckSession(const Session& session,
                                           const CheckOptions& options = {});

}  // namespace orvo
