#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "session/MemberKey.h"
#include "toolkit/diff/Comparison.h"
#include "toolkit/diff/Names.h"

namespace orvo::diff {
namespace {

/// Says what came and went, and calls `compare` for each pair that differs.
template <class Thing, class SubjectOf, class Compare>
void CompareList(Comparison& sessions, const ListMatch& match, const std::vector<Thing>& before,
                 const std::vector<Thing>& after, const SubjectOf& subjectOf,
                 const Compare& compare) {
    for (const std::size_t i : match.removed) {
        Subject subject = subjectOf(before[i], i);
        subject.after.reset();
        sessions.report.Say(subject, {ChangeKind::Removed, " removed", {}, {}});
    }
    for (const std::size_t i : match.added) {
        Subject subject = subjectOf(after[i], i);
        subject.before.reset();
        sessions.report.Say(subject, {ChangeKind::Added, " added", {}, {}});
    }
    for (const auto& [i, j] : match.same) {
        if (!IsSame(before[i], after[j])) {
            Subject subject = subjectOf(before[i], i);
            subject.after = subjectOf(after[j], j).after;
            compare(sessions.MembersOf(subject), before[i], after[j]);
        }
    }
}

void CompareItems(const Members& members, const std::vector<ClipGroupItem>& before,
                  const std::vector<ClipGroupItem>& after) {
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::ptrdiff_t> surplus;  // in `before`
    const auto surplusOf = [&surplus](const ClipGroupItem& item) -> std::ptrdiff_t& {
        return surplus[{item.trackId, item.clipId}];
    };
    for (const ClipGroupItem& item : before) {
        ++surplusOf(item);
    }
    for (const ClipGroupItem& item : after) {
        --surplusOf(item);
    }
    const auto left = std::count_if(before.begin(), before.end(),
                                    [&](const ClipGroupItem& item) { return surplusOf(item) > 0; });
    const auto joined = std::count_if(
        after.begin(), after.end(), [&](const ClipGroupItem& item) { return surplusOf(item) < 0; });
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

void CompareGroups(Comparison& sessions) {
    CompareList(
        sessions, sessions.match.clipGroups, sessions.before.clipGroups, sessions.after.clipGroups,
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
    CompareOrder(sessions, sessions.match.clipGroups, "clip groups");
}

void ComparePresets(Comparison& sessions) {
    CompareList(
        sessions, sessions.match.visibilityPresets, sessions.before.trackVisibilityPresets,
        sessions.after.trackVisibilityPresets,
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
    CompareOrder(sessions, sessions.match.visibilityPresets, "visibility presets");
}

void ComparePorts(Comparison& sessions, const ListMatch& match,
                  std::vector<AudioPort> AudioDevice::*ports, const char* noun) {
    CompareList(
        sessions, match, sessions.before.audioDevice.*ports, sessions.after.audioDevice.*ports,
        [&](const AudioPort& port, std::size_t i) {
            const std::string place =
                fmt::format("/{}/{}/{}", KeyOf(&Session::audioDevice), KeyOf(ports), i);
            return Subject{ChangedThing::Port, noun, Quoted(port.name), "", place, place};
        },
        [](const Members& members, const AudioPort& before, const AudioPort& after) {
            Rename(members, before.name, after.name);
            members.Rest("", before, after, &AudioPort::name);
        });
    CompareOrder(sessions, match, fmt::format("{} ports", noun).c_str());
}

}  // namespace

bool KeepsAll(const ListMatch& match) {
    return std::is_sorted(match.same.begin(), match.same.end(),
                          [](const auto& a, const auto& b) { return a.second < b.second; });
}

void CompareOrder(Comparison& sessions, const ListMatch& match, const char* what) {
    if (!KeepsAll(match)) {
        sessions.MembersOf(SessionSubject())
            .Say(ChangeKind::Moved, fmt::format(": {} in another order", what));
    }
}

void CompareFiles(Comparison& sessions) {
    CompareList(
        sessions, sessions.match.files, sessions.before.files, sessions.after.files,
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
    CompareOrder(sessions, sessions.match.files, "files");
}

void CompareLists(Comparison& sessions) {
    CompareGroups(sessions);
    ComparePresets(sessions);
    ComparePorts(sessions, sessions.match.inputPorts, &AudioDevice::inputPorts, "input");
    ComparePorts(sessions, sessions.match.outputPorts, &AudioDevice::outputPorts, "output");
}

}  // namespace orvo::diff
