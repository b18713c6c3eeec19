#include "toolkit/TrackSummary.h"

#include <algorithm>
#include <sstream>

#include <orvo/Lookup.h>

namespace toolkit {
namespace {

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

using Feed = orvo::Feed<const orvo::Session>;

std::string PortName(const orvo::AudioPort* port, kelcore::int32 id) {
    return port != nullptr ? NameOr(port->name, Numbered("port ", id)) : Numbered("port ", id);
}

/// A target that does not exist or has no name goes by its number.
std::string TargetName(const orvo::Session& session, const Feed& feed) {
    switch (feed.targetKind) {
        case orvo::FeedTarget::Nowhere:
            return {};
        case orvo::FeedTarget::Track:
            return feed.target != nullptr
                       ? NameOr(feed.target->name, Numbered("track ", feed.targetId))
                       : Numbered("missing track ", feed.targetId);
        case orvo::FeedTarget::Port:
            return PortName(orvo::FindOutputPort(session, feed.targetId), feed.targetId);
    }
    return {};
}

std::string InputName(const orvo::Session& session, kelcore::int32 id) {
    return id >= 0 ? PortName(orvo::FindInputPort(session, id), id) : std::string();
}

void SummariseFeeds(const orvo::Session& session, const std::vector<Feed>& feeds,
                    TrackSummary& summary) {
    for (const Feed& feed : feeds) {
        const std::string target = TargetName(session, feed);
        if (feed.send == nullptr) {
            summary.output = target;
            continue;
        }
        SendSummary& send = summary.sends.emplace_back();
        send.destination = target;
        send.component = feed.component;
        send.preFader = feed.send->preFader;
        send.automation += Count(feed.send->sendComponent);
        send.automation += Count(feed.send->panComponent);
    }
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

/// The kind that a session file stores: audio for a kind without a name.
orvo::TrackKind StoredKind(orvo::TrackKind kind) {
    switch (kind) {
        case orvo::TrackKind::Bus:
        case orvo::TrackKind::Master:
        case orvo::TrackKind::Metronome:
        case orvo::TrackKind::Instrument:
            return kind;
        default:
            return orvo::TrackKind::Audio;
    }
}

TrackSummary Summarise(const orvo::Session& session, const orvo::SessionIndex& index,
                       const orvo::AudioTrack& track) {
    TrackSummary summary;
    summary.kind = StoredKind(track.kind);
    summary.id = track.id;
    summary.name = track.name;
    summary.audioChannelType = track.audioChannelType;
    SummariseFeeds(session, index.FeedsOf(track), summary);
    summary.input = InputName(session, track.inputId);
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
    summary.effects = toolkit::SummariseEffects(track.effectsRack);
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

std::string KindName(const std::optional<orvo::TrackKind>& kind) {
    if (!kind) {
        return "video";
    }
    std::ostringstream word;
    word << *kind;
    return word.str();
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

std::vector<TrackSummary> SummariseTracks(const orvo::Session& session) {
    std::vector<TrackSummary> summaries;
    const orvo::SessionIndex index(session);
    for (const orvo::VideoTrack* const track : orvo::VideoTracksInOrder(session)) {
        summaries.push_back(Summarise(*track));
    }
    for (const orvo::AudioTrack* const track : orvo::AudioTracksInOrder(session)) {
        summaries.push_back(Summarise(session, index, *track));
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
