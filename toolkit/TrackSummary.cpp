#include "toolkit/TrackSummary.h"

#include <algorithm>

#include "platform/kelcore/Strings.h"

namespace toolkit {
namespace {

constexpr float kOnFrom = 0.5F;

AutomationCount Count(const orvo::Component& component) {
    AutomationCount count;
    for (const auto& [index, parameter] : component.parameters) {
        const bool stored = parameter.value && parameter.automation;
        if (stored && !parameter.automation->keyframes.empty()) {
            count += {1, parameter.automation->keyframes.size()};
        }
    }
    return count;
}

AutomationCount Count(const std::optional<orvo::Component>& component) {
    return component ? Count(*component) : AutomationCount();
}

AutomationCount Count(const std::optional<orvo::EffectsRack>& rack) {
    AutomationCount count;
    if (!rack) {
        return count;
    }
    count += Count(rack->mix);
    count += Count(rack->input);
    count += Count(rack->output);
    for (const auto& slot : rack->slots) {
        if (slot) {
            count += Count(slot->component);
        }
    }
    return count;
}

std::string Numbered(const char* what, kelcore::int32 id) {
    return what + std::to_string(id);
}

std::string NameOr(const std::string& name, const std::string& otherwise) {
    return name.empty() ? otherwise : name;
}

/// The name of the track with the id. A track that does not exist or has no name goes by its
/// number.
std::string TrackName(const orvo::Session& session, kelcore::int32 id) {
    const auto track = std::find_if(
        session.audioTracks.begin(), session.audioTracks.end(),
        [id](const orvo::AudioTrack& each) { return each.id == static_cast<kelcore::uint32>(id); });
    return track != session.audioTracks.end() ? NameOr(track->name, Numbered("track ", id))
                                              : Numbered("missing track ", id);
}

std::string PortName(const std::vector<orvo::AudioPort>& ports, kelcore::int32 id) {
    const auto port = std::find_if(ports.begin(), ports.end(),
                                   [id](const orvo::AudioPort& each) { return each.id == id; });
    return port != ports.end() ? NameOr(port->name, Numbered("port ", id)) : Numbered("port ", id);
}

/// As sessions are saved: an id above 0 is a track, anything else goes to the hardware.
std::string OutputName(const orvo::Session& session, const orvo::AudioTrack& track) {
    if (track.outputTrackId > 0) {
        return TrackName(session, track.outputTrackId);
    }
    return track.hardwareOutputId >= 0
               ? PortName(session.audioDevice.outputPorts, track.hardwareOutputId)
               : std::string();
}

SendSummary Summarise(const orvo::Session& session, const orvo::SendSlot& slot) {
    SendSummary summary;
    summary.destination =
        slot.sendOutputId >= 0 ? TrackName(session, slot.sendOutputId) : std::string();
    if (slot.destCompIndex >= 0) {
        summary.component = slot.destCompIndex;
    }
    summary.preFader = slot.preFader;
    summary.automation += Count(slot.sendComponent);
    summary.automation += Count(slot.panComponent);
    return summary;
}

std::vector<SendSummary> SummariseSends(const orvo::Session& session,
                                        const std::optional<orvo::SendList>& list) {
    std::vector<SendSummary> summaries;
    if (list) {
        for (const auto& slot : list->slots) {
            if (slot) {
                summaries.push_back(Summarise(session, *slot));
            }
        }
    }
    return summaries;
}

EffectSummary Summarise(const orvo::EffectsSlot& slot) {
    EffectSummary summary;
    summary.slotIndex = slot.slotIndex;
    summary.bypassed = slot.bypassed;
    summary.sideChainChannels = slot.sideChainChannels;
    if (slot.component) {
        summary.name = NameOr(slot.component->name, slot.component->componentId);
        summary.preset = slot.component->presetName;
        summary.parameters = slot.component->parameters.size();
        summary.presetBytes = slot.component->presetChunk.size();
        summary.automation = Count(*slot.component);
    }
    return summary;
}

std::vector<EffectSummary> SummariseEffects(const std::optional<orvo::EffectsRack>& rack) {
    std::vector<EffectSummary> summaries;
    if (rack) {
        for (const auto& slot : rack->slots) {
            if (slot) {
                summaries.push_back(Summarise(*slot));
            }
        }
    }
    return summaries;
}

AutomationCount CountTrack(const TrackSummary& summary, const orvo::AudioTrack& track) {
    AutomationCount count;
    count += Count(track.fader);
    count += Count(track.mute);
    count += Count(track.pan);
    count += Count(track.eq);
    count += Count(track.effectsRack);
    for (const SendSummary& send : summary.sends) {
        count += send.automation;
    }
    for (const orvo::AudioClip& clip : track.clips) {
        count += CountAutomation(clip);
    }
    return count;
}

std::string MidiInputName(const std::optional<orvo::InstrumentTrack>& instrument) {
    if (!instrument) {
        return {};
    }
    return instrument->midiAll ? "all MIDI inputs" : instrument->midiIn;
}

TrackFamily FamilyOf(orvo::TrackKind kind) {
    switch (kind) {
        case orvo::TrackKind::Bus:
            return TrackFamily::Bus;
        case orvo::TrackKind::Master:
            return TrackFamily::Master;
        case orvo::TrackKind::Metronome:
            return TrackFamily::Metronome;
        case orvo::TrackKind::Instrument:
            return TrackFamily::Instrument;
        default:
            return TrackFamily::Audio;
    }
}

TrackSummary Summarise(const orvo::Session& session, const orvo::AudioTrack& track) {
    TrackSummary summary;
    summary.family = FamilyOf(track.kind);
    summary.id = track.id;
    summary.name = track.name;
    summary.channelCount = static_cast<kelcore::uint32>(track.audioChannelType);
    summary.output = OutputName(session, track);
    summary.input = track.inputId >= 0 ? PortName(session.audioDevice.inputPorts, track.inputId)
                                       : std::string();
    summary.midiInput = MidiInputName(track.instrument);
    summary.solo = track.solo;
    summary.soloSafe = track.soloSafe;
    summary.recordArmed = track.recordArmed;
    summary.monitoring = track.monitoring;
    summary.phaseInverted = track.phaseInverted;
    summary.sumToMono = track.sumToMono;
    summary.preRendered = track.preRendered;
    summary.muted = IsSwitchedOn(track.mute);
    summary.visible = track.visible;
    summary.sends = SummariseSends(session, track.sendList);
    summary.effects = SummariseEffects(track.effectsRack);
    summary.clips = track.clips.size() + track.midiClips.size();
    summary.automation = CountTrack(summary, track);
    return summary;
}

std::vector<orvo::VideoFormat> PicturesOf(const orvo::VideoTrack& track) {
    std::vector<orvo::VideoFormat> pictures;
    for (const orvo::VideoClip& clip : track.clips) {
        if (clip.format &&
            std::find(pictures.begin(), pictures.end(), *clip.format) == pictures.end()) {
            pictures.push_back(*clip.format);
        }
    }
    return pictures;
}

TrackSummary Summarise(const orvo::VideoTrack& track) {
    TrackSummary summary;
    summary.family = TrackFamily::Video;
    summary.id = track.id;
    summary.name = track.name;
    summary.clips = track.clips.size();
    summary.pictures = PicturesOf(track);
    return summary;
}

}  // namespace

AutomationCount& AutomationCount::operator+=(const AutomationCount& other) {
    lanes += other.lanes;
    keyframes += other.keyframes;
    return *this;
}

const char* FamilyName(TrackFamily family) {
    switch (family) {
        case TrackFamily::Video:
            return "video";
        case TrackFamily::Audio:
            return "audio";
        case TrackFamily::Bus:
            return "bus";
        case TrackFamily::Master:
            return "master";
        case TrackFamily::Metronome:
            return "metronome";
        case TrackFamily::Instrument:
            return "instrument";
    }
    return "";
}

std::vector<TrackSummary> SummariseTracks(const orvo::Session& session) {
    std::vector<TrackSummary> summaries;
    for (const orvo::VideoTrack& track : session.videoTracks) {
        summaries.push_back(Summarise(track));
    }
    for (const orvo::AudioTrack& track : session.audioTracks) {
        summaries.push_back(Summarise(session, track));
    }
    if (session.metronome.track) {
        summaries.push_back(Summarise(session, *session.metronome.track));
    }
    return summaries;
}

bool IsSwitchedOn(const std::optional<orvo::Component>& component) {
    if (!component || component->parameters.empty()) {
        return false;
    }
    const auto& value = component->parameters.begin()->second.value;
    return value && *value >= kOnFrom;
}

AutomationCount CountAutomation(const orvo::AudioClip& clip) {
    AutomationCount count;
    count += Count(clip.gain);
    count += Count(clip.mute);
    count += Count(clip.pan);
    count += Count(clip.effectsRack);
    return count;
}

}  // namespace toolkit
