#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <orvo/Api.h>
#include <orvo/Message.h>
#include <orvo/Model.h>
#include <orvo/Session.h>

/// Sessions in the files of other programs. No other format holds all of a session, so that each
/// conversion reports what is lost, and where:
///
///     const orvo::ExportResult result =
///         orvo::ExportSession(session, orvo::InterchangeKind::Otio, "song.otio");
///     for (const orvo::InterchangeFact& fact : result.report.facts) {
///         std::cout << fact << '\n';
///     }
///
/// docs/interchange.md says what each format carries.
///
/// Texts are UTF-8. All functions may run in any number of threads and throw nothing but
/// std::bad_alloc.
namespace orvo {

enum class InterchangeKind {
    DawProject,  ///< DAWproject 1.0, a ZIP archive
    Otio,        ///< OpenTimelineIO
    Otioz,       ///< OpenTimelineIO and its media in a ZIP archive
    Ardour,      ///< an Ardour 7 session, a folder
    Rpp,         ///< a REAPER project
    Edl,         ///< CMX3600 edit decision lists, a file a track
    Csv,         ///< the clips and markers as a table
};

/// A kind as people name it.
struct InterchangeKindFacts {
    InterchangeKind kind{};
    std::string_view name;      ///< such as "dawproject"; also the extension of its files
    std::string_view title;     ///< such as "DAWproject 1.0"
    bool canRead = false;       ///< `ImportSession` takes it
    bool writesFolder = false;  ///< `ExportSession` makes a folder
};

/// All kinds.
ORVO_API std::span<const InterchangeKindFacts> InterchangeKinds();

// What a conversion changes

/// What became of a value.
enum class Fidelity {
    Lost,          ///< it is not in the result
    Approximated,  ///< the result is near to it
    Guessed,       ///< the source does not say it, or nobody has tried whether it is understood so
    Moved,         ///< it is in another place than one would look for it
};

/// All of them, in their order.
inline constexpr std::array kFidelities = {Fidelity::Lost, Fidelity::Approximated,
                                           Fidelity::Guessed, Fidelity::Moved};

struct InterchangeFact {
    /// In the session's full JSON, as a JSON pointer: "/audioTracks/0/audioClips/3/fadeIn". A
    /// reading that drops something for which a session has no place has its place in the file.
    std::string place{};
    Fidelity fidelity = Fidelity::Lost;
    std::string what{};   ///< a sentence without its point: "the fade's shape has no place"
    std::string value{};  ///< the value concerned, as text; may be empty

    friend bool operator==(const InterchangeFact&, const InterchangeFact&) = default;
};

struct InterchangeReport {
    std::vector<InterchangeFact> facts{};  ///< the first ones, in the order of the conversion
    std::array<std::size_t, kFidelities.size()> counts{};  ///< of all facts, by their fidelity

    /// How many things are lost because the format has nothing of their kind, such as "takes" or
    /// "window positions". These are not among the facts.
    std::map<std::string, std::size_t> lostByNature{};

    std::size_t Count(Fidelity fidelity) const {
        return counts[static_cast<std::size_t>(fidelity)];
    }

    /// Whether nothing is lost, approximated or guessed, but for what is lost by nature.
    ORVO_API bool IsFaithful() const;

    friend bool operator==(const InterchangeReport&, const InterchangeReport&) = default;
};

// What the session format leaves open

/// The unit of faders, gains and sends.
enum class LevelUnit {
    Decibels,   ///< -144 and below is silence
    Amplitude,  ///< 1 is unchanged, 0 is silence
};

/// Where the samples of a fade's points, or those of a clip's automation, count from.
enum class ClipOrigin {
    ClipStart,
    Source,    ///< the start of the media file
    Timeline,  ///< the start of the session
};

/// What a stretch ratio is.
enum class StretchMeaning {
    TimelineBySource,  ///< 2: the clip lasts twice as long as what it plays
    SourceByTimeline,  ///< 2: the clip lasts half as long as what it plays
};

/// How to understand numbers whose meaning is the application's own. A conversion warns if the
/// session contradicts them.
struct Conventions {
    LevelUnit levels = LevelUnit::Decibels;
    ClipOrigin fadePoints = ClipOrigin::ClipStart;
    ClipOrigin clipAutomation = ClipOrigin::ClipStart;
    StretchMeaning stretchRatio = StretchMeaning::TimelineBySource;

    friend bool operator==(const Conventions&, const Conventions&) = default;
};

// Out

struct ExportOptions {
    Conventions conventions{};

    /// Whether media become a part of the file, where the kind can: `DawProject`. An `Otioz` always
    /// holds its media.
    bool embedMedia = false;

    /// Whether what the format has no place for travels along as data of our own, so that it comes
    /// back if the file is read again: in `DawProject`, `Otio` and `Otioz`. The report says what
    /// other programs lose in any case.
    bool ownData = true;

    /// Frames a second. `Otio` and `Otioz` round boundaries to it, and `Edl` counts in it. No
    /// value: OpenTimelineIO keeps samples; an edit decision list takes the rate of the session's
    /// time format if that is timecode, else 25. Such as 29.97, which means 30000/1001.
    std::optional<double> frameRate{};

    /// Timecode of an `Edl` skips frame numbers as `FrameRate::dropFrame` says. Only for 29.97 and
    /// 59.94.
    bool dropFrame = false;

    /// Write nothing unless the report is faithful.
    bool strict = false;

    /// The most facts that are listed; all are counted.
    std::size_t factLimit = static_cast<std::size_t>(-1);

    /// Called with the share that is done. Return false to cancel.
    ProgressFunction progress{};
};

struct ExportResult {
    bool ok = false;
    bool cancelled = false;
    InterchangeReport report{};
    std::vector<std::filesystem::path> files{};  ///< what was written
    std::vector<Message> messages{};             ///< why nothing was written, and warnings

    explicit operator bool() const { return ok; }
};

/// Writes a session as a file of another program. A file is replaced only once the new one is
/// whole; after a failure it is what it was. A kind that writes a folder makes it, and refuses one
/// that exists and is not empty. Edit decision lists get the name of `target` with the name of
/// their track before the extension, if there are several.
/// @param target  its folder must exist
ORVO_API ExportResult ExportSession(const Session& session, InterchangeKind kind,
                                    const std::filesystem::path& target,
                                    const ExportOptions& options = {});

// In

struct ImportOptions {
    Conventions conventions{};

    /// Where media go that the file contains. Files there are never replaced: names that are taken
    /// get a number. Empty: media stay in the file, and their clips are offline.
    std::filesystem::path mediaFolder{};

    /// The samples a second of the session, if the file does not say it.
    std::uint32_t sampleRate = 48000;

    std::size_t factLimit = static_cast<std::size_t>(-1);  ///< as in `ExportOptions`
    ProgressFunction progress{};                           ///< as in `ExportOptions`
};

struct ImportResult {
    bool ok = false;
    bool cancelled = false;
    Session session{};  ///< a new session after a failure
    InterchangeReport report{};
    std::vector<Message> messages{};  ///< why nothing was read, and warnings

    explicit operator bool() const { return ok; }
};

/// Reads a file of another program as a session. After a failure nothing has been written, not even
/// media.
/// @param kind  one that can be read
ORVO_API ImportResult ImportSession(const std::filesystem::path& file, InterchangeKind kind,
                                    const ImportOptions& options = {});

/// Prints "lost", "approximated", "guessed" or "moved".
ORVO_API std::ostream& operator<<(std::ostream& out, Fidelity fidelity);

/// Prints "/audioTracks/0/name: lost: the name has no place: \"Bass\"".
ORVO_API std::ostream& operator<<(std::ostream& out, const InterchangeFact& fact);

}  // namespace orvo
