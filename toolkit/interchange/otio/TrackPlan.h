#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include <orvo/Model.h>
#include "toolkit/ModelPath.h"
#include "toolkit/interchange/Format.h"
#include "toolkit/interchange/otio/LanePlan.h"
#include "toolkit/interchange/otio/Rate.h"

namespace toolkit::interchange::otio {

/// The units of time of a file that is written: samples, or frames.
struct Units {
    Rate samples;
    Rate counts;

    bool AreSamples() const { return samples == counts; }
    std::int64_t Of(std::int64_t sampleCount) const {
        return AreSamples() ? sampleCount
                            : Rounded(samples.To(counts, static_cast<long double>(sampleCount)));
    }
};

using ClipPointer =
    std::variant<const orvo::AudioClip*, const orvo::MidiClip*, const orvo::VideoClip*>;

/// A clip in the file's units.
struct PlannedClip {
    ClipPointer clip{};
    std::size_t number = 0;  ///< in its list
    std::int64_t sourceIn = 0;
    double scalar = 1;  ///< of what is played, by the time on the timeline
    std::int64_t fadeIn = 0;
    std::int64_t fadeOut = 0;
    bool isEnabled = true;
};

/// The clips of a track and where they stand.
struct TrackPlan {
    ModelPath place{};
    std::vector<PlannedClip> clips{};  ///< audio before MIDI, as the session lists them
    std::vector<Span> spans{};         ///< of the clips
    std::vector<Lane> lanes{};
    bool isInOrder = true;  ///< a reading finds the clips in their order without being told

    /// What cannot be placed: where it is not zero or more, or beyond what files count.
    std::vector<orvo::AudioClip> audioClips{};
    std::vector<orvo::MidiClip> midiClips{};
    std::vector<orvo::VideoClip> videoClips{};

    ModelPath PlaceOf(const PlannedClip& clip) const;
};

/// Plans a track and reports what changes.
TrackPlan PlanOf(const orvo::AudioTrack& track, const ModelPath& place, const Units& units,
                 const Export& job);
TrackPlan PlanOf(const orvo::VideoTrack& track, const ModelPath& place, const Units& units,
                 const Export& job);

/// Whether a control for muting is on.
bool IsMuted(const std::optional<orvo::Component>& mute);

}  // namespace toolkit::interchange::otio
