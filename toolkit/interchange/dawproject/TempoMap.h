#pragma once

#include <cstddef>
#include <vector>

namespace toolkit::interchange::dawproject {

/// A change of the tempo.
struct TempoPoint {
    double beat = 0;
    double bpm = 120;
    bool ramps = false;  ///< evenly, by beats, to the next point; else it holds until there
};

/// Where beats lie in time.
class TempoMap {
public:
    /// @param bpm     if there are no points; the first one also counts before itself
    /// @param points  in any order; nothing changes before beat 0
    explicit TempoMap(double bpm, std::vector<TempoPoint> points = {});

    double SecondsOf(double beat) const;
    double BpmAt(double beat) const;
    double BeatOf(double seconds) const;

    /// Whether the tempo stays the same between two beats.
    bool IsEvenBetween(double beat, double end) const;

private:
    struct Segment {
        double beat = 0;
        double seconds = 0;
        double bpm = 120;
        double slope = 0;  // change of bpm for each beat
    };

    template <class Member>
    const Segment& At(double position, Member member) const;

    std::vector<Segment> segments_;  // never empty; the first one also reaches back
};

}  // namespace toolkit::interchange::dawproject
