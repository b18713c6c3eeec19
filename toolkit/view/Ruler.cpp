#include <orvo/Layout.h>
#include <orvo/Times.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string_view>
#include <utility>

namespace orvo {
namespace {

/// Times of a session, without the rest.
Session TimesOf(const Layout& layout) {
    Session session;
    session.sampleRate = layout.sampleRate;
    session.timeFormat = layout.timeFormat;
    session.musicalTime = layout.musicalTime;
    return session;
}

/// A distance between marks, as a fraction of samples.
struct Step {
    double samples = 1;
    unsigned decimals = 0;  ///< of a second, for times
};

/// 1, 2, 5, 10, 20 and so on.
double RoundNumber(std::size_t index) {
    constexpr std::array kLeading = {1.0, 2.0, 5.0};
    const std::size_t zeros = index / kLeading.size();
    return kLeading[index % kLeading.size()] * std::pow(10.0, static_cast<double>(zeros));
}

/// Distances between marks, from the smallest one on.
class Ladder {
public:
    explicit Ladder(const Layout& layout)
        : rate_(layout.sampleRate), frames_(FrameRateOf(layout.timeFormat)) {
        const MusicalTime& music = layout.musicalTime;
        if (layout.sampleRate == 0 || layout.timeFormat.format == TimeDisplay::Samples) {
            form_ = Form::Samples;
        } else if (frames_) {
            form_ = Form::Timecode;
        } else if (layout.timeFormat.format == TimeDisplay::BarsAndBeats &&
                   FormatBarsAndBeats(0, layout.sampleRate, music)) {
            form_ = Form::Bars;
            beat_ = 60.0 / music.beatsPerMinute * rate_;
            beatsPerBar_ = music.beatsPerBar;
        }
    }

    Step At(std::size_t index) const {
        switch (form_) {
            case Form::Samples:
                return {RoundNumber(index)};
            case Form::Time:
                return Times(index);
            case Form::Timecode:
                return Frames(index);
            case Form::Bars:
                return {index == 0 ? beat_ : beat_ * beatsPerBar_ * std::exp2(double(index - 1))};
        }
        return {};
    }

    bool ShowsTime() const { return form_ == Form::Time; }

private:
    enum class Form { Samples, Time, Timecode, Bars };

    static constexpr std::array kSeconds = {1.0,    2.0,    5.0,     10.0,    15.0,    30.0,
                                            60.0,   120.0,  300.0,   600.0,   900.0,   1800.0,
                                            3600.0, 7200.0, 10800.0, 21600.0, 43200.0, 86400.0};

    /// Seconds, minutes and hours, then days.
    static double Seconds(std::size_t index) {
        return index < kSeconds.size() ? kSeconds[index]
                                       : kSeconds.back() * RoundNumber(index - kSeconds.size() + 1);
    }

    Step Times(std::size_t index) const {
        constexpr std::size_t kBelowASecond = 9;  // from a millisecond on
        if (index < kBelowASecond) {
            return {RoundNumber(index) / 1000 * rate_, 3 - static_cast<unsigned>(index / 3)};
        }
        return {Seconds(index - kBelowASecond) * rate_};
    }

    Step Frames(std::size_t index) const {
        const double second = frames_->ntsc ? 1.001 * rate_ : rate_;
        constexpr std::array kFrames = {1.0, 2.0, 5.0, 10.0};
        std::size_t below = 0;
        while (below < kFrames.size() && kFrames[below] < frames_->count) {
            ++below;
        }
        return {index < below ? kFrames[index] * second / frames_->count
                              : Seconds(index - below) * second};
    }

    double rate_;
    std::optional<FrameRate> frames_;
    Form form_ = Form::Time;
    double beat_ = 0;
    double beatsPerBar_ = 0;
};

/// The smallest distance with room for a label.
std::size_t FirstWithRoom(const Ladder& ladder, double room) {
    std::size_t index = 0;
    while (ladder.At(index).samples < room) {
        ++index;
    }
    return index;
}

/// How many small marks divide a distance: those of the smallest distance that leaves room.
int DivisionOf(const Ladder& ladder, std::size_t index, double room) {
    constexpr int kMost = 10;
    constexpr double kRoomOfSmallMark = 0.09;
    const double whole = ladder.At(index).samples;
    for (std::size_t smaller = 0; smaller < index; ++smaller) {
        const double part = ladder.At(smaller).samples;
        const double count = whole / part;
        if (count <= kMost && part >= room * kRoomOfSmallMark &&
            std::abs(count - std::round(count)) < 1e-9) {
            return static_cast<int>(std::round(count));
        }
    }
    return 1;
}

/// "1:05" for "0:01:05".
std::string WithoutHours(std::string time) {
    const std::size_t begin = time.starts_with('-') ? 1 : 0;
    constexpr std::string_view kNoHours = "0:0";
    constexpr std::string_view kTensOfMinutes = "0:";
    const std::string_view rest = std::string_view(time).substr(begin);
    time.erase(begin, rest.starts_with(kNoHours)         ? kNoHours.size()
                      : rest.starts_with(kTensOfMinutes) ? kTensOfMinutes.size()
                                                         : 0);
    return time;
}

std::string LabelOf(const Layout& layout, const Session& times, const Ladder& ladder,
                    const Step& step, std::int64_t position) {
    if (!ladder.ShowsTime()) {
        return FormatPosition(times, position);
    }
    std::string time = FormatTime(position, layout.sampleRate, step.decimals).value_or("");
    const std::int64_t hour = std::int64_t{3600} * layout.sampleRate;
    return layout.from > -hour && layout.to <= hour ? WithoutHours(std::move(time)) : time;
}

}  // namespace

std::string PositionLabel(const Layout& layout, std::int64_t position) {
    return FormatPosition(TimesOf(layout), position);
}

std::vector<RulerTick> RulerTicks(const Layout& layout, std::int64_t room) {
    constexpr double kMostLabels = 400;
    constexpr int kMostMarks = 4010;  // with those between the labels
    const auto from = static_cast<double>(layout.from);
    const auto to = static_cast<double>(layout.to);
    const double needed = std::max(static_cast<double>(room), (to - from) / kMostLabels);
    const Ladder ladder(layout);
    const std::size_t index = FirstWithRoom(ladder, needed);
    const Step step = ladder.At(index);
    const int division = DivisionOf(ladder, index, needed);
    const Session times = TimesOf(layout);
    std::vector<RulerTick> ticks;
    const double mark = step.samples / division;
    const double first = std::ceil(from / mark);
    for (int i = 0; i < kMostMarks && (first + i) * mark < to; ++i) {
        const double number = first + i;
        // A position is the first sample that is not before the mark; one that is nearly there
        // differs only by rounding.
        const auto position = static_cast<std::int64_t>(std::ceil(number * mark - 1e-6));
        // Far from the start, marks are closer than numbers of double precision.
        if (position < layout.from || (!ticks.empty() && position <= ticks.back().position)) {
            continue;
        }
        const bool isLabelled = std::fmod(number, division) == 0;
        ticks.push_back({position, isLabelled ? LabelOf(layout, times, ladder, step, position)
                                              : std::string()});
    }
    return ticks;
}

}  // namespace orvo
