#include <fmt/format.h>

#include <cstdint>
#include <string>

#include "toolkit/diff/ClipChanges.h"

namespace orvo::diff {
namespace {

void SayTrim(const Comparison& sessions, const Members& members, const char* end, bool isLonger,
             std::int64_t distance, const ClipRange& other) {
    members.Say(ChangeKind::Trimmed,
                fmt::format(" {} by {} at its {}", isLonger ? "extended" : "trimmed",
                            sessions.afterTimes.Length(distance), end),
                fmt::format(", now {} long", sessions.afterTimes.Length(other.duration)));
}

void CompareLength(const Comparison& sessions, const Members& members, const ClipRange& one,
                   const ClipRange& other) {
    SayTrim(sessions, members, TrimsStart(one, other) ? "start" : "end",
            other.duration > one.duration, DistanceBetween(one.duration, other.duration), other);
}

void SayMove(Comparison& sessions, const Subject& subject, const ClipRange& one,
             const ClipRange& other, const std::string& newTrack) {
    const bool isShifted = one.startPoint != other.startPoint;
    Event event{ChangeKind::Moved, " moved", {}, {}};
    if (isShifted) {
        event.predicate += " by " + sessions.afterTimes.Offset(one.startPoint, other.startPoint);
        event.detail = fmt::format(", from {} to {}", sessions.beforeTimes.Position(one.startPoint),
                                   sessions.afterTimes.Position(other.startPoint));
        event.from = one.startPoint;
    }
    if (!newTrack.empty()) {
        event.predicate += " to " + newTrack;
    }
    sessions.report.Say(subject, event);
}

}  // namespace

void ComparePosition(Comparison& sessions, const Subject& subject, const ClipRange& one,
                     const ClipRange& other, const std::string& newTrack, bool isSplit) {
    const Members members = sessions.MembersOf(subject);
    const bool isTrimmed = !isSplit && one.duration != other.duration;
    const bool staysAligned = IsAligned(one, other);
    const bool isShifted = one.startPoint != other.startPoint;
    const bool isTrimmedAtStart = staysAligned && isShifted && isTrimmed;
    if (!newTrack.empty() || (isShifted && !isTrimmedAtStart && !isSplit)) {
        SayMove(sessions, subject, one, other, newTrack);
    }
    if (isTrimmedAtStart) {
        SayTrim(sessions, members, "start", one.startPoint > other.startPoint,
                DistanceBetween(one.startPoint, other.startPoint), other);
        if (EndOf(one) != EndOf(other)) {
            SayTrim(sessions, members, "end", EndOf(other) > EndOf(one),
                    DistanceBetween(EndOf(one), EndOf(other)), other);
        }
        return;
    }
    if (isTrimmed) {
        CompareLength(sessions, members, one, other);
    }
    if (!isSplit && one.sourceInPoint != other.sourceInPoint &&
        !(isTrimmed && TrimsStart(one, other))) {
        members.Say(ChangeKind::Trimmed,
                    ": media slipped by " +
                        sessions.afterTimes.Offset(one.sourceInPoint, other.sourceInPoint));
    }
}

}  // namespace orvo::diff
