#include "toolkit/interchange/rpp/Rpp.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include <orvo/Lookup.h>
#include "toolkit/FileNames.h"
#include "toolkit/TrackSummary.h"
#include "toolkit/interchange/Carried.h"
#include "toolkit/interchange/ControlRest.h"
#include "toolkit/interchange/HueColour.h"
#include "toolkit/interchange/Lanes.h"
#include "toolkit/interchange/Levels.h"
#include "toolkit/interchange/Markers.h"
#include "toolkit/interchange/MixerPlan.h"
#include "toolkit/interchange/Overlaps.h"
#include "toolkit/interchange/rpp/ItemWriter.h"
#include "toolkit/interchange/rpp/RppText.h"

namespace toolkit::interchange {
namespace {

using orvo::AudioTrack;
using orvo::Fidelity;
using orvo::Session;
using orvo::VideoTrack;

/// A feed of a track, as the track that receives it says it.
struct Receive {
    std::size_t source = 0;
    bool preFader = false;
    double level = 1;
    double pan = 0;
};

class Writer {
public:
    explicit Writer(const Export& job)
        : job_(job),
          plan_(job.session, job.reporter),
          text_(job.outputs.Add(job.target)),
          items_(job, text_) {}

    void Write() {
        const Session& session = job_.session;
        text_.Open("REAPER_PROJECT 0.1 \"7.0\" 0");
        WriteTempo();
        text_.Line("SAMPLERATE {} 1 0", session.sampleRate);
        WriteMarkers();
        WriteMaster();
        CollectReceives();
        // Tracks are counted from 0 without those of video, which follow.
        for (std::size_t i = 0; i < plan_.Tracks().size(); ++i) {
            WriteTrack(plan_.Tracks()[i], receives_[i]);
            Progress(i + 1);
        }
        for (std::size_t i = 0; i < session.videoTracks.size(); ++i) {
            WriteTrack(session.videoTracks[i], ModelPath() / &Session::videoTracks / i);
            Progress(plan_.Tracks().size() + i + 1);
        }
        text_.Close();
    }

private:
    void Progress(std::size_t tracks) const {
        const std::size_t all = plan_.Tracks().size() + job_.session.videoTracks.size();
        job_.Progress(static_cast<double>(tracks) / static_cast<double>(all));
    }

    void WriteTempo() {
        const orvo::MusicalTime& time = job_.session.musicalTime;
        text_.Line("TEMPO {} {} {}", time.beatsPerMinute > 0 ? time.beatsPerMinute : 120.0,
                   time.beatsPerBar > 0 ? time.beatsPerBar : 4,
                   time.noteLength > 0 ? time.noteLength : 4);
    }

    void WriteMarkers() {
        const std::vector<Marker> markers = MarkersOf(job_.session);
        for (std::size_t i = 0; i < markers.size(); ++i) {
            text_.Line("MARKER {} {} {} 0", i + 1, SecondsOf(markers[i].start),
                       QuotedForRpp(markers[i].name));
            if (markers[i].duration != 0 || !markers[i].comment.empty()) {
                job_.reporter.Add(Fidelity::Lost, ModelPath() / &Session::xmpMetadata,
                                  "a marker has neither a length nor a comment", markers[i].name);
            }
        }
    }

    void WriteMaster() {
        const PlannedTrack& master = plan_.Master();
        if (master.track == nullptr) {
            return;
        }
        const ModelPath& place = master.place;
        const double level =
            ToAmplitude(ValueOf(master.track->fader, place / &AudioTrack::fader), Levels());
        const double pan = ValueOf(master.track->pan, place / &AudioTrack::pan);
        text_.Line("MASTER_VOLUME {} {}", level, pan);
        if (ValueOf(master.track->mute, place / &AudioTrack::mute) >= kOnFrom) {
            job_.reporter.Add(Fidelity::Lost, place / &AudioTrack::mute,
                              "the mute of the master has no place");
        }
        plan_.SendsOf(master, job_.reporter);
        ReportLostNameOfMaster(master);
    }

    void ReportLostNameOfMaster(const PlannedTrack& master) {
        const bool hasMore = master.track->solo || master.track->phaseInverted;
        if (hasMore) {
            job_.reporter.Add(Fidelity::Lost, master.place,
                              "the master has neither solo nor inversion");
        }
        if (!master.track->name.empty()) {
            job_.reporter.CountLost("names of masters");
        }
    }

    /// The value of a control whose automation is lost.
    double ValueOf(const std::optional<orvo::Component>& control, const ModelPath& place) {
        ReportRestOf(control, place, job_.reporter);
        ReportLostLane(control, place, job_.reporter);
        return StaticValueOf(control);
    }

    void CollectReceives() {
        receives_.resize(plan_.Tracks().size());
        for (std::size_t i = 0; i < plan_.Tracks().size(); ++i) {
            const PlannedTrack& planned = plan_.Tracks()[i];
            if (const auto output = plan_.OutputOf(*planned.track)) {
                receives_[*output].push_back({.source = i});
            }
            for (const PlannedSend& send : plan_.SendsOf(planned, job_.reporter)) {
                const double level =
                    ValueOf(send.slot->sendComponent, send.place / &orvo::SendSlot::sendComponent);
                const double pan =
                    ValueOf(send.slot->panComponent, send.place / &orvo::SendSlot::panComponent);
                receives_[send.target].push_back({.source = i,
                                                  .preFader = send.slot->preFader,
                                                  .level = ToAmplitude(level, Levels()),
                                                  .pan = pan});
            }
        }
    }

    void WriteTrack(const PlannedTrack& planned, const std::vector<Receive>& receives) {
        const AudioTrack& track = *planned.track;
        const ModelPath& place = planned.place;
        const ParameterLane fader =
            LaneOf(track.fader, 0, place / &AudioTrack::fader, job_.reporter);
        ReportRestOf(track.fader, place / &AudioTrack::fader, job_.reporter);
        if (!fader.points.empty() && fader.value != 0) {
            job_.reporter.CountLost("values under automation");
        }
        text_.Open("TRACK");
        WriteName(track.name, track.hue);
        // An envelope multiplies with the fader.
        text_.Line("VOLPAN {} {} -1",
                   fader.points.empty() ? ToAmplitude(fader.value, Levels()) : 1.0,
                   ValueOf(track.pan, place / &AudioTrack::pan));
        text_.Line("MUTESOLO {:d} {:d} 0",
                   ValueOf(track.mute, place / &AudioTrack::mute) >= kOnFrom, track.solo);
        text_.Line("IPHASE {:d}", track.phaseInverted);
        text_.Line("NCHAN {}", std::max(2U, static_cast<std::uint32_t>(track.audioChannelType)));
        text_.Line("MAINSEND {:d} 0", !plan_.OutputOf(track));
        for (const Receive& receive : receives) {
            text_.Line("AUXRECV {} {} {} {} 0 0 0 0 0 -1:U 0 -1 ''", receive.source,
                       receive.preFader ? 3 : 0, receive.level, receive.pan);
        }
        WriteEnvelope(AmplitudesOf(fader.points, Levels()));
        WriteItems(track, place);
        text_.Close();
    }

    void WriteTrack(const VideoTrack& track, const ModelPath& place) {
        text_.Open("TRACK");
        WriteName(track.name, track.hue);
        for (std::size_t i = 0; i < track.clips.size(); ++i) {
            items_.Write(track.clips[i], track.id, place / &VideoTrack::clips / i);
        }
        text_.Close();
    }

    void WriteName(const std::string& name, double hue) {
        text_.Line("NAME {}", QuotedForRpp(name));
        if (const auto colour = ColourOf(hue)) {
            constexpr std::uint32_t kIsSet = 0x1000000;
            text_.Line("PEAKCOL {}", kIsSet | static_cast<std::uint32_t>(colour->blue) << 16U |
                                         static_cast<std::uint32_t>(colour->green) << 8U |
                                         colour->red);
        }
    }

    void WriteEnvelope(const std::vector<LanePoint>& points) {
        if (points.empty()) {
            return;
        }
        text_.Open("VOLENV2");
        text_.Line("ACT 1 -1");
        for (const LanePoint& point : points) {
            text_.Line("PT {} {} {:d}", SecondsOf(point.offset), point.value, point.holds);
        }
        text_.Close();
    }

    void WriteItems(const AudioTrack& track, const ModelPath& place) {
        for (std::size_t i = 0; i < track.clips.size(); ++i) {
            items_.Write(track.clips[i], track.id, place / &AudioTrack::clips / i);
        }
        for (std::size_t i = 0; i < track.midiClips.size(); ++i) {
            items_.Write(track.midiClips[i], track.id, place / &AudioTrack::midiClips / i);
        }
        if (job_.session.mixingOptions.playOverlappingClips) {
            return;
        }
        for (const Overlap& overlap : OverlapsOf(track.clips)) {
            if (!overlap.isCrossfade) {
                job_.reporter.Add(Fidelity::Approximated,
                                  place / &AudioTrack::clips / overlap.second,
                                  "both of the clips that overlap may be heard",
                                  fmt::format("{} to {}, order {}", overlap.start, overlap.end,
                                              track.clips[overlap.second].zOrder));
            }
        }
    }

    double SecondsOf(std::int64_t samples) const {
        return static_cast<double>(samples) / std::max(job_.session.sampleRate, 1U);
    }

    orvo::LevelUnit Levels() const { return job_.options.conventions.levels; }

    const Export& job_;
    MixerPlan plan_;
    RppText text_;
    ItemWriter items_;
    std::vector<std::vector<Receive>> receives_;
};

Carried CarriedByRpp() {
    using orvo::AudioClip;
    using orvo::ClipGroup;
    using orvo::ClipStretch;
    using orvo::MidiClip;
    using orvo::MusicalTime;
    using orvo::VideoClip;
    Carried carried = CarriedByAll();
    carried.LooksInto(&AudioClip::stretch)
        .LooksInto(&Session::musicalTime, &Session::clipGroups)
        .Handles(&Session::sampleRate)
        .Handles(&MusicalTime::beatsPerMinute)
        .Handles(&MusicalTime::beatsPerBar, &MusicalTime::noteLength)
        .Handles(&AudioTrack::name, &AudioTrack::index, &AudioTrack::hue, &AudioTrack::fader,
                 &AudioTrack::mute, &AudioTrack::pan, &AudioTrack::solo, &AudioTrack::phaseInverted,
                 &AudioTrack::outputTrackId, &AudioTrack::sendList)
        .Handles(&VideoTrack::name, &VideoTrack::hue)
        .Handles(&AudioClip::name, &AudioClip::startPoint, &AudioClip::duration,
                 &AudioClip::sourceInPoint, &AudioClip::fileId, &AudioClip::looped,
                 &AudioClip::fadeIn, &AudioClip::fadeOut, &AudioClip::channelSources,
                 &AudioClip::gain, &AudioClip::mute, &AudioClip::pan, &AudioClip::lockedInTime)
        .Handles(&VideoClip::name, &VideoClip::startPoint, &VideoClip::duration,
                 &VideoClip::sourceInPoint, &VideoClip::fileId, &VideoClip::lockedInTime)
        .Handles(&MidiClip::name, &MidiClip::startPoint, &MidiClip::duration,
                 &MidiClip::lockedInTime)
        .Handles(&orvo::File::path)
        .Handles(&ClipStretch::stretchRatio, &ClipStretch::pitchAdjustment)
        .Handles(&ClipStretch::stretchMode)
        .Handles(&ClipStretch::stretchType)
        .Handles(&ClipGroup::items)
        .Handles(&ClipGroup::id)
        .LacksByNature(&ClipGroup::name, "names of groups")
        .LacksByNature(&ClipGroup::hue, "colours of groups")
        .LacksByNature(&MusicalTime::subdivisions, "subdivisions")
        .LacksByNature(&AudioTrack::kind, "kinds of tracks")
        .LacksByNature(&AudioTrack::audioChannelType, "channels of tracks")
        .LacksByNature(&AudioClip::autoCrossfade, "automatic crossfades")
        .LacksByNature(&AudioClip::crossFadeHeadClipId, "links of crossfades")
        .LacksByNature(&AudioClip::crossFadeTailClipId, "links of crossfades")
        .LacksByNature(&AudioClip::zOrder, "stacking orders")
        .LacksByNature(&VideoClip::zOrder, "stacking orders")
        .LacksByNature(&AudioClip::hue, "colours of clips")
        .LacksByNature(&VideoClip::hue, "colours of clips")
        .LacksByNature(&MidiClip::hue, "colours of clips")
        .LacksByNature(&VideoTrack::index, "orders of tracks")
        .LacksByNature(&Session::bitDepth, "bit depths")
        .LacksByNature(&Session::audioChannelType, "channels of the session")
        .LacksByNature(&Session::mixingOptions, "mixing options")
        .LacksByNature(&Session::xmpMetadata, "metadata but markers");
    return carried;
}

}  // namespace

void WriteRpp(const Export& job) {
    Writer(job).Write();
    ReportWhatIsNotCarried(job.session, CarriedByRpp(), job.reporter);
}

}  // namespace toolkit::interchange
