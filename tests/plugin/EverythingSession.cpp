#include "tests/plugin/EverythingSession.h"

namespace test {
namespace {

using namespace orvo;

Component Control(float value) {
    return {.parameters = {{0, {.value = value}}}};
}

Component AutomatedControl() {
    Component component = Control(0.5F);
    component.guid = "{A1}";
    component.componentId = "gain";
    component.name = "Gain";
    component.presetName = "Soft";
    component.powered = false;
    component.editorVisible = true;
    component.editorRect = {-10, 20, 300, 200};
    component.parameters[2] = {
        .value = -18.5F,
        .name = "Threshold <dB>",
        .safeDuringWrite = true,
        .automation =
            AutomationLane{true, true, {{0.25F, 0, orvo::KeyframeType::Hold, true}, {1, 96000}}}};
    return component;
}

EffectsSlot WiredSlot() {
    return {.slotIndex = 3,
            .bypassed = true,
            .sideChainChannels = 2,
            .busConfig = " 5.1 & more ",
            .inputChannels = {{0, 1}, {1, 0}},
            .outputChannels = {{0, -1}},
            .component = Component{.guid = "{B2}",
                                   .componentId = "reverb",
                                   .name = "Reverb",
                                   .presetChunk = {0, 1, 2, 253, 254, 255},
                                   .parameters = {{0, {.value = 1.0F}}}}};
}

EffectsRack Rack() {
    return {.preFader = false,
            .mix = Control(1),
            .input = Control(0.5F),
            .output = AutomatedControl(),
            .slots = {EffectsSlot{.slotIndex = 0}, WiredSlot()}};
}

SendList Sends() {
    return {.slots = {SendSlot{.slotIndex = 0,
                               .sendOutputId = 2,
                               .preFader = true,
                               .destCompIndex = 1,
                               .sendComponent = Control(0.75F),
                               .panComponent = Control(0)},
                      SendSlot{.slotIndex = 1}}};
}

AudioClip PlainClip() {
    return {.id = 10, .fileId = 1, .duration = 48000, .name = "Plain"};
}

AudioClip FullClip() {
    return {.id = 11,
            .fileId = 2,
            .sourceInPoint = 100,
            .duration = 48000,
            .startPoint = 5'000'000'000,
            .hue = 212.5,
            .name = "Take \u201C2\u201D & more",
            .looped = true,
            .offline = true,
            .selected = true,
            .lockedInTime = true,
            .zOrder = -1,
            .autoCrossfade = false,
            .crossFadeHeadClipId = 10,
            .crossFadeTailClipId = 12,
            .fadeIn = Fade{0, 4800, FadeType::Cosine, -50, CrossFadeLink::Asymmetric},
            .fadeOut = Fade{43200, 48000, FadeType::Logarithmic, 25, CrossFadeLink::Symmetric},
            .stretch = ClipStretch{StretchMode::Realtime, StretchType::Varispeed, 1.25, -3.5,
                                   StretchQuality::Low, 41, 38, false},
            .takes = {0, 96000},
            .gain = AutomatedControl(),
            .mute = Control(0),
            .pan = Control(-1),
            .effectsRack = Rack(),
            .editParameters = {{0, 3}, {1, 0}},
            .properties = "{\"colour\": \"red\"}",
            .channelSources = {{0, 1}, {1, 0}}};
}

AudioTrack FullTrack() {
    return {.id = 1,
            .index = 4,
            .kind = TrackKind::Audio,
            .name = "Voice",
            .hue = 120.25,
            .height = 96,
            .selected = true,
            .minimized = true,
            .visible = false,
            .automationLaneOpen = true,
            .phaseInverted = true,
            .preRendered = true,
            .preRenderedFile = "voice.rendered.wav",
            .sumToMono = true,
            .audioChannelType = ChannelType::Stereo,
            .solo = true,
            .recordArmed = true,
            .monitoring = true,
            .soloSafe = true,
            .outputTrackId = 2,
            .inputId = 7,
            .automationMode = 3,
            .fader = AutomatedControl(),
            .mute = Control(0),
            .pan = Control(0.5F),
            .eq = Control(1),
            .effectsRack = Rack(),
            .editParameters = {{3, 0}},
            .sendList = Sends(),
            .clips = {PlainClip(), FullClip()}};
}

AudioTrack BusTrack() {
    return {.id = 2,
            .index = 5,
            .kind = TrackKind::Bus,
            .name = "Bus",
            .audioChannelType = ChannelType::FivePointOne,
            .hardwareOutputId = 8};
}

AudioTrack MasterTrack() {
    return {.id = 3,
            .index = 6,
            .kind = TrackKind::Master,
            .name = "Mix",
            .audioChannelType = ChannelType::Mono};
}

AudioTrack FullInstrumentTrack() {
    return {.id = 4,
            .index = 7,
            .kind = TrackKind::Instrument,
            .name = "Bass",
            .instrument = InstrumentTrack{"Keyboard", true},
            .midiClips = {{.id = 20,
                           .sourceInPoint = 5,
                           .duration = 96000,
                           .startPoint = 48000,
                           .hue = 30,
                           .name = "Riff",
                           .selected = true,
                           .lockedInTime = true,
                           .events = {0x90, 0x40, 0x7F, 0x80, 0x40, 0x00}}}};
}

VideoTrack FullVideoTrack() {
    return {.id = 5,
            .name = "Picture",
            .hue = 60,
            .height = 48,
            .selected = true,
            .minimized = true,
            .clips = {{.id = 30,
                       .fileId = 3,
                       .sourceInPoint = 1,
                       .duration = 2002,
                       .startPoint = 48000,
                       .hue = 15,
                       .name = "Scene",
                       .offline = true,
                       .selected = true,
                       .lockedInTime = true,
                       .zOrder = 2,
                       .format = VideoFormat{24000, 1001, 5, 1920, 1080, 16, 15, 2}}}};
}

Metronome FullMetronome() {
    return {
        .enabled = true,
        .soundSet = SoundSet::Kit,
        .pattern = {Beat::DownBeat, Beat::UpBeat, Beat::Subdivision, Beat::Silent},
        .track =
            AudioTrack{.id = 4294967295, .index = 8, .kind = TrackKind::Metronome, .name = "Click"},
        .globalTrackInfo = GlobalTrackInfo{true, true, true, {1, 2, 3}, {4}, {5, 6}}};
}

void SetSavedState(Session& session) {
    session.ctiPosition = 96000;
    session.smpteStart = -7;
    session.selection = {1000, 2000};
    session.viewState = {10, 480000, 220, 3};
    session.timeFormat = {TimeDisplay::Ntsc60Drop, 60, true, true, 9, false};
    session.musicalTime = {120.5, 3, 4, 16};
    session.mixingOptions = {true, -4.5, true};
    session.properties = {{"artist", "A & B"}, {"empty", ""}};
    session.xmpMetadata = "<x:xmpmeta>\u00e4 ]]> &</x:xmpmeta>";
}

}  // namespace

Session EverythingSession(const std::string& folder) {
    Session session;
    session.sampleRate = 96000;
    session.audioChannelType = orvo::ChannelType::FivePointOne;
    session.duration = 5'000'480'000;
    session.bitDepth = 24;
    session.formatDescription = "Vantor Tembra 25.1 Multitrack Session";
    session.versionDependentValue = 1000;
    session.videoTracks = {FullVideoTrack()};
    session.audioTracks = {FullTrack(), BusTrack(), MasterTrack(), FullInstrumentTrack()};
    session.trackVisibilityPresets = {{1, "Voices", {{1, 64.5F, true}, {2, 0, false}}},
                                      {2, "", {}}};
    session.clipGroups = {{6, "Chorus", 30.5, {{1, 10}, {1, 11}}}, {7, "", 0, {}}};
    session.metronome = FullMetronome();
    SetSavedState(session);
    session.files = {
        {.id = 1, .path = folder + "media/voice.wav"},
        {.id = 2,
         .path = folder + "media/music.wav",
         .mediaHandler = "a handler of tomorrow",
         .recoveryId = "recovery",
         .importerPrivateSettings = "settings"},
        {.id = 3, .path = folder + "picture.mov", .mediaHandler = "kel.importer.wave"}};
    session.audioDevice = {"in", "out", {{7, "Mic"}}, {{8, "Left"}, {9, "Right"}}};
    return session;
}

}  // namespace test
