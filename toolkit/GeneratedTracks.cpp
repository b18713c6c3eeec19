#include "toolkit/GeneratedTracks.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

namespace toolkit {
namespace {

namespace model = refhost::model;
using kelcore::byte;
using kelcore::int32;
using kelcore::int64;
using kelcore::uint32;

constexpr int32 kSecond = static_cast<int32>(kGeneratedSampleRate);
constexpr uint32 kStereo = 2;

struct EffectKind {
    std::u16string_view id;
    std::u16string_view name;
    std::vector<std::u16string_view> parameters;
};

const EffectKind kEffects[] = {
    {u"kel.compressor",
     u"Compressor",
     {u"Threshold", u"Ratio", u"Attack", u"Release", u"Knee", u"Gain"}},
    {u"kel.reverb", u"Reverb", {u"Mix", u"Decay", u"Pre-delay", u"Size", u"Damping"}},
    {u"kel.delay", u"Echo", {u"Mix", u"Time left", u"Time right", u"Feedback"}},
    {u"kel.parametric",
     u"Parametric equaliser",
     {u"Low gain", u"Low frequency", u"Mid gain", u"Mid frequency", u"Mid width", u"High gain",
      u"High frequency"}},
    {u"kel.limiter", u"Limiter", {u"Ceiling", u"Release"}},
};

const std::u16string_view kInstruments[] = {u"Voice",   u"Guitar",    u"Drums & bells", u"Piano",
                                            u"Strings", u"Caf\u00e9", u"Bass",          u"Choir"};

const std::u16string_view kPresets[] = {u"Gentle", u"Small hall", u"Warm", u"", u""};

std::u16string TrackName(TrackKind kind, uint32 index, Dice& dice) {
    const std::u16string number = Decimal(index + 1);
    switch (kind) {
        case TrackKind::Bus:
            return u"Bus " + number;
        case TrackKind::Master:
            return u"Master";
        case TrackKind::Audio:
        case TrackKind::Instrument:
            break;
    }
    return std::u16string(dice.OneOf(kInstruments)) + u" " + number;
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

model::Fade MakeFade(int64 start, int64 end, Dice& dice) {
    return {.startPoint = start,
            .endPoint = end,
            .type = dice.Below(2),
            .shape = dice.Between(-50, 50),
            .crossFadeLinkType = dice.Below(2)};
}

model::ClipStretch MakeStretch(Dice& dice) {
    return {.stretchMode = 1,
            .stretchRatio = dice.Thousandths(500, 2000),
            .pitchAdjustment = dice.Thousandths(-1200, 1200)};
}

}  // namespace

// Controls and effects

model::Component TrackMaker::MakeControl(std::u16string_view id, std::u16string_view name,
                                         double value) {
    model::Component control = {.componentId = std::u16string(id), .name = std::u16string(name)};
    control.parameters[0] = {.value = static_cast<float>(value), .name = std::u16string(name)};
    return control;
}

model::Component TrackMaker::MakeFader() {
    model::Component fader = MakeControl(u"kel.fader", u"Level", dice_.Thousandths(-24'000, 6000));
    if (size_.keyframes > 0) {
        fader.parameters[0].automation = MakeLane(-60'000, 6000);
    }
    return fader;
}

/// @param low, high  bounds of the values, in thousandths
model::AutomationLane TrackMaker::MakeLane(int32 low, int32 high) {
    model::AutomationLane lane = {.enableSplines = dice_.OneIn(4)};
    int64 offset = 0;
    for (uint32 i = 0; i < size_.keyframes; ++i) {
        lane.keyframes.push_back({.value = static_cast<float>(dice_.Thousandths(low, high)),
                                  .sampleOffset = offset,
                                  .hold = dice_.OneIn(8)});
        offset += dice_.Between(kSecond / 10, 4 * kSecond);
    }
    return lane;
}

model::Component TrackMaker::MakeEffect() {
    const EffectKind& kind = dice_.OneOf(kEffects);
    model::Component effect = {.componentId = std::u16string(kind.id),
                               .name = std::u16string(kind.name),
                               .presetName = std::u16string(dice_.OneOf(kPresets))};
    uint32 index = 0;
    for (const std::u16string_view name : kind.parameters) {
        effect.parameters[index++] = {
            .value = static_cast<float>(dice_.Thousandths(-24'000, 24'000)),
            .name = std::u16string(name)};
    }
    if (dice_.OneIn(2)) {
        effect.presetChunk = MakeBytes(64 + dice_.Below(960), dice_);
    }
    if (size_.keyframes > 0) {
        effect.parameters[0].automation = MakeLane(-24'000, 24'000);
    }
    return effect;
}

model::EffectsRack TrackMaker::MakeRack() {
    model::EffectsRack rack = {.preFader = !dice_.OneIn(4),
                               .mix = MakeControl(u"kel.mix", u"Mix", 1),
                               .input = MakeControl(u"kel.gain", u"Input", 0),
                               .output = MakeControl(u"kel.gain", u"Output", 0)};
    for (uint32 i = 0; i < size_.slots; ++i) {
        rack.slots.push_back(model::EffectsSlot{
            .slotIndex = i, .bypassed = dice_.OneIn(6), .component = MakeEffect()});
    }
    return rack;
}

/// One to a bus, and now and then one to another bus.
model::SendList TrackMaker::MakeSends() {
    model::SendList sends;
    const uint32 count = dice_.OneIn(4) ? 2 : 1;
    for (uint32 i = 0; i < count; ++i) {
        sends.slots.push_back(model::SendSlot{
            .slotIndex = i,
            .sendOutputId = static_cast<int32>(dice_.OneOf(routing_.busIds)),
            .preFader = dice_.OneIn(3),
            .sendComponent = MakeControl(u"kel.send", u"Level", dice_.Thousandths(-40'000, 0)),
            .panComponent = MakeControl(u"kel.pan", u"Position", 0)});
    }
    return sends;
}

// Clips

model::AudioClip TrackMaker::MakeClip(int64& cursor, std::u16string_view track) {
    model::AudioClip clip = {.id = nextClipId_++,
                             .fileId = 1 + dice_.Below(routing_.files),
                             .sourceInPoint = dice_.Between(0, 20 * kSecond),
                             .duration = dice_.Between(kSecond / 2, 30 * kSecond),
                             .startPoint = cursor,
                             .hue = MakeHue(dice_)};
    clip.name = std::u16string(track) + u", take " + Decimal(clip.id);
    clip.gain = MakeControl(u"kel.gain", u"Gain", dice_.Thousandths(-12'000, 6000));
    AddOccasionalTraits(clip);
    cursor += clip.duration + dice_.Between(0, 2 * kSecond);
    end_ = std::max(end_, clip.startPoint + clip.duration);
    return clip;
}

void TrackMaker::AddOccasionalTraits(model::AudioClip& clip) {
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
        clip.pan = MakeControl(u"kel.pan", u"Position", dice_.Thousandths(-1000, 1000));
    }
    if (dice_.OneIn(12)) {
        clip.takes = {0, dice_.Between(kSecond, 60 * kSecond)};
    }
    if (dice_.OneIn(12)) {
        clip.properties = u"{\"note\": \"a breath at the end\"}";
    }
}

model::MidiClip TrackMaker::MakeMidiClip(int64& cursor) {
    model::MidiClip clip = {.id = nextClipId_++,
                            .duration = dice_.Between(kSecond, 16 * kSecond),
                            .startPoint = cursor,
                            .hue = MakeHue(dice_)};
    clip.name = u"Riff " + Decimal(clip.id);
    clip.events = MakeBytes(4 * (4 + dice_.Below(60)), dice_);
    cursor += clip.duration;
    end_ = std::max(end_, cursor);
    return clip;
}

model::VideoClip TrackMaker::MakeVideoClip(int64& cursor) {
    model::VideoClip clip = {.id = nextClipId_++,
                             .fileId = 1 + dice_.Below(routing_.files),
                             .duration = dice_.Between(kSecond, 60 * kSecond),
                             .startPoint = cursor,
                             .hue = MakeHue(dice_)};
    clip.name = u"Scene " + Decimal(clip.id);
    clip.format = {.timeScale = 25, .sampleSize = 1, .width = 1920, .height = 1080};
    cursor += clip.duration;
    end_ = std::max(end_, cursor);
    return clip;
}

// Tracks

model::AudioTrack TrackMaker::MakeTrack(uint32 id, uint32 index, TrackKind kind) {
    model::AudioTrack track = {.id = id,
                               .index = index,
                               .kind = static_cast<uint32>(kind),
                               .name = TrackName(kind, index, dice_),
                               .hue = MakeHue(dice_),
                               .height = dice_.Between(48, 160),
                               .minimized = dice_.OneIn(10),
                               .audioChannelType = 1 + dice_.Below(2)};
    track.fader = MakeFader();
    track.mute = MakeControl(u"kel.mute", u"Mute", 0);
    track.pan = MakeControl(u"kel.pan", u"Position", dice_.Thousandths(-1000, 1000));
    track.eq = MakeControl(u"kel.eq", u"Low shelf", 0);
    track.effectsRack = MakeRack();
    if (kind == TrackKind::Master) {
        track.audioChannelType = kStereo;
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
        track.instrument = {.midiIn = u"Keyboard"};
    }
    return track;
}

model::VideoTrack TrackMaker::MakeVideoTrack(uint32 id) {
    model::VideoTrack track = {
        .id = id, .name = u"Picture", .hue = MakeHue(dice_), .height = dice_.Between(48, 160)};
    int64 cursor = 0;
    for (uint32 i = 0; i < size_.clips; ++i) {
        track.clips.push_back(MakeVideoClip(cursor));
    }
    return track;
}

}  // namespace toolkit
