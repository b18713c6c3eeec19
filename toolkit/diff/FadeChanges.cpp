#include <fmt/format.h>

#include <cstdint>
#include <optional>
#include <string>

#include "toolkit/diff/ClipChanges.h"

namespace orvo::diff {
namespace {

std::int64_t LengthOf(const Fade& fade) {
    return DistanceBetween(fade.startPoint, fade.endPoint);
}

void CompareFade(const Comparison& sessions, const Members& members, const char* label,
                 const std::optional<Fade>& before, const std::optional<Fade>& after) {
    if (before.has_value() != after.has_value()) {
        members.Say(ChangeKind::Faded, fmt::format(": {} {}", label, after ? "added" : "removed"),
                    after ? ", " + sessions.afterTimes.Length(LengthOf(*after)) + " long" : "");
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
                                sessions.afterTimes.Length(DistanceBetween(one, other))),
                    fmt::format(", from {} to {}", sessions.beforeTimes.Length(one),
                                sessions.afterTimes.Length(other)));
    } else if (before->startPoint != after->startPoint) {
        members.Say(ChangeKind::Faded,
                    fmt::format(": {} moved by {}", label,
                                sessions.afterTimes.Offset(before->startPoint, after->startPoint)));
    } else if (before->endPoint != after->endPoint) {
        members.FromTo(fmt::format("{} end point", label), std::to_string(before->endPoint),
                       std::to_string(after->endPoint));
    }
    members.Rest(label, *before, *after, &Fade::startPoint, &Fade::endPoint);
}

std::string CrossfadeOf(const SessionIndex& index, std::int32_t id) {
    const auto found = index.FindAudioClip(static_cast<std::uint32_t>(id));
    return found    ? "clip " + NameOf(*found.clip, index)
           : id < 0 ? "nothing"
                    : fmt::format("the missing clip {}", id);
}

void CompareCrossfade(const Comparison& sessions, const Members& members, const char* end,
                      std::int32_t before, std::int32_t after) {
    if (before == after) {
        return;
    }
    members.Say(ChangeKind::Faded, fmt::format(": crossfades at its {} with {} instead of {}", end,
                                               CrossfadeOf(sessions.afterIndex, after),
                                               CrossfadeOf(sessions.beforeIndex, before)));
}

}  // namespace

void CompareFades(const Comparison& sessions, const Members& members, const AudioClip& before,
                  const AudioClip& after) {
    CompareFade(sessions, members, "fade in", before.fadeIn, after.fadeIn);
    CompareFade(sessions, members, "fade out", before.fadeOut, after.fadeOut);
    CompareCrossfade(sessions, members, "start", before.crossFadeHeadClipId,
                     after.crossFadeHeadClipId);
    CompareCrossfade(sessions, members, "end", before.crossFadeTailClipId,
                     after.crossFadeTailClipId);
}

}  // namespace orvo::diff
