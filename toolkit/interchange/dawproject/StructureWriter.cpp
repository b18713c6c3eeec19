#include "toolkit/interchange/dawproject/StructureWriter.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "toolkit/TrackSummary.h"
#include "toolkit/interchange/Levels.h"
#include "toolkit/interchange/dawproject/Controls.h"
#include "toolkit/interchange/dawproject/DeviceWriter.h"

namespace toolkit::interchange::dawproject {
namespace {

using orvo::AudioTrack;
using orvo::Fidelity;
using orvo::SendSlot;
using orvo::TrackKind;

constexpr double kUsualMaximum = 2;

class StructureWriter {
public:
    StructureWriter(const Writing& writing, Plan& plan) : writing_(writing), plan_(plan) {}

    States Write() {
        xml_.Open("Structure");
        for (PlannedTrack& track : plan_.Tracks()) {
            WriteTrack(track);
        }
        xml_.Close();
        return std::move(states_);
    }

private:
    void WriteTrack(PlannedTrack& track) {
        xml_.Open("Track").Attribute("id", track.id);
        if (track.video != nullptr) {
            WriteName(xml_, track.video->name);
            WriteColour(writing_, track.video->hue);
            xml_.Attribute("contentType", "video").Attribute("loaded", true);
        } else {
            WriteName(xml_, track.audio->name);
            WriteColour(writing_, track.audio->hue);
            const bool isInstrument = track.audio->kind == TrackKind::Instrument;
            xml_.Attribute("contentType", isInstrument ? "notes" : "audio")
                .Attribute("loaded", true);
            WriteChannel(track);
        }
        xml_.Close();
    }

    void WriteChannel(PlannedTrack& track) {
        const AudioTrack& audio = *track.audio;
        xml_.Open("Channel").Attribute("id", track.ChannelId()).Attribute("role", RoleOf(track));
        WriteChannelCount(track);
        if (const PlannedTrack* const destination = DestinationOf(track)) {
            xml_.Attribute("destination", destination->ChannelId());
        }
        if (audio.solo) {
            xml_.Attribute("solo", true);
        }
        WriteDevices(writing_, track, states_);
        WriteMute(track, audio.mute);
        WritePan(track, track.id + "pan", audio.pan, track.place / &AudioTrack::pan);
        WriteSends(track);
        WriteLevel(track, "Volume", track.id + "vol", audio.fader,
                   track.place / &AudioTrack::fader);
        xml_.Close();
    }

    const char* RoleOf(const PlannedTrack& track) {
        switch (track.audio->kind) {
            case TrackKind::Audio:
            case TrackKind::Instrument:
                return "regular";
            case TrackKind::Bus:
                return plan_.IsFedBySendsOnly(track) ? "effect" : "submix";
            case TrackKind::Master:
                return "master";
            default:
                Report(Fidelity::Lost, track.place / &AudioTrack::kind,
                       "the track became an audio track",
                       fmt::format("{}", static_cast<std::uint32_t>(track.audio->kind)));
                return "regular";
        }
    }

    void WriteChannelCount(const PlannedTrack& track) {
        const auto count = static_cast<std::uint32_t>(track.audio->audioChannelType);
        if (count > static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max())) {
            Report(Fidelity::Lost, track.place / &AudioTrack::audioChannelType,
                   "it is no number of channels", fmt::format("{}", count));
        } else if (count > 0) {
            xml_.Attribute("audioChannels", count);
        }
    }

    const PlannedTrack* DestinationOf(const PlannedTrack& track) {
        const PlannedTrack* const destination = plan_.DestinationOf(track);
        const std::int32_t meant = track.audio->outputTrackId;
        const ModelPath place = track.place / &AudioTrack::outputTrackId;
        const bool isFollowed = meant > 0 && plan_.Find(meant) == destination;
        if (meant > 0 && (destination == nullptr || !isFollowed)) {
            Report(Fidelity::Lost, place, "the output leads to no track", fmt::format("{}", meant));
        } else if (meant <= 0 && destination != nullptr) {
            Report(Fidelity::Approximated, place,
                   "a track that feeds no track feeds the master instead");
        }
        return destination;
    }

    // Controls

    void WriteMute(PlannedTrack& track, const std::optional<orvo::Component>& mute) {
        const ModelPath place = track.place / &AudioTrack::mute;
        ReportControl(mute, place, reporter_);
        ParameterLane lane = LaneOf(mute, 0, place, reporter_);
        ReportSwitch(lane, place, reporter_);
        const std::string id = track.id + "mute";
        xml_.Open("Mute").Attribute("id", id).Attribute("value", lane.value >= kOnFrom);
        xml_.Close();
        AddLane(track, {.parameter = id, .isSwitch = true, .points = std::move(lane.points)});
    }

    void WritePan(PlannedTrack& track, std::string id, const std::optional<orvo::Component>& pan,
                  const ModelPath& place) {
        ReportControl(pan, place, reporter_);
        ParameterLane lane = LaneOf(pan, 0, place, reporter_);
        WriteReal("Pan", id, kNormalized, ToNormalizedPan(lane.value), 1.0);
        for (LanePoint& point : lane.points) {
            point.value = ToNormalizedPan(point.value);
        }
        AddLane(
            track,
            {.parameter = std::move(id), .unit = kNormalized, .points = std::move(lane.points)});
    }

    void WriteLevel(PlannedTrack& track, const char* element, std::string id,
                    const std::optional<orvo::Component>& level, const ModelPath& place) {
        const orvo::LevelUnit unit = writing_.job.options.conventions.levels;
        const double unchanged = unit == orvo::LevelUnit::Decibels ? 0 : 1;
        ReportControl(level, place, reporter_);
        ParameterLane lane = LaneOf(level, unchanged, place, reporter_);
        const double amplitude = ToAmplitude(lane.value, unit);
        lane.points = AmplitudesOf(std::move(lane.points), unit);
        double highest = amplitude;
        for (const LanePoint& point : lane.points) {
            highest = std::max(highest, point.value);
        }
        WriteReal(element, id, kLinear, amplitude,
                  highest <= kUsualMaximum ? std::optional(kUsualMaximum) : std::nullopt);
        AddLane(track,
                {.parameter = std::move(id), .unit = kLinear, .points = std::move(lane.points)});
    }

    void WriteReal(const char* element, const std::string& id, std::string_view unit, double value,
                   std::optional<double> maximum) {
        xml_.Open(element).Attribute("id", id).Attribute("unit", unit);
        if (!std::isnan(value)) {
            xml_.Attribute("value", NumberText(value));
        }
        xml_.Attribute("min", NumberText(0));
        if (maximum) {
            xml_.Attribute("max", NumberText(*maximum));
        }
        xml_.Close();
    }

    static void AddLane(PlannedTrack& track, TrackLane lane) {
        if (!lane.points.empty()) {
            track.lanes.push_back(std::move(lane));
        }
    }

    // Sends

    void WriteSends(PlannedTrack& track) {
        if (!track.audio->sendList) {
            return;
        }
        const auto& slots = track.audio->sendList->slots;
        const ModelPath list = track.place / &AudioTrack::sendList / &orvo::SendList::slots;
        xml_.Open("Sends");
        std::uint32_t written = 0;
        for (std::size_t i = 0; i < slots.size(); ++i) {
            if (slots[i] && WriteSend(track, *slots[i], list / i, written)) {
                ++written;
            }
        }
        xml_.Close();
    }

    /// @param number  how many sends were written before
    bool WriteSend(PlannedTrack& track, const SendSlot& send, const ModelPath& place,
                   std::uint32_t number) {
        const PlannedTrack* const destination = plan_.Find(send.sendOutputId);
        if (destination == nullptr) {
            Report(Fidelity::Lost, place, "the send leads to no track",
                   fmt::format("{}", send.sendOutputId));
            return false;
        }
        if (send.destCompIndex != orvo::kNone) {
            Report(Fidelity::Lost, place / &SendSlot::destCompIndex,
                   "a send feeds a track, not an effect of it",
                   fmt::format("{}", send.destCompIndex));
        }
        reporter_.CountLost("empty slots", send.slotIndex > number ? 1 : 0);
        const std::string id = fmt::format("{}s{}", track.id, number);
        xml_.Open("Send")
            .Attribute("id", id)
            .Attribute("destination", destination->ChannelId())
            .Attribute("type", send.preFader ? "pre" : "post");
        xml_.Open("Enable").Attribute("id", id + "on").Attribute("value", true);
        xml_.Close();
        WritePan(track, id + "pan", send.panComponent, place / &SendSlot::panComponent);
        WriteLevel(track, "Volume", id + "vol", send.sendComponent,
                   place / &SendSlot::sendComponent);
        xml_.Close();
        return true;
    }

    void Report(Fidelity fidelity, const ModelPath& place, std::string_view what,
                std::string_view value = {}) {
        reporter_.Add(fidelity, place, what, value);
    }

    const Writing& writing_;
    XmlWriter& xml_ = writing_.xml;
    Reporter& reporter_ = writing_.job.reporter;
    Plan& plan_;
    States states_;
};

}  // namespace

States WriteStructure(const Writing& writing, Plan& plan) {
    return StructureWriter(writing, plan).Write();
}

}  // namespace toolkit::interchange::dawproject
