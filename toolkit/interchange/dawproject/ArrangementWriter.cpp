#include "toolkit/interchange/dawproject/ArrangementWriter.h"

#include <cmath>

#include "toolkit/TrackSummary.h"
#include "toolkit/interchange/Markers.h"
#include "toolkit/interchange/dawproject/ClipWriter.h"

namespace toolkit::interchange::dawproject {
namespace {

using orvo::Fidelity;

class ArrangementWriter {
public:
    ArrangementWriter(const Writing& writing, Plan& plan, MediaPlan& media)
        : writing_(writing), plan_(plan), clips_(writing, media) {}

    void Write() {
        xml_.Open("Arrangement").Attribute("id", "arrangement");
        xml_.Open("Lanes").Attribute("id", "lanes").Attribute("timeUnit", kSeconds);
        for (PlannedTrack& track : plan_.Tracks()) {
            WriteTrack(track);
        }
        xml_.Close();
        WriteMarkers();
        xml_.Close();
    }

private:
    void WriteTrack(PlannedTrack& track) {
        const bool hasClips = track.video != nullptr
                                  ? !track.video->clips.empty()
                                  : !track.audio->clips.empty() || !track.audio->midiClips.empty();
        if (!hasClips && track.lanes.empty()) {
            return;
        }
        xml_.Open("Lanes").Attribute("id", track.id + "lanes").Attribute("track", track.id);
        if (hasClips) {
            xml_.Open("Clips").Attribute("id", track.id + "clips");
            clips_.Write(track);
            xml_.Close();
        }
        for (std::size_t i = 0; i < track.lanes.size(); ++i) {
            WriteLane(track, track.lanes[i], i);
        }
        xml_.Close();
        track.lanes = {};
    }

    void WriteLane(const PlannedTrack& track, const TrackLane& lane, std::size_t number) {
        xml_.Open("Points").Attribute("id", track.id + "points" + std::to_string(number));
        if (!lane.isSwitch) {
            xml_.Attribute("unit", lane.unit);
        }
        xml_.Open("Target").Attribute("parameter", lane.parameter);
        xml_.Close();
        if (lane.isSwitch) {
            WriteSwitches(lane.points, track.place);
        } else {
            WritePoints(writing_, lane.points, 0);
        }
        xml_.Close();
    }

    void WriteSwitches(const std::vector<LanePoint>& points, const ModelPath& place) {
        bool isSlanted = false;
        for (std::size_t i = 0; i < points.size(); ++i) {
            const bool isLast = i + 1 == points.size();
            isSlanted |= !isLast && !points[i].holds && points[i].value != points[i + 1].value;
            xml_.Open("BoolPoint")
                .Attribute("time", writing_.Seconds(points[i].offset))
                .Attribute("value", points[i].value >= kOnFrom);
            xml_.Close();
        }
        if (isSlanted) {
            writing_.job.reporter.Add(Fidelity::Approximated, place / &orvo::AudioTrack::mute,
                                      "the lane switches only at its points");
        }
    }

    void WriteMarkers() {
        const std::vector<Marker> markers = MarkersOf(writing_.job.session);
        if (markers.empty()) {
            return;
        }
        xml_.Open("Markers").Attribute("id", "markers").Attribute("timeUnit", kSeconds);
        for (const Marker& marker : markers) {
            writing_.job.reporter.CountLost("lengths of markers", marker.duration != 0 ? 1 : 0);
            xml_.Open("Marker").Attribute("time", writing_.Seconds(marker.start));
            WriteName(xml_, marker.name);
            if (!marker.comment.empty()) {
                xml_.Attribute("comment", marker.comment);
            }
            xml_.Close();
        }
        xml_.Close();
    }

    const Writing& writing_;
    XmlWriter& xml_ = writing_.xml;
    Plan& plan_;
    ClipWriter clips_;
};

}  // namespace

void WriteArrangement(const Writing& writing, Plan& plan, MediaPlan& media) {
    ArrangementWriter(writing, plan, media).Write();
}

}  // namespace toolkit::interchange::dawproject
