#include "toolkit/diff/Times.h"

#include <limits>

#include <orvo/Times.h>

namespace orvo::diff {
namespace {

constexpr std::int64_t kLowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kHighest = std::numeric_limits<std::int64_t>::max();

/// Shows h:mm:ss.mmm where a session has nothing better.
std::string TimeOf(const Session& form, std::int64_t position) {
    return FormatTime(position, form.sampleRate).value_or(std::to_string(position));
}

}  // namespace

Times::Times(const Session& session, ChangeTimes form) : times_(form) {
    form_.sampleRate = session.sampleRate;
    form_.timeFormat = session.timeFormat;
    form_.musicalTime = session.musicalTime;
    if (form == ChangeTimes::Bars) {
        form_.timeFormat.format = TimeDisplay::BarsAndBeats;
    } else if (form == ChangeTimes::Samples) {
        form_.timeFormat.format = TimeDisplay::Samples;
    } else if (form == ChangeTimes::Timecode && !FrameRateOf(form_.timeFormat)) {
        form_.timeFormat.format = TimeDisplay::Timecode;
    }
}

std::string Times::Position(std::int64_t position) const {
    if (times_ == ChangeTimes::Seconds) {
        return FormatSeconds(position, form_.sampleRate).value_or(std::to_string(position));
    }
    return FormatPosition(form_, position);
}

std::string Times::Length(std::int64_t length) const {
    const auto shown = [this](std::int64_t time) {
        const bool isMusical =
            times_ != ChangeTimes::Seconds && form_.timeFormat.format == TimeDisplay::BarsAndBeats;
        return isMusical ? TimeOf(form_, time) : Position(time);
    };
    std::string text = shown(length);
    return length != 0 && text == shown(0) ? std::to_string(length) + " samples" : text;
}

std::string Times::Offset(std::int64_t from, std::int64_t to) const {
    return (to < from ? "-" : "+") + Length(DistanceBetween(from, to));
}

std::int64_t DistanceBetween(std::int64_t from, std::int64_t to) {
    std::int64_t distance = 0;
    const bool isTooFar = from < to ? __builtin_sub_overflow(to, from, &distance)
                                    : __builtin_sub_overflow(from, to, &distance);
    return isTooFar ? kHighest : distance;
}

std::int64_t Sum(std::int64_t position, std::int64_t length) {
    std::int64_t sum = 0;
    if (__builtin_add_overflow(position, length, &sum)) {
        return length < 0 ? kLowest : kHighest;
    }
    return sum;
}

}  // namespace orvo::diff
