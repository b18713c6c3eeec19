#include "tests/plugin/StoredSession.h"

#include <algorithm>

#include "platform/kelcore/ClientVersion.h"
#include "platform/kelcore/Strings.h"
#include "plugin/xml/Text.h"

namespace test {
namespace {

using orvo::TrackKind;

// Texts and numbers

/// Element text is trimmed on reading; attributes are not.
void LoseOuterBlanks(std::string& text) {
    text = kelcore::UTF16to8(tses::TrimWhitespace(kelcore::UTF8to16(text)));
}

template <class Value>
bool IsOneOf(const Value& value, std::initializer_list<Value> values) {
    return std::ranges::find(values, value) != values.end();
}

// Effects and automation

void LoseLanesWithoutKeyframes(orvo::Parameter& parameter) {
    if (parameter.automation && parameter.automation->keyframes.empty()) {
        parameter.automation.reset();
    }
}

void LoseParametersWithoutAValue(orvo::Component& component) {
    std::erase_if(component.parameters, [](const auto& entry) { return !entry.second.value; });
}

void LoseAnEditorOfNoSize(orvo::Component& component) {
    if (component.editorRect.width == 0 || component.editorRect.height == 0) {
        component.editorRect = {};
    }
}

void StoreComponent(orvo::Component& component) {
    LoseParametersWithoutAValue(component);
    LoseAnEditorOfNoSize(component);
    for (auto& [index, parameter] : component.parameters) {
        LoseLanesWithoutKeyframes(parameter);
    }
}

/// The state is stored only for the component of an effect.
void StoreControl(std::optional<orvo::Component>& component) {
    if (component) {
        StoreComponent(*component);
        component->presetChunk.clear();
    }
}

/// The slot, not the component, says whether an effect is on.
void StoreEffect(orvo::Component& component) {
    StoreComponent(component);
    component.powered = true;
}

/// The wiring is stored inside the component.
void LoseTheWiringOfAnEmptySlot(orvo::EffectsSlot& slot) {
    if (!slot.component) {
        slot.busConfig.clear();
        slot.inputChannels.clear();
        slot.outputChannels.clear();
    }
}

void LoseABusConfigurationOfBlanks(orvo::EffectsSlot& slot) {
    std::string rest = slot.busConfig;
    LoseOuterBlanks(rest);
    if (rest.empty()) {
        slot.busConfig.clear();
    }
}

template <class Slot>
void LoseWhatIsNoSlot(std::vector<std::optional<Slot>>& slots) {
    std::erase(slots, std::nullopt);
}

void StoreRack(std::optional<orvo::EffectsRack>& rack) {
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

void LoseEditParametersWithoutASlot(std::vector<orvo::EditParameter>& parameters) {
    std::erase_if(parameters,
                  [](const auto& parameter) { return parameter.slotIndex == orvo::kNoId; });
}

// Clips

void StoreFade(std::optional<orvo::Fade>& fade) {
    if (fade) {
        fade->type = std::min(fade->type, orvo::FadeType::Cosine);
        fade->crossFadeLinkType =
            std::min(fade->crossFadeLinkType, orvo::CrossFadeLink::Asymmetric);
    }
}

void StoreStretch(std::optional<orvo::ClipStretch>& stretch) {
    if (stretch) {
        stretch->stretchMode = std::min(stretch->stretchMode, orvo::StretchMode::Rendered);
        stretch->stretchType = std::min(stretch->stretchType, orvo::StretchType::Varispeed);
        stretch->stretchQuality = std::min(stretch->stretchQuality, orvo::StretchQuality::Low);
    }
}

/// The written map has every channel: one that was left out is fed by the channel of its own
/// number.
void FillChannelSources(std::map<kelcore::uint32, kelcore::int32>& sources) {
    const kelcore::uint32 count = sources.empty() ? 0 : sources.rbegin()->first + 1;
    for (kelcore::uint32 channel = 0; channel < count; ++channel) {
        sources.try_emplace(channel, static_cast<kelcore::int32>(channel));
    }
}

void StoreAudioClip(orvo::AudioClip& clip) {
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

void StoreVideoTrack(orvo::VideoTrack& track) {
    track.index = 0;  // never written
    LoseOuterBlanks(track.name);
    for (orvo::VideoClip& clip : track.clips) {
        if (clip.format && clip.format->pixelType == 0) {
            clip.format->pixelType = 1;
        }
    }
}

// Tracks

void StoreRouting(orvo::AudioTrack& track) {
    using enum orvo::ChannelType;
    if (!IsOneOf(track.audioChannelType, {Mono, Stereo, FivePointOne})) {
        track.audioChannelType = NotSaid;
    }
    (track.outputTrackId > 0 ? track.hardwareOutputId : track.outputTrackId) = -1;
}

/// A list without slots is not written; a list of missing slots is written, without them.
void StoreSends(orvo::AudioTrack& track) {
    if (track.kind == TrackKind::Master || (track.sendList && track.sendList->slots.empty())) {
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
void StoreClips(orvo::AudioTrack& track) {
    if (track.kind != TrackKind::Audio) {
        track.clips.clear();
    }
    if (track.kind != TrackKind::Instrument) {
        track.midiClips.clear();
    }
    for (orvo::AudioClip& clip : track.clips) {
        StoreAudioClip(clip);
    }
}

void StoreInstrument(orvo::AudioTrack& track) {
    if (track.kind == TrackKind::Instrument) {
        track.instrument = track.instrument.value_or(orvo::InstrumentTrack{});
    } else {
        track.instrument.reset();
    }
}

void StoreTrack(orvo::AudioTrack& track) {
    using enum TrackKind;
    if (!IsOneOf(track.kind, {Audio, Bus, Master, Metronome, Instrument})) {
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

/// A metronome's track is stored only in the metronome.
void StoreTracks(std::vector<orvo::AudioTrack>& tracks, bool instrumentTracks) {
    std::erase_if(tracks, [&](const orvo::AudioTrack& track) {
        return track.clipsOnly || track.kind == TrackKind::Metronome ||
               (track.kind == TrackKind::Instrument && !instrumentTracks);
    });
    std::ranges::for_each(tracks, StoreTrack);
}

// The rest

void StoreMetronome(orvo::Metronome& metronome, bool instrumentTracks) {
    metronome.soundSet =
        metronome.soundSet > orvo::SoundSet::Tabla ? orvo::SoundSet::Sticks : metronome.soundSet;
    std::erase_if(metronome.pattern,
                  [](orvo::Beat beat) { return beat > orvo::Beat::Subdivision; });
    if (metronome.track &&
        (metronome.track->clipsOnly || metronome.track->kind != TrackKind::Metronome)) {
        metronome.track.reset();
    }
    if (metronome.track) {
        StoreTrack(*metronome.track);
        metronome.track->id = orvo::kNoId;  // reading asks the metronome, not the id, for it
    }
    if (!instrumentTracks) {
        metronome.globalTrackInfo.reset();
    }
}

void StoreTimeFormat(orvo::TimeFormat& format) {
    using enum orvo::TimeDisplay;
    if (!IsOneOf(format.format, {Decimal, Samples, Timecode, Ntsc30, Ntsc30Drop, BarsAndBeats,
                                 Ntsc60, Ntsc60Drop, Ntsc24})) {
        format.format = Decimal;
    }
    if (IsOneOf(format.format, {Decimal, Samples, BarsAndBeats})) {
        return;
    }
    format.format = Timecode;
    if (!format.ntsc) {
        return;
    }
    if (format.frameRate == 24) {
        format.format = Ntsc24;
    } else if (format.frameRate == 60) {
        format.format = format.dropFrame ? Ntsc60Drop : Ntsc60;
    } else {
        format.format = format.dropFrame ? Ntsc30Drop : Ntsc30;
        format.frameRate = 30;
    }
}

/// The file and its reader decide these values.
void StoreVersion(orvo::Session& session) {
    const std::string version = kelcore::GetClientVersion();
    session.formatVersion = {};
    session.formatDescription = "Vantor Tembra " + version + " Multitrack Session";
    session.versionDependentValue =
        version == "4.0" ? session.ctiPosition : session.selection.start;
}

}  // namespace

orvo::Session Stored(orvo::Session session, bool instrumentTracks) {
    StoreVersion(session);
    using enum orvo::ChannelType;
    if (!IsOneOf(session.audioChannelType, {Mono, FivePointOne})) {
        session.audioChannelType = Stereo;
    }
    std::ranges::for_each(session.videoTracks, StoreVideoTrack);
    StoreTracks(session.audioTracks, instrumentTracks);
    StoreMetronome(session.metronome, instrumentTracks);
    for (orvo::ClipGroup& group : session.clipGroups) {
        LoseOuterBlanks(group.name);
    }
    StoreTimeFormat(session.timeFormat);
    for (orvo::Property& property : session.properties) {
        LoseOuterBlanks(property.value);
    }
    LoseOuterBlanks(session.xmpMetadata);
    return session;
}

}  // namespace test
