#pragma once

#include <string_view>

#include "toolkit/interchange/dawproject/Leaf.h"
#include "toolkit/interchange/dawproject/TempoMap.h"

namespace toolkit::interchange::dawproject {

enum class TimeUnit { Beats, Seconds };

/// The unit that an attribute says.
TimeUnit TimeUnitOf(const pugi::xml_node& element, const char* attribute, TimeUnit absent);

/// How the times of an element lie on the timeline.
class TimeFrame {
public:
    TimeFrame(const TempoMap& tempo, TimeUnit unit) : tempo_(&tempo), unit_(unit), root_(unit) {}

    TimeUnit Unit() const { return unit_; }

    /// How many seconds of media last as long as one unit at this time.
    double SecondsAUnit(double time) const;

    /// Where a time lies on the timeline, in seconds.
    double AbsoluteSeconds(double time) const;

    /// Whether the tempo is even over a window.
    bool IsEvenOver(const Window& window) const;

    /// The frame of what lies in this one: its time `inner` is at `outer` here, and its units are
    /// `scale` of the units here.
    TimeFrame Inside(double outer, double inner, double scale, TimeUnit unit) const;

    /// The same times in another unit.
    /// @param window  of this frame; becomes that of the result
    TimeFrame In(TimeUnit unit, Window& window) const;

private:
    double Root(double time) const { return scale_ * time + offset_; }
    double BeatAt(double time) const;

    const TempoMap* tempo_;
    TimeUnit unit_;
    TimeUnit root_;  // of the timeline that all lies in
    double scale_ = 1;
    double offset_ = 0;
    bool isNested_ = false;
};

}  // namespace toolkit::interchange::dawproject
