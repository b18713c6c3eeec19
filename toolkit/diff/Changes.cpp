#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <orvo/Diff.h>
#include <orvo/Lookup.h>
#include "session/MemberKey.h"
#include "toolkit/diff/Members.h"
#include "toolkit/diff/Order.h"
#include "toolkit/diff/Report.h"
#include "toolkit/diff/Times.h"
#include "toolkit/diff/Tracks.h"
#include "toolkit/diff/Values.h"

namespace orvo {
namespace {

using diff::AudioTrackAt;
using diff::Event;
using diff::Members;
using diff::Quoted;
using diff::Report;
using diff::Subject;
using diff::Times;

// Names and places

std::string PlaceIn(std::string_view list, std::size_t index) {
    return fmt::format("/{}/{}", list, index);
}

std::string PlaceOfAudioTrack(const Session& session, std::size_t index) {
    return index < session.audioTracks.size()
               ? PlaceIn(KeyOf(&Session::audioTracks), index)
               : fmt::format("/{}/{}", KeyOf(&Session::metronome), KeyOf(&Metronome::track));
}

std::string NounOf(const AudioTrack& track) {
    switch (track.kind) {
        case TrackKind::Bus:
        case TrackKind::Master:
            return std::string(*WordOf(track.kind));
        case TrackKind::Metronome:
        case TrackKind::Instrument:
            return std::string(*WordOf(track.kind)) + " track";
        default:
            return "track";
    }
}
std::string NounOf(const VideoTrack&) {
    return "video track";
}

/// A track for a sentence.
template <class Track>
std::string NameOf(const Track& track) {
    return NounOf(track) + ' ' +
           (track.name.empty() ? std::to_string(track.id) : Quoted(track.name));
}

std::string NameOf(const File& file) {
    const std::string name = file.path.substr(file.path.find_last_of("/\\") + 1);
    return name.empty() ? std::to_string(file.id) : Quoted(name);
}

/// The name of a clip, or else that of its media.
std::string NameOf(const MidiClip& clip, const SessionIndex&) {
    return clip.name.empty() ? std::to_string(clip.id) : Quoted(clip.name);
}
template <class Clip>
std::string NameOf(const Clip& clip, const SessionIndex& index) {
    if (!clip.name.empty()) {
        return Quoted(clip.name);
    }
    const File* const file = index.FindFile(clip.fileId);
    return file != nullptr ? NameOf(*file) : std::to_string(clip.id);
}

std::string MediaOf(std::uint32_t fileId, const SessionIndex& index) {
    const File* const file = index.FindFile(fileId);
    return file != nullptr   ? NameOf(*file)
           : fileId == kNoId ? "nothing"
                             : fmt::format("the missing file {}", fileId);
}

/// What differs between two sessions with the same ids for the same things.
class Comparison {
public:
    Comparison(const Session& before, const Session& after, const SessionMatch& match,
               const ChangeOptions& options)
        : before_(before),
          after_(after),
          match_(match),
          beforeTimes_(before, options.times),
          afterTimes_(after, options.times),
          beforeIndex_(before),
          afterIndex_(after),
          report_(beforeTimes_) {}

    std::vector<Change> Run() {
        CompareSession();
        CompareFiles();
        CompareTracks();
        CompareClips(match_.videoClips, kVideo);
        CompareClips(match_.audioClips, kAudio);
        CompareClips(match_.midiClips, kMidi);
        CompareGroups();
        ComparePresets();
        ComparePorts(match_.inputPorts, &AudioDevice::inputPorts, "input");
        ComparePorts(match_.outputPorts, &AudioDevice::outputPorts, "output");
        return report_.Take();
    }

private:
    // How each kind of clip is found.
    struct VideoClips {
        using Clip = VideoClip;
        static constexpr auto kList = &VideoTrack::clips;
        static const VideoTrack& Track(const Session& session, std::size_t index) {
            return session.videoTracks[index];
        }
        static std::string TrackPlace(const Session&, std::size_t index) {
            return PlaceIn(KeyOf(&Session::videoTracks), index);
        }
        static const ListMatch& Tracks(const SessionMatch& match) { return match.videoTracks; }
    };
    struct OnAudioTracks {
        static const AudioTrack& Track(const Session& session, std::size_t index) {
            return AudioTrackAt(session, index);
        }
        static std::string TrackPlace(const Session& session, std::size_t index) {
            return PlaceOfAudioTrack(session, index);
        }
        static const ListMatch& Tracks(const SessionMatch& match) { return match.audioTracks; }
    };
    struct AudioClips : OnAudioTracks {
        using Clip = AudioClip;
        static constexpr auto kList = &AudioTrack::clips;
    };
    struct MidiClips : OnAudioTracks {
        using Clip = MidiClip;
        static constexpr auto kList = &AudioTrack::midiClips;
    };
    static constexpr VideoClips kVideo{};
    static constexpr AudioClips kAudio{};
    static constexpr MidiClips kMidi{};

    template <class Kind>
    static const auto& ClipAt(const Session& session, const ClipPlace& place, Kind) {
        return (Kind::Track(session, place.track).*Kind::kList)[place.clip];
    }

    Members MembersOf(const Subject& subject) {
        return {report_, beforeTimes_, afterTimes_, subject};
    }

    // The session

    static Subject SessionSubject() { return {ChangedThing::Session, "session", "", "", "", ""}; }

    /// What was said of things in lists is not compared again.
    void CompareSession() {
        const Members members = MembersOf(SessionSubject());
        members.Rest("", before_, after_, &Session::videoTracks, &Session::audioTracks,
                     &Session::trackVisibilityPresets, &Session::clipGroups, &Session::metronome,
                     &Session::properties, &Session::files, &Session::audioDevice);
        members.Rest("metronome", before_.metronome, after_.metronome, &Metronome::track);
        members.Rest("audio device", before_.audioDevice, after_.audioDevice,
                     &AudioDevice::inputPorts, &AudioDevice::outputPorts);
        CompareProperties(members);
    }

    static std::map<std::string, std::vector<std::string>> ByKey(
        const std::vector<Property>& properties) {
        std::map<std::string, std::vector<std::string>> values;
        for (const Property& property : properties) {
            values[property.key].push_back(property.value);
        }
        return values;
    }

    /// A key stands once, as a rule.
    static void CompareValues(const Members& members, const std::string& label,
                              const std::vector<std::string>& before,
                              const std::vector<std::string>& after) {
        if (before.size() == 1 && after.size() == 1) {
            members.Compare(label, before[0], after[0]);
        } else {
            members.Compare(label, before, after);
        }
    }

    void CompareProperties(const Members& members) {
        const auto before = ByKey(before_.properties);
        const auto after = ByKey(after_.properties);
        for (const auto& [key, values] : before) {
            const auto found = after.find(key);
            if (found == after.end()) {
                members.Say(ChangeKind::Removed, ": property " + Quoted(key) + " removed");
            } else {
                CompareValues(members, "property " + Quoted(key), values, found->second);
            }
        }
        for (const auto& [key, values] : after) {
            if (!before.contains(key)) {
                members.Say(ChangeKind::Added, ": property " + Quoted(key) + " added");
            }
        }
        if (before == after && before_.properties != after_.properties) {
            members.Say(ChangeKind::Moved, ": properties in another order");
        }
    }

    // Lists of named things

    /// Says what came and went, and calls `compare` for each pair that differs.
    template <class Thing, class SubjectOf, class Compare>
    void CompareList(const ListMatch& match, const std::vector<Thing>& before,
                     const std::vector<Thing>& after, const SubjectOf& subjectOf,
                     const Compare& compare) {
        for (const std::size_t i : match.removed) {
            Subject subject = subjectOf(before[i], i);
            subject.after.reset();
            report_.Say(subject, {ChangeKind::Removed, " removed", {}, {}});
        }
        for (const std::size_t i : match.added) {
            Subject subject = subjectOf(after[i], i);
            subject.before.reset();
            report_.Say(subject, {ChangeKind::Added, " added", {}, {}});
        }
        for (const auto& [i, j] : match.same) {
            if (!diff::IsSame(before[i], after[j])) {
                Subject subject = subjectOf(before[i], i);
                subject.after = subjectOf(after[j], j).after;
                compare(MembersOf(subject), before[i], after[j]);
            }
        }
    }

    void CompareOrder(const ListMatch& match, const char* what) {
        if (!KeepsAll(match)) {
            MembersOf(SessionSubject())
                .Say(ChangeKind::Moved, fmt::format(": {} in another order", what));
        }
    }

    static bool KeepsAll(const ListMatch& match) {
        return std::is_sorted(match.same.begin(), match.same.end(),
                              [](const auto& a, const auto& b) { return a.second < b.second; });
    }

    static void Rename(const Members& members, const std::string& before,
                       const std::string& after) {
        if (before != after) {
            members.Say(ChangeKind::Renamed, " renamed to " + Quoted(after));
        }
    }

    void CompareFiles() {
        CompareList(
            match_.files, before_.files, after_.files,
            [](const File& file, std::size_t i) {
                const std::string place = PlaceIn(KeyOf(&Session::files), i);
                return Subject{ChangedThing::File, "file", NameOf(file), "", place, place};
            },
            [](const Members& members, const File& before, const File& after) {
                if (before.path != after.path) {
                    members.Say(ChangeKind::Changed, " relinked to " + Quoted(after.path));
                }
                members.Rest("", before, after, &File::path);
            });
        CompareOrder(match_.files, "files");
    }

    void CompareGroups() {
        CompareList(
            match_.clipGroups, before_.clipGroups, after_.clipGroups,
            [](const ClipGroup& group, std::size_t i) {
                const std::string place = PlaceIn(KeyOf(&Session::clipGroups), i);
                return Subject{
                    ChangedThing::ClipGroup, "clip group", Quoted(group.name), "", place, place};
            },
            [](const Members& members, const ClipGroup& before, const ClipGroup& after) {
                Rename(members, before.name, after.name);
                CompareItems(members, before.items, after.items);
                members.Rest("", before, after, &ClipGroup::name, &ClipGroup::items);
            });
        CompareOrder(match_.clipGroups, "clip groups");
    }

    static void CompareItems(const Members& members, const std::vector<ClipGroupItem>& before,
                             const std::vector<ClipGroupItem>& after) {
        const auto count = [](const auto& list, const auto& others) {
            return std::count_if(list.begin(), list.end(), [&](const ClipGroupItem& item) {
                return std::count(others.begin(), others.end(), item) <
                       std::count(list.begin(), list.end(), item);
            });
        };
        const auto left = count(before, after);
        const auto joined = count(after, before);
        if (joined != 0) {
            members.Say(ChangeKind::Changed,
                        fmt::format(": {} clip{} joined", joined, joined == 1 ? "" : "s"));
        }
        if (left != 0) {
            members.Say(ChangeKind::Changed,
                        fmt::format(": {} clip{} left", left, left == 1 ? "" : "s"));
        }
        if (left == 0 && joined == 0 && before != after) {
            members.Say(ChangeKind::Moved, ": items in another order");
        }
    }

    void ComparePresets() {
        CompareList(
            match_.visibilityPresets, before_.trackVisibilityPresets, after_.trackVisibilityPresets,
            [](const TrackVisibilityPreset& preset, std::size_t i) {
                const std::string place = PlaceIn(KeyOf(&Session::trackVisibilityPresets), i);
                return Subject{ChangedThing::VisibilityPreset,
                               "visibility preset",
                               Quoted(preset.name),
                               "",
                               place,
                               place};
            },
            [](const Members& members, const TrackVisibilityPreset& before,
               const TrackVisibilityPreset& after) {
                Rename(members, before.name, after.name);
                members.Rest("", before, after, &TrackVisibilityPreset::name);
            });
        CompareOrder(match_.visibilityPresets, "visibility presets");
    }

    void ComparePorts(const ListMatch& match, std::vector<AudioPort> AudioDevice::*ports,
                      const char* noun) {
        CompareList(
            match, before_.audioDevice.*ports, after_.audioDevice.*ports,
            [&](const AudioPort& port, std::size_t i) {
                const std::string place =
                    fmt::format("/{}/{}/{}", KeyOf(&Session::audioDevice), KeyOf(ports), i);
                return Subject{ChangedThing::Port, noun, Quoted(port.name), "", place, place};
            },
            [](const Members& members, const AudioPort& before, const AudioPort& after) {
                Rename(members, before.name, after.name);
                members.Rest("", before, after, &AudioPort::name);
            });
        CompareOrder(match, fmt::format("{} ports", noun).c_str());
    }

    // Tracks

    template <class Track>
    static Subject SubjectOf(const Track& track, std::optional<std::string> before,
                             std::optional<std::string> after) {
        return {ChangedThing::Track,
                NounOf(track),
                track.name.empty() ? std::to_string(track.id) : Quoted(track.name),
                "",
                std::move(before),
                std::move(after)};
    }

    void CompareTracks() {
        CompareTracksOf(kVideo, before_.videoTracks.size(), after_.videoTracks.size());
        CompareTracksOf(kAudio, before_.audioTracks.size(), after_.audioTracks.size());
    }

    static std::string Contents(const VideoTrack& track) { return CountOf(track.clips.size()); }
    static std::string Contents(const AudioTrack& track) {
        return CountOf(track.clips.size() + track.midiClips.size());
    }
    static std::string CountOf(std::size_t clips) {
        return clips == 0 ? "" : fmt::format(" with {} clip{}", clips, clips == 1 ? "" : "s");
    }

    template <class Kind>
    void CompareTracksOf(Kind kind, std::size_t beforeCount, std::size_t afterCount) {
        const ListMatch& match = Kind::Tracks(match_);
        for (const std::size_t i : match.removed) {
            const auto& track = Kind::Track(before_, i);
            report_.Say(SubjectOf(track, Kind::TrackPlace(before_, i), std::nullopt),
                        {ChangeKind::Removed, " removed", Contents(track), {}});
        }
        for (const std::size_t i : match.added) {
            const auto& track = Kind::Track(after_, i);
            report_.Say(SubjectOf(track, std::nullopt, Kind::TrackPlace(after_, i)),
                        {ChangeKind::Added, " added", Contents(track), {}});
        }
        const bool hasNewOrder = CompareTrackOrder(kind, beforeCount, afterCount);
        const bool indicesFollow = hasNewOrder || !match_.videoTracks.removed.empty() ||
                                   !match_.videoTracks.added.empty() ||
                                   !match_.audioTracks.removed.empty() ||
                                   !match_.audioTracks.added.empty();
        for (const auto& [i, j] : match.same) {
            const auto& before = Kind::Track(before_, i);
            const auto& after = Kind::Track(after_, j);
            const Members members = MembersOf(
                SubjectOf(before, Kind::TrackPlace(before_, i), Kind::TrackPlace(after_, j)));
            Rename(members, before.name, after.name);
            if (!indicesFollow && before.index != after.index) {
                members.FromTo("index", std::to_string(before.index), std::to_string(after.index));
            }
            CompareTrack(members, before, after);
        }
    }

    /// The tracks of the list, in the order in which they are shown.
    template <class Kind>
    static std::vector<std::size_t> ShownOrder(const Session& session, std::size_t count, Kind) {
        std::vector<std::size_t> order(count);
        for (std::size_t i = 0; i < count; ++i) {
            order[i] = i;
        }
        std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
            return Kind::Track(session, a).index < Kind::Track(session, b).index;
        });
        return order;
    }

    /// Says which tracks moved among the others.
    template <class Kind>
    bool CompareTrackOrder(Kind kind, std::size_t beforeCount, std::size_t afterCount) {
        const std::vector<std::size_t> shownBefore = ShownOrder(before_, beforeCount, kind);
        const std::vector<std::size_t> shownAfter = ShownOrder(after_, afterCount, kind);
        std::vector<std::size_t> rank(afterCount);
        for (std::size_t i = 0; i < afterCount; ++i) {
            rank[shownAfter[i]] = i;
        }
        std::map<std::size_t, std::size_t> partner;
        for (const auto& [i, j] : Kind::Tracks(match_).same) {
            partner.emplace(i, j);
        }
        std::vector<std::size_t> sequence;
        std::map<std::size_t, std::size_t> beforeOf;  // a rank to the index before
        for (const std::size_t i : shownBefore) {
            if (const auto found = partner.find(i); found != partner.end()) {
                sequence.push_back(rank[found->second]);
                beforeOf.emplace(rank[found->second], i);
            }
        }
        const std::vector<bool> keeps = diff::KeepsOrder(sequence);
        std::vector<bool> stays(afterCount, true);
        for (std::size_t i = 0; i < sequence.size(); ++i) {
            stays[sequence[i]] = keeps[i];
        }
        std::string behind;
        for (std::size_t i = 0; i < afterCount; ++i) {
            const auto& track = Kind::Track(after_, shownAfter[i]);
            if (stays[i]) {
                behind = NameOf(track);
                continue;
            }
            const std::size_t old = beforeOf.at(i);
            report_.Say(SubjectOf(Kind::Track(before_, old), Kind::TrackPlace(before_, old),
                                  Kind::TrackPlace(after_, shownAfter[i])),
                        {ChangeKind::Moved,
                         behind.empty() ? " moved to the top" : " moved behind " + behind,
                         {},
                         {}});
        }
        const bool hasMoved = std::find(keeps.begin(), keeps.end(), false) != keeps.end();
        if (!hasMoved) {
            CompareOrder(Kind::Tracks(match_), "tracks stored");
        }
        return hasMoved;
    }

    void CompareTrack(const Members& members, const VideoTrack& before, const VideoTrack& after) {
        members.Rest("", before, after, &VideoTrack::name, &VideoTrack::clips, &VideoTrack::index);
    }

    void CompareTrack(const Members& members, const AudioTrack& before, const AudioTrack& after) {
        CompareOutputs(members, before, after);
        if (before.inputId != after.inputId) {
            SayRoute(members, "input", InputOf(before_, before.inputId),
                     InputOf(after_, after.inputId), before.inputId, after.inputId);
        }
        CompareSends(members, before.sendList, after.sendList);
        members.Rest("", before, after, &AudioTrack::id, &AudioTrack::name, &AudioTrack::index,
                     &AudioTrack::clips, &AudioTrack::midiClips, &AudioTrack::outputTrackId,
                     &AudioTrack::hardwareOutputId, &AudioTrack::inputId, &AudioTrack::sendList);
    }

    static std::string InputOf(const Session& session, std::int32_t id) {
        const AudioPort* const port = FindInputPort(session, id);
        return port != nullptr ? "input " + Quoted(port->name)
               : id < 0        ? "nothing"
                               : fmt::format("input {}", id);
    }

    static std::string TrackOf(const SessionIndex& index, std::int32_t id) {
        const AudioTrack* const track = index.FindAudioTrack(static_cast<std::uint32_t>(id));
        return track != nullptr ? NameOf(*track)
               : id < 0         ? "nowhere"
                                : fmt::format("the missing track {}", id);
    }

    static std::string OutputOf(const Session& session, const SessionIndex& index,
                                const AudioTrack& track) {
        if (track.outputTrackId > 0) {
            return TrackOf(index, track.outputTrackId);
        }
        const AudioPort* const port = FindOutputPort(session, track.hardwareOutputId);
        return port != nullptr              ? "output " + Quoted(port->name)
               : track.hardwareOutputId < 0 ? "nowhere"
                                            : fmt::format("output {}", track.hardwareOutputId);
    }

    /// Says the numbers where both have the same name.
    static void SayRoute(const Members& members, const std::string& what, const std::string& before,
                         const std::string& after, std::int32_t beforeId, std::int32_t afterId) {
        const bool isTold = before != after;
        members.Say(ChangeKind::Routing,
                    fmt::format(": {} from {} to {}", what,
                                isTold ? before : fmt::format("{} ({})", before, beforeId),
                                isTold ? after : fmt::format("{} ({})", after, afterId)));
    }

    void CompareOutputs(const Members& members, const AudioTrack& before, const AudioTrack& after) {
        const std::string one = OutputOf(before_, beforeIndex_, before);
        const std::string other = OutputOf(after_, afterIndex_, after);
        const bool isElsewhere =
            one != other && (before.outputTrackId != after.outputTrackId ||
                             before.hardwareOutputId != after.hardwareOutputId);
        if (isElsewhere) {
            SayRoute(members, "output", one, other, 0, 0);
            return;
        }
        if (before.outputTrackId != after.outputTrackId) {
            SayRoute(members, "output track", one, other, before.outputTrackId,
                     after.outputTrackId);
        }
        if (before.hardwareOutputId != after.hardwareOutputId) {
            SayRoute(members, "hardware output", one, other, before.hardwareOutputId,
                     after.hardwareOutputId);
        }
    }

    void CompareSends(const Members& members, const std::optional<SendList>& before,
                      const std::optional<SendList>& after) {
        const SendList none;
        const SendList& ones = before ? *before : none;
        const SendList& others = after ? *after : none;
        const ListMatch match = MatchSends(ones, others);
        if (before.has_value() != after.has_value() && match.removed.empty() &&
            match.added.empty()) {
            members.Say(ChangeKind::Routing, before ? ": send list removed" : ": send list added");
        }
        for (const std::size_t i : match.removed) {
            members.Say(
                ChangeKind::Routing,
                ": send to " + TrackOf(beforeIndex_, ones.slots[i]->sendOutputId) + " removed");
        }
        for (const std::size_t i : match.added) {
            members.Say(
                ChangeKind::Routing,
                ": send to " + TrackOf(afterIndex_, others.slots[i]->sendOutputId) + " added");
        }
        const bool isAllThere = match.removed.empty() && match.added.empty();
        for (const auto& [i, j] : match.same) {
            CompareSend(members, *ones.slots[i], *others.slots[j], isAllThere);
        }
        if (!KeepsAll(match)) {
            members.Say(ChangeKind::Moved, ": sends in another order");
        }
    }

    void CompareSend(const Members& members, const SendSlot& before, const SendSlot& after,
                     bool slotTells) {
        const std::string target = TrackOf(beforeIndex_, before.sendOutputId);
        if (before.sendOutputId != after.sendOutputId) {
            SayRoute(members, fmt::format("send {}", before.slotIndex), target,
                     TrackOf(afterIndex_, after.sendOutputId), before.sendOutputId,
                     after.sendOutputId);
        }
        const std::string label = "send to " + target;
        if (slotTells && before.slotIndex != after.slotIndex) {
            members.FromTo(label + " slot", std::to_string(before.slotIndex),
                           std::to_string(after.slotIndex));
        }
        members.Rest(label, before, after, &SendSlot::sendOutputId, &SendSlot::slotIndex);
    }

    // Clips

    template <class Kind>
    Subject ClipSubject(const ClipPlace* before, const ClipPlace* after, Kind kind) const {
        const Session& session = before != nullptr ? before_ : after_;
        const ClipPlace& place = before != nullptr ? *before : *after;
        const auto placeOf = [&](const Session& owner, const ClipPlace* at) {
            return at == nullptr ? std::nullopt
                                 : std::optional(Kind::TrackPlace(owner, at->track) +
                                                 PlaceIn(KeyOf(Kind::kList), at->clip));
        };
        return {
            ChangedThing::Clip,
            "clip",
            NameOf(ClipAt(session, place, kind), before != nullptr ? beforeIndex_ : afterIndex_),
            " on " + NameOf(Kind::Track(session, place.track)),
            placeOf(before_, before),
            placeOf(after_, after)};
    }

    /// The ends of a clip on the timeline.
    template <class Clip>
    static std::int64_t EndOf(const Clip& clip) {
        return diff::Sum(clip.startPoint, clip.duration);
    }

    /// Whether the media lies on the timeline as before.
    template <class Clip>
    static bool IsAligned(const Clip& one, const Clip& other) {
        return static_cast<std::uint64_t>(one.startPoint) -
                   static_cast<std::uint64_t>(one.sourceInPoint) ==
               static_cast<std::uint64_t>(other.startPoint) -
                   static_cast<std::uint64_t>(other.sourceInPoint);
    }

    /// Whether two clips without a gap are a third one.
    template <class Clip>
    static bool AreParts(const Clip& first, const Clip& second, const Clip& whole) {
        return IsAligned(first, whole) && IsAligned(second, whole) &&
               first.startPoint == whole.startPoint && EndOf(first) == second.startPoint &&
               EndOf(second) == EndOf(whole) && first.duration > 0 && second.duration > 0;
    }

    static bool HaveSameMedia(const MidiClip& one, const MidiClip& other) {
        return one.events == other.events;
    }
    template <class Clip>
    static bool HaveSameMedia(const Clip& one, const Clip& other) {
        return one.fileId == other.fileId;
    }

    /// Clips whose ends are told by a sentence about a split.
    struct Told {
        std::vector<bool> pairs;   // as in `ClipMatch::same`
        std::vector<bool> others;  // as in `ClipMatch::added` or `ClipMatch::removed`
    };

    /// Finds parts that came from one clip. For clips that were joined, the sides change places.
    template <class Kind>
    Told FindSplits(const ClipMatch& match, bool joined, Kind kind) {
        const std::vector<ClipPlace>& parts = joined ? match.removed : match.added;
        const Session& session = joined ? before_ : after_;
        Told told{std::vector<bool>(match.same.size()), std::vector<bool>(parts.size())};
        if (parts.empty()) {
            return told;
        }
        for (std::size_t pair = 0; pair < match.same.size(); ++pair) {
            const auto& [before, after] = match.same[pair];
            const auto& whole = ClipAt(joined ? after_ : before_, joined ? after : before, kind);
            const auto& kept = ClipAt(session, joined ? before : after, kind);
            if (whole.duration == kept.duration) {
                continue;
            }
            for (std::size_t part = 0; part < parts.size(); ++part) {
                const auto& other = ClipAt(session, parts[part], kind);
                const bool isFirst = kept.startPoint < other.startPoint;
                if (!told.others[part] && parts[part].track == (joined ? before : after).track &&
                    HaveSameMedia(other, whole) && HaveSameMedia(kept, whole) &&
                    AreParts(isFirst ? kept : other, isFirst ? other : kept, whole)) {
                    const Times& times = joined ? beforeTimes_ : afterTimes_;
                    MembersOf(ClipSubject(&before, &after, kind))
                        .Say(ChangeKind::Split,
                             fmt::format(
                                 " {} at {}", joined ? "joined" : "split",
                                 times.Position(std::max(kept.startPoint, other.startPoint))));
                    told.pairs[pair] = told.others[part] = true;
                    break;
                }
            }
        }
        return told;
    }

    template <class Kind>
    void CompareClips(const ClipMatch& match, Kind kind) {
        const Told splits = FindSplits(match, false, kind);
        const Told joins = FindSplits(match, true, kind);
        for (std::size_t i = 0; i < match.removed.size(); ++i) {
            const ClipPlace& place = match.removed[i];
            if (!joins.others[i] && !Contains(Kind::Tracks(match_).removed, place.track)) {
                const auto& clip = ClipAt(before_, place, kind);
                SayClip(ClipSubject(&place, nullptr, kind), ChangeKind::Removed, "removed", clip,
                        beforeTimes_);
            }
        }
        for (std::size_t i = 0; i < match.added.size(); ++i) {
            const ClipPlace& place = match.added[i];
            if (!splits.others[i] && !Contains(Kind::Tracks(match_).added, place.track)) {
                const auto& clip = ClipAt(after_, place, kind);
                SayClip(ClipSubject(nullptr, &place, kind), ChangeKind::Added, "added", clip,
                        afterTimes_);
            }
        }
        const std::map<std::size_t, std::size_t> partners = Partners(Kind::Tracks(match_));
        for (std::size_t i = 0; i < match.same.size(); ++i) {
            const auto& [before, after] = match.same[i];
            const auto& one = ClipAt(before_, before, kind);
            const auto& other = ClipAt(after_, after, kind);
            const auto partner = partners.find(before.track);
            const bool isOnItsTrack = partner != partners.end() && partner->second == after.track;
            if (isOnItsTrack && one == other) {
                continue;
            }
            const Subject subject = ClipSubject(&before, &after, kind);
            ComparePosition(subject, one, other,
                            isOnItsTrack ? "" : NameOf(Kind::Track(after_, after.track)),
                            splits.pairs[i] || joins.pairs[i]);
            CompareClip(MembersOf(subject), one, other);
        }
        CompareClipOrder(match, kind);
    }

    static bool Contains(const std::vector<std::size_t>& list, std::size_t index) {
        return std::binary_search(list.begin(), list.end(), index);
    }

    static std::map<std::size_t, std::size_t> Partners(const ListMatch& match) {
        return {match.same.begin(), match.same.end()};
    }

    template <class Clip>
    void SayClip(const Subject& subject, ChangeKind kind, const char* verb, const Clip& clip,
                 const Times& times) {
        report_.Say(subject, {kind,
                              std::string(" ") + verb,
                              fmt::format(" at {}, {} long", times.Position(clip.startPoint),
                                          times.Length(clip.duration)),
                              {}});
    }

    /// Says where a clip went, and which part of its media it plays.
    template <class Clip>
    void ComparePosition(const Subject& subject, const Clip& one, const Clip& other,
                         const std::string& newTrack, bool isSplit) {
        const Members members = MembersOf(subject);
        const bool isTrimmed = !isSplit && one.duration != other.duration;
        const bool staysAligned = IsAligned(one, other);
        const bool isShifted = one.startPoint != other.startPoint;
        const bool isTrimmedAtStart = staysAligned && isShifted && isTrimmed;
        if (!newTrack.empty() || (isShifted && !isTrimmedAtStart && !isSplit)) {
            SayMove(subject, one, other, newTrack);
        }
        if (isTrimmedAtStart) {
            SayTrim(members, "start", one.startPoint > other.startPoint,
                    diff::DistanceBetween(one.startPoint, other.startPoint), other);
            if (EndOf(one) != EndOf(other)) {
                SayTrim(members, "end", EndOf(other) > EndOf(one),
                        diff::DistanceBetween(EndOf(one), EndOf(other)), other);
            }
            return;
        }
        if (isTrimmed) {
            CompareLength(members, one, other);
        }
        if (!isSplit && one.sourceInPoint != other.sourceInPoint &&
            !(isTrimmed && TrimsStart(one, other))) {
            members.Say(
                ChangeKind::Trimmed,
                ": media slipped by " + afterTimes_.Offset(one.sourceInPoint, other.sourceInPoint));
        }
    }

    /// Whether the clip lost or gained as much at the start of its media as in length.
    template <class Clip>
    static bool TrimsStart(const Clip& one, const Clip& other) {
        return one.sourceInPoint != other.sourceInPoint &&
               diff::Sum(one.sourceInPoint, one.duration) ==
                   diff::Sum(other.sourceInPoint, other.duration);
    }

    template <class Clip>
    void CompareLength(const Members& members, const Clip& one, const Clip& other) {
        SayTrim(members, TrimsStart(one, other) ? "start" : "end", other.duration > one.duration,
                diff::DistanceBetween(one.duration, other.duration), other);
    }

    template <class Clip>
    void SayTrim(const Members& members, const char* end, bool isLonger, std::int64_t distance,
                 const Clip& other) {
        members.Say(ChangeKind::Trimmed,
                    fmt::format(" {} by {} at its {}", isLonger ? "extended" : "trimmed",
                                afterTimes_.Length(distance), end),
                    fmt::format(", now {} long", afterTimes_.Length(other.duration)));
    }

    template <class Clip>
    void SayMove(const Subject& subject, const Clip& one, const Clip& other,
                 const std::string& newTrack) {
        const bool isShifted = one.startPoint != other.startPoint;
        Event event{ChangeKind::Moved, " moved", {}, {}};
        if (isShifted) {
            event.predicate += " by " + afterTimes_.Offset(one.startPoint, other.startPoint);
            event.detail = fmt::format(", from {} to {}", beforeTimes_.Position(one.startPoint),
                                       afterTimes_.Position(other.startPoint));
            event.from = one.startPoint;
        }
        if (!newTrack.empty()) {
            event.predicate += " to " + newTrack;
        }
        report_.Say(subject, event);
    }

    void CompareClip(const Members& members, const MidiClip& before, const MidiClip& after) {
        Rename(members, before.name, after.name);
        members.Rest("", before, after, &MidiClip::id, &MidiClip::startPoint, &MidiClip::duration,
                     &MidiClip::sourceInPoint, &MidiClip::name);
    }

    void CompareClip(const Members& members, const VideoClip& before, const VideoClip& after) {
        Rename(members, before.name, after.name);
        CompareMedia(members, before.fileId, after.fileId);
        members.Rest("", before, after, &VideoClip::id, &VideoClip::fileId, &VideoClip::startPoint,
                     &VideoClip::duration, &VideoClip::sourceInPoint, &VideoClip::name);
    }

    void CompareClip(const Members& members, const AudioClip& before, const AudioClip& after) {
        Rename(members, before.name, after.name);
        CompareMedia(members, before.fileId, after.fileId);
        CompareFades(members, "fade in", before.fadeIn, after.fadeIn);
        CompareFades(members, "fade out", before.fadeOut, after.fadeOut);
        CompareCrossfade(members, "start", before.crossFadeHeadClipId, after.crossFadeHeadClipId);
        CompareCrossfade(members, "end", before.crossFadeTailClipId, after.crossFadeTailClipId);
        members.Rest("", before, after, &AudioClip::id, &AudioClip::fileId, &AudioClip::startPoint,
                     &AudioClip::duration, &AudioClip::sourceInPoint, &AudioClip::name,
                     &AudioClip::fadeIn, &AudioClip::fadeOut, &AudioClip::crossFadeHeadClipId,
                     &AudioClip::crossFadeTailClipId);
    }

    void CompareMedia(const Members& members, std::uint32_t before, std::uint32_t after) {
        if (before != after) {
            const std::string one = MediaOf(before, beforeIndex_);
            const std::string other = MediaOf(after, afterIndex_);
            members.Say(ChangeKind::Changed, fmt::format(": media from {} to {}", one, other));
        }
    }

    void CompareFades(const Members& members, const char* label, const std::optional<Fade>& before,
                      const std::optional<Fade>& after) {
        if (before.has_value() != after.has_value()) {
            members.Say(ChangeKind::Faded,
                        fmt::format(": {} {}", label, after ? "added" : "removed"),
                        after ? ", " + afterTimes_.Length(LengthOf(*after)) + " long" : "");
            return;
        }
        if (!before || *before == *after) {
            return;
        }
        const std::int64_t one = LengthOf(*before);
        const std::int64_t other = LengthOf(*after);
        if (one != other) {
            members.Say(ChangeKind::Faded,
                        fmt::format(": {} {} by {}", label, other > one ? "longer" : "shorter",
                                    afterTimes_.Length(diff::DistanceBetween(one, other))),
                        fmt::format(", from {} to {}", beforeTimes_.Length(one),
                                    afterTimes_.Length(other)));
        } else if (before->startPoint != after->startPoint) {
            members.Say(ChangeKind::Faded,
                        fmt::format(": {} moved by {}", label,
                                    afterTimes_.Offset(before->startPoint, after->startPoint)));
        } else if (before->endPoint != after->endPoint) {
            members.FromTo(fmt::format("{} end point", label), std::to_string(before->endPoint),
                           std::to_string(after->endPoint));
        }
        members.Rest(label, *before, *after, &Fade::startPoint, &Fade::endPoint);
    }

    static std::int64_t LengthOf(const Fade& fade) {
        return diff::DistanceBetween(fade.startPoint, fade.endPoint);
    }

    static std::string CrossfadeOf(const SessionIndex& index, std::int32_t id) {
        const auto found = index.FindAudioClip(static_cast<std::uint32_t>(id));
        return found    ? "clip " + NameOf(*found.clip, index)
               : id < 0 ? "nothing"
                        : fmt::format("the missing clip {}", id);
    }

    void CompareCrossfade(const Members& members, const char* end, std::int32_t before,
                          std::int32_t after) {
        if (before == after) {
            return;
        }
        members.Say(ChangeKind::Faded, fmt::format(": crossfades at its {} with {} instead of {}",
                                                   end, CrossfadeOf(afterIndex_, after),
                                                   CrossfadeOf(beforeIndex_, before)));
    }

    /// The order in which a track stores its clips.
    template <class Kind>
    void CompareClipOrder(const ClipMatch& match, Kind) {
        const std::map<std::size_t, std::size_t> partners = Partners(Kind::Tracks(match_));
        std::map<std::size_t, std::vector<std::pair<std::size_t, std::size_t>>> byTrack;
        for (const auto& [before, after] : match.same) {
            const auto partner = partners.find(before.track);
            if (partner != partners.end() && partner->second == after.track) {
                byTrack[before.track].emplace_back(before.clip, after.clip);
            }
        }
        for (auto& [track, clips] : byTrack) {
            std::sort(clips.begin(), clips.end());
            const bool isOrdered =
                std::is_sorted(clips.begin(), clips.end(),
                               [](const auto& a, const auto& b) { return a.second < b.second; });
            if (!isOrdered) {
                MembersOf(SubjectOf(Kind::Track(before_, track), Kind::TrackPlace(before_, track),
                                    Kind::TrackPlace(after_, partners.at(track))))
                    .Say(ChangeKind::Moved, ": clips stored in another order");
            }
        }
    }

    const Session& before_;
    const Session& after_;
    const SessionMatch& match_;
    Times beforeTimes_;
    Times afterTimes_;
    SessionIndex beforeIndex_;
    SessionIndex afterIndex_;
    Report report_;
};

}  // namespace

std::vector<Change> FindChanges(const Session& before, const Session& after,
                                const ChangeOptions& options) {
    if (before == after) {
        return {};
    }
    const SessionMatch match = MatchSessions(before, after);
    const Session numbered = NumberedLike(before, match, after);
    return Comparison(numbered, after, match, options).Run();
}

}  // namespace orvo
