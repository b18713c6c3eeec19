#include "toolkit/GeneratedTracks.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

namespace toolkit {
namespace {

using kelcore::byte;
using kelcore::int32;
using kelcore::int64;
using kelcore::uint32;
using orvo::TrackKind;

constexpr int32 kSecond = static_cast<int32>(kGeneratedSampleRate);

struct EffectKind {
    std::string_view id;
    std::string_view name;
    std::vector<std::string_view> parameters;
};

const EffectKind kEffects[] = {
    {"kel.compressor", "Compressor", {"Threshold", "Ratio", "Attack", "Release", "Knee", "Gain"}},
    {"kel.reverb", "Reverb", {"Mix", "Decay", "Pre-delay", "Size", "Damping"}},
    {"kel.delay", "Echo", {"Mix", "Time left", "Time right", "Feedback"}},
    {"kel.parametric",
     "Parametric equaliser",
     {"Low gain", "Low frequency", "Mid gain", "Mid frequency", "Mid width", "High gain",
      "High frequency"}},
    {"kel.limiter", "Limiter", {"Ceiling", "Release"}},
};

const std::string_view kInstruments[] = {"Voice",   "Guitar",    "Drums & bells", "Piano",
                                         "Strings", "Caf\u00e9", "Bass",          "Choir"};

const std::string_view kPresets[] = {"Gentle", "Small hall", "Warm", "", ""};

std::string TrackName(TrackKind kind, uint32 index, Dice& dice) {
    const std::string number = std::to_string(index + 1);
    switch (kind) {
        case TrackKind::Bus:
            return "Bus " + number;
        case TrackKind::Master:
            return "Master";
        default:
            break;
    }
    return std::string(dice.OneOf(kInstruments)) + " " + number;
}

std::vector<byte> MakeBytes(uint32 count, Dice& dice) {
    std::vector<byte> bytes(count);
    for (byte& value : bytes) {
        value = static_cast<byte>(dice.Below(256));
    }
    return bytes;
}

double MakeHue(Dice& dice) {
    return dice.Below(360);
}

orvo::Fade MakeFade(int64 start, int64 end, Dice& dice) {
    return {.startPoint = start,
            .endPoint = end,
            .type = orvo::FadeType{dice.Below(2)},
            .shape = dice.Between(-50, 50),
            .crossFadeLinkType = orvo::CrossFadeLink{dice.Below(2)}};
}

orvo::ClipStretch MakeStretch(Dice& dice) {
    return {.stretchMode = orvo::StretchMode::Realtime,
            .stretchRatio = dice.Thousandths(500, 2000),
            .pitchAdjustment = dice.Thousandths(-1200, 1200)};
}

}  // namespace

// Controls and effects

orvo::Component TrackMaker::MakeControl(std::string_view id, std::string_view name, double value) {
    orvo::Component control = {.componentId = std::string(id), .name = std::string(name)};
    control.parameters[0] = {.value = static_cast<float>(value), .name = std::string(name)};
    return control;
}

orvo::Component TrackMaker::MakeFader() {
    orvo::Component fader = MakeControl("kel.fader", "Level", dice_.Thousandths(-24'000, 6000));
    if (size_.keyframes > 0) {
        fader.parameters[0].automation = MakeLane(-60'000, 6000);
    }
    return fader;
}

/// @param low, high  bounds of the values, in thousandths
orvo::AutomationLane TrackMaker::MakeLane(int32 low, int32 high) {
    orvo::AutomationLane lane = {.enableSplines = dice_.OneIn(4)};
    int64 offset = 0;
    for (uint32 i = 0; i < size_.keyframes; ++i) {
        lane.keyframes.push_back({.value = static_cast<float>(dice_.Thousandths(low, high)),
                                  .sampleOffset = offset,
                                  .type = static_cast<orvo::KeyframeType>(dice_.OneIn(8))});
        offset += dice_.Between(kSecond / 10, 4 * kSecond);
    }
    return lane;
}

orvo::Component TrackMaker::MakeEffect() {
    const EffectKind& kind = dice_.OneOf(kEffects);
    orvo::Component effect = {.componentId = std::string(kind.id),
                              .name = std::string(kind.name),
                              .presetName = std::string(dice_.OneOf(kPresets))};
    uint32 index = 0;
    for (const std::string_view name : kind.parameters) {
        effect.parameters[index++] = {
            .value = static_cast<float>(dice_.Thousandths(-24'000, 24'000)),
            .name = std::string(name)};
    }
    if (dice_.OneIn(2)) {
        effect.presetChunk = MakeBytes(64 + dice_.Below(960), dice_);
    }
    if (size_.keyframes > 0) {
        effect.parameters[0].automation = MakeLane(-24'000, 24'000);
    }
    return effect;
}

orvo::EffectsRack TrackMaker::MakeRack() {
    orvo::EffectsRack rack = {.preFader = !dice_.OneIn(4),
                              .mix = MakeControl("kel.mix", "Mix", 1),
                              .input = MakeControl("kel.gain", "Input", 0),
                              .output = MakeControl("kel.gain", "Output", 0)};
    for (uint32 i = 0; i < size_.slots; ++i) {
        rack.slots.emplace_back(orvo::EffectsSlot{
            .slotIndex = i, .bypassed = dice_.OneIn(6), .component = MakeEffect()});
    }
    return rack;
}

/// One send to a bus, and sometimes a second to another bus.
orvo::SendList TrackMaker::MakeSends() {
    orvo::SendList sends;
    const uint32 count = dice_.OneIn(4) ? 2 : 1;
    for (uint32 i = 0; i < count; ++i) {
        sends.slots.emplace_back(orvo::SendSlot{
            .slotIndex = i,
            .sendOutputId = static_cast<int32>(dice_.OneOf(routing_.busIds)),
            .preFader = dice_.OneIn(3),
            .sendComponent = MakeControl("kel.send", "Level", dice_.Thousandths(-40'000, 0)),
            .panComponent = MakeControl("kel.pan", "Position", 0)});
    }
    return sends;
}

// Clips

orvo::AudioClip TrackMaker::MakeClip(int64& cursor, std::string_view track) {
    orvo::AudioClip clip = {.id = nextClipId_++,
                            .fileId = 1 + dice_.Below(routing_.files),
                            .sourceInPoint = dice_.Between(0, 20 * kSecond),
                            .duration = dice_.Between(kSecond / 2, 30 * kSecond),
                            .startPoint = cursor,
                            .hue = MakeHue(dice_)};
    clip.name = std::string(track) + ", take " + std::to_string(clip.id);
    clip.gain = MakeControl("kel.gain", "Gain", dice_.Thousandths(-12'000, 6000));
    AddOccasionalTraits(clip);
    cursor += clip.duration + dice_.Between(0, 2 * kSecond);
    end_ = std::max(end_, clip.startPoint + clip.duration);
    return clip;
}

void TrackMaker::AddOccasionalTraits(orvo::AudioClip& clip) {
    clip.looped = dice_.OneIn(10);
    clip.lockedInTime = dice_.OneIn(20);
    if (dice_.OneIn(2)) {
        clip.fadeIn = MakeFade(0, dice_.Between(64, kSecond / 4), dice_);
    }
    if (dice_.OneIn(2)) {
        clip.fadeOut =
            MakeFade(clip.duration - dice_.Between(64, kSecond / 4), clip.duration, dice_);
    }
    if (dice_.OneIn(8)) {
        clip.stretch = MakeStretch(dice_);
    }
    if (dice_.OneIn(6)) {
        clip.pan = MakeControl("kel.pan", "Position", dice_.Thousandths(-1000, 1000));
    }
    if (dice_.OneIn(12)) {
        clip.takes = {0, dice_.Between(kSecond, 60 * kSecond)};
    }
    if (dice_.OneIn(12)) {
        clip.properties = "{\"note\": \"a breath at the end\"}";
    }
}

orvo::MidiClip TrackMaker::MakeMidiClip(int64& cursor) {
    orvo::MidiClip clip = {.id = nextClipId_++,
                           .duration = dice_.Between(kSecond, 16 * kSecond),
                           .startPoint = cursor,
                           .hue = MakeHue(dice_)};
    clip.name = "Riff " + std::to_string(clip.id);
    clip.events = MakeBytes(4 * (4 + dice_.Below(60)), dice_);
    cursor += clip.duration;
    end_ = std::max(end_, cursor);
    return clip;
}

orvo::VideoClip TrackMaker::MakeVideoClip(int64& cursor) {
    orvo::VideoClip clip = {.id = nextClipId_++,
                            .fileId = 1 + dice_.Below(routing_.files),
                            .duration = dice_.Between(kSecond, 60 * kSecond),
                            .startPoint = cursor,
                            .hue = MakeHue(dice_)};
    clip.name = "Scene " + std::to_string(clip.id);
    clip.format = {.timeScale = 25, .sampleSize = 1, .width = 1920, .height = 1080};
    cursor += clip.duration;
    end_ = std::max(end_, cursor);
    return clip;
}

// Tracks

orvo::AudioTrack TrackMaker::MakeTrack(uint32 id, uint32 index, TrackKind kind) {
    orvo::AudioTrack track = {.id = id,
                              .index = index,
                              .kind = kind,
                              .name = TrackName(kind, index, dice_),
                              .hue = MakeHue(dice_),
                              .height = dice_.Between(48, 160),
                              .minimized = dice_.OneIn(10),
                              .audioChannelType = orvo::ChannelType{1 + dice_.Below(2)}};
    track.fader = MakeFader();
    track.mute = MakeControl("kel.mute", "Mute", 0);
    track.pan = MakeControl("kel.pan", "Position", dice_.Thousandths(-1000, 1000));
    track.eq = MakeControl("kel.eq", "Low shelf", 0);
    track.effectsRack = MakeRack();
    if (kind == TrackKind::Master) {
        track.audioChannelType = orvo::ChannelType::Stereo;
        track.hardwareOutputId = 1;
        return track;
    }
    track.outputTrackId = static_cast<int32>(routing_.masterId);
    if (kind == TrackKind::Bus) {
        return track;
    }
    track.inputId = dice_.Between(1, 2);
    if (!routing_.busIds.empty()) {
        track.sendList = MakeSends();
    }
    int64 cursor = dice_.Between(0, 10 * kSecond);
    for (uint32 i = 0; i < size_.clips; ++i) {
        if (kind == TrackKind::Instrument) {
            track.midiClips.push_back(MakeMidiClip(cursor));
        } else {
            track.clips.push_back(MakeClip(cursor, track.name));
        }
    }
    if (kind == TrackKind::Instrument) {
        track.instrument = {.midiIn = "Keyboard"};
    }
    return track;
}

orvo::VideoTrack TrackMaker::MakeVideoTrack(uint32 id) {
    orvo::VideoTrack track = {
        .id = id, .name = "Picture", .hue = MakeHue(dice_), .height = dice_.Between(48, 160)};
    int64 cursor = 0;
    for (uint32 i = 0; i < size_.clips; ++i) {
        track.clips.push_back(MakeVideoClip(cursor));
    }
    return track;
}

}  // namespace toolkit
