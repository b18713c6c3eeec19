#include "tests/plugin/elements/TrackSamples.h"

#include <algorithm>

#include "format/Keywords.h"
#include "platform/kelcore/Strings.h"
#include "plugin/xml/Text.h"

namespace test {
namespace {

using namespace orvo;

constexpr kelcore::uint32 kInstrument = 5;
constexpr kelcore::uint32 kNoSlot = 4294967295;

AutomationLane FullLane() {
    return {true, true, {{0.5F, 5'000'000'000, orvo::KeyframeType::Hold, true}, {-0.25F, -1}}};
}

EffectsSlot FullSlot() {
    EffectsSlot slot;
    slot.slotIndex = 2;
    slot.bypassed = true;
    slot.sideChainChannels = 2;
    slot.busConfig = "{\"buses\": 1}";
    slot.inputChannels = {{0, 1}};
    slot.outputChannels = {{1, -1}};
    slot.component = FullComponent();
    slot.component->powered = true;
    slot.component->presetChunk = {kelcore::byte(0), kelcore::byte(1), kelcore::byte(255)};
    return slot;
}

SendSlot FullSendSlot() {
    return {3, 9, true, 1, FullComponent(), FullComponent()};
}

template <class Thing, class Stored>
void Apply(std::optional<Thing>& thing, Stored stored) {
    if (thing) {
        thing = stored(*thing);
    }
}

template <class Thing>
void DropNulls(std::vector<std::optional<Thing>>& things) {
    std::erase_if(things, [](const std::optional<Thing>& thing) { return !thing.has_value(); });
}

}  // namespace

Component FullComponent() {
    Component component;
    component.guid = "{00112233-4455-6677-8899-AABBCCDDEEFF}";
    component.componentId = "control";
    component.name = "Control";
    component.presetName = "Soft & warm";
    component.powered = false;
    component.editorVisible = true;
    component.editorRect = {-10, 20, 300, 400};
    component.parameters[0] = {0.5F, "Level", true, FullLane()};
    component.parameters[2] = {-0.1F, "", false, std::nullopt};
    return component;
}

AudioTrack FullTrack(kelcore::uint32 kind, kelcore::uint32 id) {
    AudioTrack track;
    track.id = id;
    track.index = 7;
    track.kind = orvo::TrackKind{kind};
    track.name = "Voice";
    track.hue = 212.5;
    track.height = 64;
    track.selected = true;
    track.minimized = true;
    track.visible = false;
    track.automationLaneOpen = true;
    track.phaseInverted = true;
    track.preRendered = true;
    track.preRenderedFile = "/r.wav";
    track.sumToMono = true;
    track.audioChannelType = orvo::ChannelType::Stereo;
    track.solo = true;
    track.recordArmed = true;
    track.monitoring = true;
    track.soloSafe = true;
    track.outputTrackId = 9;
    track.inputId = 3;
    track.automationMode = 2;
    if (kind == kInstrument) {
        track.instrument = {"Keys", true};
    }
    track.fader = FullComponent();
    track.mute = FullComponent();
    track.pan = FullComponent();
    track.eq = FullComponent();
    track.effectsRack = {false, FullComponent(), FullComponent(), FullComponent(), {FullSlot()}};
    track.editParameters = {{0, 1}, {2, 3}};
    track.sendList = {{FullSendSlot()}};
    return track;
}

VideoTrack FullVideoTrack(kelcore::uint32 id) {
    VideoTrack track;
    track.id = id;
    track.index = 4;
    track.name = "Picture";
    track.hue = 30;
    track.height = 48;
    track.selected = true;
    track.minimized = true;
    return track;
}

Component StoredEffect(Component component) {
    component.powered = true;
    if (component.editorRect.width == 0 || component.editorRect.height == 0) {
        component.editorRect = {};
    }
    std::erase_if(component.parameters, [](const auto& entry) { return !entry.second.value; });
    for (auto& [index, parameter] : component.parameters) {
        if (parameter.automation && parameter.automation->keyframes.empty()) {
            parameter.automation.reset();
        }
    }
    return component;
}

Component StoredControl(Component component) {
    const bool powered = component.powered;
    component = StoredEffect(std::move(component));
    component.powered = powered;
    component.presetChunk.clear();
    return component;
}

EffectsRack StoredRack(EffectsRack rack) {
    Apply(rack.mix, StoredControl);
    Apply(rack.input, StoredControl);
    Apply(rack.output, StoredControl);
    DropNulls(rack.slots);
    for (auto& slot : rack.slots) {
        if (!slot->component) {  // nothing is left to wire
            slot->busConfig.clear();
            slot->inputChannels.clear();
            slot->outputChannels.clear();
        }
        Apply(slot->component, StoredEffect);
    }
    return rack;
}

SendList StoredSends(SendList sends) {
    DropNulls(sends.slots);
    for (auto& slot : sends.slots) {
        slot->destCompIndex = std::max(slot->destCompIndex, -1);
        Apply(slot->sendComponent, StoredControl);
        Apply(slot->panComponent, StoredControl);
    }
    return sends;
}

std::string Trimmed(const std::string& text) {
    return kelcore::UTF16to8(tses::TrimWhitespace(kelcore::UTF8to16(text)));
}

AudioTrack StoredTrack(AudioTrack track) {
    if (track.kind < orvo::TrackKind::Audio || track.kind > orvo::TrackKind::Instrument) {
        track.kind = orvo::TrackKind::Audio;
    }
    track.name = Trimmed(track.name);
    const auto channels = static_cast<kelcore::uint32>(track.audioChannelType);
    if (tses::FindKeyword(tses::kChannelLayouts, channels, u"").empty()) {
        track.audioChannelType = orvo::ChannelType::NotSaid;
    }
    if (track.outputTrackId > 0) {
        track.hardwareOutputId = -1;
    } else {
        track.outputTrackId = -1;
    }
    if (track.kind != orvo::TrackKind::Instrument) {
        track.instrument.reset();
    } else if (!track.instrument) {
        track.instrument.emplace();
    }
    Apply(track.fader, StoredControl);
    Apply(track.mute, StoredControl);
    Apply(track.pan, StoredControl);
    Apply(track.eq, StoredControl);
    Apply(track.effectsRack, StoredRack);
    std::erase_if(track.editParameters,
                  [](const EditParameter& each) { return each.slotIndex == kNoSlot; });
    if (track.kind == orvo::TrackKind::Master ||
        (track.sendList && track.sendList->slots.empty())) {
        track.sendList.reset();
    }
    Apply(track.sendList, StoredSends);
    return track;
}

VideoTrack StoredVideoTrack(VideoTrack track) {
    track.index = 0;
    track.name = Trimmed(track.name);
    return track;
}

std::vector<AudioTrack> StoredTracks(const std::vector<AudioTrack>& tracks) {
    std::vector<AudioTrack> stored;
    for (const AudioTrack& track : tracks) {
        if (!track.clipsOnly && track.kind != orvo::TrackKind::Metronome) {
            stored.push_back(StoredTrack(track));
        }
    }
    return stored;
}

}  // namespace test
