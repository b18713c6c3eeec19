#pragma once

#include <cstddef>
#include <map>
#include <vector>

#include "toolkit/interchange/dawproject/Elements.h"
#include "toolkit/interchange/dawproject/MediaPlan.h"
#include "toolkit/interchange/dawproject/Plan.h"

namespace toolkit::interchange::dawproject {

/// Writes points of real values. A value that is no number is left out.
/// @param start  what is added to their times, in seconds
void WritePoints(const Writing& writing, const std::vector<LanePoint>& points, double start);

/// Writes the elements "Clip".
class ClipWriter {
public:
    ClipWriter(const Writing& writing, MediaPlan& media) : writing_(writing), media_(media) {}

    /// Writes the clips of a track.
    void Write(const PlannedTrack& track);

private:
    /// How an audio clip plays its media. Times are in seconds and stretched.
    struct Play {
        const WrittenMedia& media;
        double stretch = 1;
        double fileSeconds = 0;  ///< not stretched
        double start = 0;
        bool loops = false;
    };

    void WriteAudioClip(const orvo::AudioClip& clip, const ModelPath& place);
    void WriteVideoClip(const orvo::VideoClip& clip, const ModelPath& place);
    void WriteMidiClip(const orvo::MidiClip& clip, const ModelPath& place);

    template <class Clip>
    void OpenClip(const Clip& clip, double playStart);
    template <class Clip>
    bool HasLength(const Clip& clip, const ModelPath& place);

    Play PlayOf(const orvo::AudioClip& clip, const ModelPath& place);
    void WriteFades(const orvo::AudioClip& clip, const ModelPath& place);
    void WriteContent(const Play& play, const ParameterLane& gain, const ParameterLane& pan);
    void WriteMedia(const Play& play);
    void WriteEnvelope(const char* expression, std::string_view unit, const ParameterLane& lane,
                       double start);
    void WriteFile(const WrittenMedia& media);

    ParameterLane GainOf(const orvo::AudioClip& clip, const ModelPath& place);
    ParameterLane PanOf(const orvo::AudioClip& clip, const ModelPath& place);
    void ReportHidden(const ParameterLane& lane, const ModelPath& place);
    bool IsMuted(const orvo::AudioClip& clip, const ModelPath& place);
    void ReportStretch(const orvo::AudioClip& clip, double stretch, const ModelPath& place);
    void ReportOverlaps(const std::vector<orvo::AudioClip>& clips, const ModelPath& place);

    std::string NextId();
    void Report(orvo::Fidelity fidelity, const ModelPath& place, std::string_view what,
                std::string_view value = {});

    const Writing& writing_;
    XmlWriter& xml_ = writing_.xml;
    MediaPlan& media_;
    std::size_t count_ = 0;  // of the timelines in clips so far
};

}  // namespace toolkit::interchange::dawproject
