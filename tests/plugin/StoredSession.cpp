#include "tests/plugin/StoredSession.h"

#include <algorithm>

#include "platform/kelcore/ClientVersion.h"
#include "platform/kelcore/Strings.h"
#include "plugin/xml/Text.h"

namespace test {
namespace {

namespace model = refhost::model;

enum Kind : kelcore::uint32 { Audio = 1, Bus, Master, Metronome, Instrument };

constexpr kelcore::uint32 kNone = 4294967295;

// Texts and numbers

/// Element text is trimmed on reading; attributes are not.
void LoseOuterBlanks(std::u16string& text) {
    text = tses::TrimWhitespace(text);
}

template <class Value>
bool IsOneOf(const Value& value, std::initializer_list<Value> values) {
    return std::ranges::find(values, value) != values.end();
}

// Effects and automation

void LoseLanesWithoutKeyframes(model::Parameter& parameter) {
    if (parameter.automation && parameter.automation->keyframes.empty()) {
        parameter.automation.reset();
    }
}

void LoseParametersWithoutAValue(model::Component& component) {
    std::erase_if(component.parameters, [](const auto& entry) { return !entry.second.value; });
}

void LoseAnEditorOfNoSize(model::Component& component) {
    if (component.editorRect.width == 0 || component.editorRect.height == 0) {
        component.editorRect = {};
    }
}

void StoreComponent(model::Component& component) {
    LoseParametersWithoutAValue(component);
    LoseAnEditorOfNoSize(component);
    for (auto& [index, parameter] : component.parameters) {
        LoseLanesWithoutKeyframes(parameter);
    }
}

/// Only an effect's component has its state stored.
void StoreControl(std::optional<model::Component>& component) {
    if (component) {
        StoreComponent(*component);
        component->presetChunk.clear();
    }
}

/// Whether an effect is on is its slot's to say.
void StoreEffect(model::Component& component) {
    StoreComponent(component);
    component.powered = true;
}

/// The wiring stands inside the component.
void LoseTheWiringOfAnEmptySlot(model::EffectsSlot& slot) {
    if (!slot.component) {
        slot.busConfig.clear();
        slot.inputChannels.clear();
        slot.outputChannels.clear();
    }
}

void LoseABusConfigurationOfBlanks(model::EffectsSlot& slot) {
    if (tses::TrimWhitespace(slot.busConfig).empty()) {
        slot.busConfig.clear();
    }
}

template <class Slot>
void LoseWhatIsNoSlot(std::vector<std::optional<Slot>>& slots) {
    std::erase(slots, std::nullopt);
}

void StoreRack(std::optional<model::EffectsRack>& rack) {
    if (!rack) {
        return;
    }
    StoreControl(rack->mix);
    StoreControl(rack->input);
    StoreControl(rack->output);
    LoseWhatIsNoSlot(rack->slots);
    for (auto& slot : rack->slots) {
        LoseTheWiringOfAnEmptySlot(*slot);
        LoseABusConfigurationOfBlanks(*slot);
        if (slot->component) {
            StoreEffect(*slot->component);
        }
    }
}

void LoseEditParametersWithoutASlot(std::vector<model::EditParameter>& parameters) {
    std::erase_if(parameters, [](const auto& parameter) { return parameter.slotIndex == kNone; });
}

// Clips

void StoreFade(std::optional<model::Fade>& fade) {
    if (fade) {
        fade->type = std::min(fade->type, 1u);
        fade->crossFadeLinkType = std::min(fade->crossFadeLinkType, 1u);
    }
}

void StoreStretch(std::optional<model::ClipStretch>& stretch) {
    if (stretch) {
        stretch->stretchMode = std::min(stretch->stretchMode, 2u);
        stretch->stretchType = std::min(stretch->stretchType, 2u);
        stretch->stretchQuality = std::min(stretch->stretchQuality, 2u);
    }
}

/// The written map is dense: a channel that is left out is fed by that of its own number.
void FillChannelSources(std::map<kelcore::uint32, kelcore::int32>& sources) {
    const kelcore::uint32 count = sources.empty() ? 0 : sources.rbegin()->first + 1;
    for (kelcore::uint32 channel = 0; channel < count; ++channel) {
        sources.try_emplace(channel, static_cast<kelcore::int32>(channel));
    }
}

void StoreAudioClip(model::AudioClip& clip) {
    StoreFade(clip.fadeIn);
    StoreFade(clip.fadeOut);
    StoreStretch(clip.stretch);
    StoreControl(clip.gain);
    StoreControl(clip.mute);
    StoreControl(clip.pan);
    StoreRack(clip.effectsRack);
    LoseEditParametersWithoutASlot(clip.editParameters);
    FillChannelSources(clip.channelSources);
    if (clip.properties && clip.properties->empty()) {
        clip.properties.reset();
    }
}

void StoreVideoTrack(model::VideoTrack& track) {
    track.index = 0;  // is never written
    LoseOuterBlanks(track.name);
    for (model::VideoClip& clip : track.clips) {
        if (clip.format && clip.format->pixelType == 0) {
            clip.format->pixelType = 1;
        }
    }
}

// Tracks

void StoreRouting(model::AudioTrack& track) {
    if (!IsOneOf(track.audioChannelType, {1u, 2u, 6u})) {
        track.audioChannelType = 0;
    }
    (track.outputTrackId > 0 ? track.hardwareOutputId : track.outputTrackId) = -1;
}

/// A list without a slot is not written; one whose slots are not there is, without them.
void StoreSends(model::AudioTrack& track) {
    if (track.kind == Master || (track.sendList && track.sendList->slots.empty())) {
        track.sendList.reset();
    }
    if (!track.sendList) {
        return;
    }
    LoseWhatIsNoSlot(track.sendList->slots);
    for (auto& slot : track.sendList->slots) {
        slot->destCompIndex = std::max(slot->destCompIndex, -1);
        StoreControl(slot->sendComponent);
        StoreControl(slot->panComponent);
    }
}

/// Clips are written for more kinds of tracks than they are read for.
void StoreClips(model::AudioTrack& track) {
    if (track.kind != Audio) {
        track.clips.clear();
    }
    if (track.kind != Instrument) {
        track.midiClips.clear();
    }
    for (model::AudioClip& clip : track.clips) {
        StoreAudioClip(clip);
    }
}

void StoreInstrument(model::AudioTrack& track) {
    if (track.kind == Instrument) {
        track.instrument = track.instrument.value_or(model::InstrumentTrack{});
    } else {
        track.instrument.reset();
    }
}

void StoreTrack(model::AudioTrack& track) {
    if (!IsOneOf<kelcore::uint32>(track.kind, {Audio, Bus, Master, Metronome, Instrument})) {
        track.kind = Audio;
    }
    LoseOuterBlanks(track.name);
    StoreRouting(track);
    StoreControl(track.fader);
    StoreControl(track.mute);
    StoreControl(track.pan);
    StoreControl(track.eq);
    StoreRack(track.effectsRack);
    LoseEditParametersWithoutASlot(track.editParameters);
    StoreInstrument(track);
    StoreSends(track);
    StoreClips(track);
}

/// A metronome's track stands in the metronome alone.
void StoreTracks(std::vector<model::AudioTrack>& tracks, bool instrumentTracks) {
    std::erase_if(tracks, [&](const model::AudioTrack& track) {
        return track.clipsOnly || track.kind == Metronome ||
               (track.kind == Instrument && !instrumentTracks);
    });
    std::ranges::for_each(tracks, StoreTrack);
}

// The rest

void StoreMetronome(model::Metronome& metronome, bool instrumentTracks) {
    metronome.soundSet = metronome.soundSet > 9 ? 8 : metronome.soundSet;
    std::erase_if(metronome.pattern, [](kelcore::uint32 beat) { return beat > 3; });
    if (metronome.track && (metronome.track->clipsOnly || metronome.track->kind != Metronome)) {
        metronome.track.reset();
    }
    if (metronome.track) {
        StoreTrack(*metronome.track);
        metronome.track->id = kNone;  // reading asks the metronome for it, not by the id
    }
    if (!instrumentTracks) {
        metronome.globalTrackInfo.reset();
    }
}

void StoreTimeFormat(model::TimeFormat& format) {
    if (!IsOneOf(format.format, {0, 1, 2, 3, 4, 6, 12, 13, 14})) {
        format.format = 0;
    }
    if (IsOneOf(format.format, {0, 1, 6})) {
        return;
    }
    format.format = 2;
    if (!format.ntsc) {
        return;
    }
    if (format.frameRate == 24) {
        format.format = 14;
    } else if (format.frameRate == 60) {
        format.format = format.dropFrame ? 13 : 12;
    } else {
        format.format = format.dropFrame ? 4 : 3;
        format.frameRate = 30;
    }
}

/// These are told by the file and its reader.
void StoreVersion(model::Session& session) {
    const std::string version = kelcore::GetClientVersion();
    session.formatVersion = {};
    session.formatDescription =
        u"Vantor Tembra " + kelcore::UTF8to16(version) + u" Multitrack Session";
    session.versionDependentValue =
        version == "4.0" ? session.ctiPosition : session.selection.start;
}

}  // namespace

model::Session Stored(model::Session session, bool instrumentTracks) {
    StoreVersion(session);
    if (!IsOneOf(session.channelCount, {1, 6})) {
        session.channelCount = 2;
    }
    std::ranges::for_each(session.videoTracks, StoreVideoTrack);
    StoreTracks(session.audioTracks, instrumentTracks);
    StoreMetronome(session.metronome, instrumentTracks);
    for (model::ClipGroup& group : session.clipGroups) {
        LoseOuterBlanks(group.name);
    }
    StoreTimeFormat(session.timeFormat);
    for (model::Property& property : session.properties) {
        LoseOuterBlanks(property.value);
    }
    LoseOuterBlanks(session.xmpMetadata);
    return session;
}

}  // namespace test
