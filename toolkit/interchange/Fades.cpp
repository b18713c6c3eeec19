#include "toolkit/interchange/Fades.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "toolkit/Saturating.h"

namespace toolkit::interchange {
namespace {

using orvo::ClipOrigin;

std::int64_t PositionOf(ClipOrigin origin, const orvo::AudioClip& clip) {
    switch (origin) {
        case ClipOrigin::ClipStart:
            return 0;
        case ClipOrigin::Source:
            return clip.sourceInPoint;
        case ClipOrigin::Timeline:
            return clip.startPoint;
    }
    return 0;
}

/// Whether the fade touches its edge of the clip if its points count from there.
bool Fits(const orvo::Fade& fade, bool isIn, std::int64_t origin, std::int64_t duration) {
    return isIn ? fade.startPoint == origin : fade.endPoint == SaturatingSum(origin, duration);
}

void CheckOrigin(const orvo::Fade& fade, bool isIn, const orvo::AudioClip& clip,
                 ClipOrigin expected, Reporter& reporter) {
    if (Fits(fade, isIn, PositionOf(expected, clip), clip.duration)) {
        return;
    }
    for (const ClipOrigin other :
         {ClipOrigin::ClipStart, ClipOrigin::Source, ClipOrigin::Timeline}) {
        if (other != expected && Fits(fade, isIn, PositionOf(other, clip), clip.duration)) {
            reporter.Warn("the points of fades count from another place than expected",
                          "choose another origin of fades");
            return;
        }
    }
    reporter.Warn("the points of fades do not lie at the edges of their clips",
                  "only the lengths of fades are used");
}

std::int64_t LengthOf(const std::optional<orvo::Fade>& fade, bool isIn, const orvo::AudioClip& clip,
                      const orvo::Conventions& conventions, const ModelPath& place,
                      Reporter& reporter) {
    if (!fade) {
        return 0;
    }
    const std::int64_t length = SaturatingDifference(fade->endPoint, fade->startPoint);
    const std::int64_t fitting =
        std::clamp<std::int64_t>(length, 0, std::max<std::int64_t>(clip.duration, 0));
    if (fitting != length) {
        reporter.Add(orvo::Fidelity::Approximated, place, "the fade does not fit into its clip",
                     fmt::format("{} samples", length));
    } else if (length > 0) {
        CheckOrigin(*fade, isIn, clip, conventions.fadePoints, reporter);
    }
    if (fade->shape != 0) {
        reporter.Add(orvo::Fidelity::Lost, place / &orvo::Fade::shape,
                     "the meaning of the shape is the application's own",
                     fmt::format("{}", fade->shape));
    }
    return fitting;
}

}  // namespace

FadeLengths FadesOf(const orvo::AudioClip& clip, const orvo::Conventions& conventions,
                    const ModelPath& place, Reporter& reporter) {
    return {.in = LengthOf(clip.fadeIn, true, clip, conventions, place / &orvo::AudioClip::fadeIn,
                           reporter),
            .out = LengthOf(clip.fadeOut, false, clip, conventions,
                            place / &orvo::AudioClip::fadeOut, reporter)};
}

orvo::Fade MakeFadeIn(std::int64_t length) {
    return {.startPoint = 0, .endPoint = length};
}

orvo::Fade MakeFadeOut(std::int64_t length, std::int64_t clipDuration) {
    return {.startPoint = clipDuration - length, .endPoint = clipDuration};
}

}  // namespace toolkit::interchange
