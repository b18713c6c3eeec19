#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

#include <orvo/Api.h>
#include <orvo/Model.h>

/// What changed between two sessions, as a person would say it.
///
///     for (const orvo::Change& change : orvo::FindChanges(before, after)) {
///         std::cout << change.sentence << '\n';
///     }
///
/// Things are matched by what they are: clips by their media and source range before their
/// position, tracks by name and content, files by path. Ids decide only where these leave a choice,
/// so a session with other ids has no changes. `FindDifferences` in contrast compares member by
/// member.
///
/// All functions may run in any number of threads and throw nothing but std::bad_alloc.
namespace orvo {

// Which things are the same

/// The matching of two lists, as indices into them.
struct ListMatch {
    std::vector<std::pair<std::size_t, std::size_t>> same{};  ///< in the order of the first list
    std::vector<std::size_t> removed{};                       ///< only in the first
    std::vector<std::size_t> added{};                         ///< only in the second

    friend bool operator==(const ListMatch&, const ListMatch&) = default;
};

/// Where a clip is.
struct ClipPlace {
    std::size_t track = 0;  ///< an index into the list of tracks; behind the last: the metronome's
    std::size_t clip = 0;   ///< an index into the list of that track

    friend bool operator==(const ClipPlace&, const ClipPlace&) = default;
};

/// The matching of the clips of one kind. A clip may have moved to another track.
struct ClipMatch {
    std::vector<std::pair<ClipPlace, ClipPlace>> same{};
    std::vector<ClipPlace> removed{};
    std::vector<ClipPlace> added{};

    friend bool operator==(const ClipMatch&, const ClipMatch&) = default;
};

/// Which things of two sessions are the same. The metronome's track has the index behind the last
/// one of `audioTracks` in each session.
struct SessionMatch {
    ListMatch files{};
    ListMatch videoTracks{};
    ListMatch audioTracks{};
    ListMatch visibilityPresets{};
    ListMatch clipGroups{};
    ListMatch inputPorts{};
    ListMatch outputPorts{};
    ClipMatch videoClips{};
    ClipMatch audioClips{};
    ClipMatch midiClips{};

    friend bool operator==(const SessionMatch&, const SessionMatch&) = default;
};

ORVO_API SessionMatch MatchSessions(const Session& before, const Session& after);

/// The matching of the slots of two racks, first by effect and slot, then by effect alone. Nulls
/// are in none of the lists.
ORVO_API ListMatch MatchEffects(const EffectsRack& before, const EffectsRack& after);

/// The matching of sends, first by target and slot, then by target, then by slot. The ids of tracks
/// must mean the same in both.
ORVO_API ListMatch MatchSends(const SendList& before, const SendList& after);

/// The session with the ids of another one: what is the same has the other's id, all that refers to
/// it follows, and what the other lacks has ids that the other does not use.
ORVO_API Session NumberedLike(const Session& session, const SessionMatch& match,
                              const Session& other);

// What changed

enum class ChangeKind {
    Added,
    Removed,
    Moved,    ///< in time, to another track, or in the order of a list
    Trimmed,  ///< a clip starts or ends elsewhere in its media
    Split,    ///< a clip became two, or two became one
    Renamed,
    Faded,       ///< a clip's fades
    Automation,  ///< keyframes and their lanes
    Routing,     ///< inputs, outputs and the targets of sends
    Parameter,   ///< a parameter of an effect or a control, such as a gain
    Changed      ///< everything else
};

/// Prints the kind's word: "added", "trimmed".
ORVO_API std::ostream& operator<<(std::ostream& out, ChangeKind kind);

/// What a change speaks of.
enum class ChangedThing { Session, File, Track, Clip, ClipGroup, VisibilityPreset, Port };

/// Prints the thing's word: "session", "clip".
ORVO_API std::ostream& operator<<(std::ostream& out, ChangedThing thing);

/// One change of one thing, or the same change of several. All texts are UTF-8 and may contain any
/// character that a name in the sessions has.
struct Change {
    ChangeKind kind = ChangeKind::Changed;
    ChangedThing thing = ChangedThing::Session;
    std::size_t count = 1;  ///< of the things that changed so

    /// Places of the things, as JSON pointers: "/audioTracks/0/audioClips/3". One of the two lists
    /// is empty if the things were added or removed; else the lists correspond to each other.
    std::vector<std::string> before{};
    std::vector<std::string> after{};

    std::string sentence{};  ///< such as: clip "Kick" on track "Drums" moved by +0:01.000, ...

    friend bool operator==(const Change&, const Change&) = default;
};

/// Prints the sentence.
ORVO_API std::ostream& operator<<(std::ostream& out, const Change& change);

/// How times are shown. What a session cannot show, such as timecode without a frame rate, is shown
/// as h:mm:ss.mmm.
enum class ChangeTimes { OfSession, Samples, Seconds, Timecode, Bars };

struct ChangeOptions {
    ChangeTimes times = ChangeTimes::OfSession;
};

/// All changes; an empty list means that the sessions are equal but for ids, null entries of lists
/// and channels that feed themselves. Nothing is passed over: what has no sentence of its own is
/// said as "member: from this to that".
ORVO_API std::vector<Change> FindChanges(const Session& before, const Session& after,
                                         const ChangeOptions& options = {});

/// A JSON Patch (RFC 6902) that turns the JSON of the first session into that of the second, ids
/// included. It fits `ToJson` with and without `JsonOptions::full`. The text is a list with an
/// operation on each line, indented by two blanks, without a line feed at its end.
ORVO_API std::string JsonPatch(const Session& before, const Session& after);

}  // namespace orvo
