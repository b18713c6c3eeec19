#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "toolkit/diff/Comparison.h"
#include "toolkit/diff/Names.h"

namespace orvo::diff {
namespace {

std::string InputOf(const Session& session, std::int32_t id) {
    const AudioPort* const port = FindInputPort(session, id);
    return port != nullptr ? "input " + Quoted(port->name)
           : id < 0        ? "nothing"
                           : fmt::format("input {}", id);
}

std::string OutputOf(const Session& session, const SessionIndex& index, const AudioTrack& track) {
    if (track.outputTrackId > 0) {
        return TrackOf(index, track.outputTrackId);
    }
    const AudioPort* const port = FindOutputPort(session, track.hardwareOutputId);
    return port != nullptr              ? "output " + Quoted(port->name)
           : track.hardwareOutputId < 0 ? "nowhere"
                                        : fmt::format("output {}", track.hardwareOutputId);
}

/// Says the numbers where both have the same name.
void SayRoute(const Members& members, const std::string& what, const std::string& before,
              const std::string& after, std::int32_t beforeId, std::int32_t afterId) {
    const bool isTold = before != after;
    members.Say(ChangeKind::Routing,
                fmt::format(": {} from {} to {}", what,
                            isTold ? before : fmt::format("{} ({})", before, beforeId),
                            isTold ? after : fmt::format("{} ({})", after, afterId)));
}

void CompareOutputs(const Comparison& sessions, const Members& members, const AudioTrack& before,
                    const AudioTrack& after) {
    const std::string one = OutputOf(sessions.before, sessions.beforeIndex, before);
    const std::string other = OutputOf(sessions.after, sessions.afterIndex, after);
    const bool isElsewhere = one != other && (before.outputTrackId != after.outputTrackId ||
                                              before.hardwareOutputId != after.hardwareOutputId);
    if (isElsewhere) {
        SayRoute(members, "output", one, other, 0, 0);
        return;
    }
    if (before.outputTrackId != after.outputTrackId) {
        SayRoute(members, "output track", one, other, before.outputTrackId, after.outputTrackId);
    }
    if (before.hardwareOutputId != after.hardwareOutputId) {
        SayRoute(members, "hardware output", one, other, before.hardwareOutputId,
                 after.hardwareOutputId);
    }
}

void CompareSend(const Comparison& sessions, const Members& members, const SendSlot& before,
                 const SendSlot& after, bool slotTells) {
    const std::string target = TrackOf(sessions.beforeIndex, before.sendOutputId);
    if (before.sendOutputId != after.sendOutputId) {
        SayRoute(members, fmt::format("send {}", before.slotIndex), target,
                 TrackOf(sessions.afterIndex, after.sendOutputId), before.sendOutputId,
                 after.sendOutputId);
    }
    const std::string label = "send to " + target;
    if (slotTells && before.slotIndex != after.slotIndex) {
        members.FromTo(label + " slot", std::to_string(before.slotIndex),
                       std::to_string(after.slotIndex));
    }
    members.Rest(label, before, after, &SendSlot::sendOutputId, &SendSlot::slotIndex);
}

void CompareSends(const Comparison& sessions, const Members& members,
                  const std::optional<SendList>& before, const std::optional<SendList>& after) {
    const SendList none;
    const SendList& ones = before ? *before : none;
    const SendList& others = after ? *after : none;
    const ListMatch match = MatchSends(ones, others);
    if (before.has_value() != after.has_value() && match.removed.empty() && match.added.empty()) {
        members.Say(ChangeKind::Routing, before ? ": send list removed" : ": send list added");
    }
    for (const std::size_t i : match.removed) {
        members.Say(
            ChangeKind::Routing,
            ": send to " + TrackOf(sessions.beforeIndex, ones.slots[i]->sendOutputId) + " removed");
    }
    for (const std::size_t i : match.added) {
        members.Say(
            ChangeKind::Routing,
            ": send to " + TrackOf(sessions.afterIndex, others.slots[i]->sendOutputId) + " added");
    }
    const bool isAllThere = match.removed.empty() && match.added.empty();
    for (const auto& [i, j] : match.same) {
        CompareSend(sessions, members, *ones.slots[i], *others.slots[j], isAllThere);
    }
    if (!KeepsAll(match)) {
        members.Say(ChangeKind::Moved, ": sends in another order");
    }
}

}  // namespace

void CompareRouting(const Comparison& sessions, const Members& members, const AudioTrack& before,
                    const AudioTrack& after) {
    CompareOutputs(sessions, members, before, after);
    if (before.inputId != after.inputId) {
        SayRoute(members, "input", InputOf(sessions.before, before.inputId),
                 InputOf(sessions.after, after.inputId), before.inputId, after.inputId);
    }
    CompareSends(sessions, members, before.sendList, after.sendList);
}

}  // namespace orvo::diff
