#include "tests/toolkit/diff/SmallSession.h"

namespace test {
namespace {

orvo::Component Control(const char* name, float value) {
    orvo::Component control;
    control.name = name;
    control.parameters[0] = {.value = value, .name = name};
    return control;
}

orvo::AudioClip Clip(std::uint32_t id, const char* name, std::uint32_t file, std::int64_t start) {
    orvo::AudioClip clip;
    clip.id = id;
    clip.name = name;
    clip.fileId = file;
    clip.sourceInPoint = 4 * kSecond;
    clip.startPoint = start * kSecond;
    clip.duration = 2 * kSecond;
    clip.fadeIn = orvo::Fade{.endPoint = kSecond / 10};
    clip.gain = Control("Gain", 1);
    return clip;
}

orvo::EffectsSlot Effect(std::uint32_t slot, const char* name) {
    orvo::EffectsSlot effect;
    effect.slotIndex = slot;
    effect.component.emplace();
    effect.component->componentId = name;
    effect.component->name = name;
    effect.component->parameters[0] = {.value = 0.25F, .name = "Mix"};
    effect.component->parameters[1] = {.value = 2, .name = "Size"};
    return effect;
}

orvo::AudioTrack MakeDrums() {
    orvo::AudioTrack drums;
    drums.id = 11;
    drums.name = "Drums";
    drums.index = 0;
    drums.outputTrackId = 13;
    drums.inputId = 1;
    drums.fader = Control("Volume", 0);
    auto& lane = drums.fader->parameters[0].automation.emplace();
    for (int i = 0; i < 8; ++i) {
        lane.keyframes.push_back({.value = -1, .sampleOffset = i * kSecond});
    }
    drums.effectsRack.emplace();
    drums.effectsRack->slots = {Effect(0, "Echo"), Effect(1, "Reverb"), Effect(2, "Limiter")};
    for (std::uint32_t i = 0; i < 6; ++i) {
        drums.clips.push_back(Clip(100 + i, "Beat", 21, 3 * i));
    }
    drums.clips[0].name = "Kick";
    drums.clips[1].name = "Snare";
    return drums;
}

orvo::AudioTrack MakeBass() {
    orvo::AudioTrack bass;
    bass.id = 12;
    bass.name = "Bass";
    bass.index = 1;
    bass.hardwareOutputId = 1;
    bass.clips = {Clip(200, "Line", 22, 0), Clip(201, "Fill", 22, 10)};
    bass.clips[1].sourceInPoint = 0;
    bass.sendList.emplace();
    bass.sendList->slots.push_back(orvo::SendSlot{.sendOutputId = 13});
    bass.sendList->slots[0]->sendComponent = Control("Level", 0.5F);
    return bass;
}

}  // namespace

orvo::Session SmallSession() {
    orvo::Session session;
    session.duration = 20 * kSecond;
    session.files = {{.id = 21, .path = "/media/drums.wav"}, {.id = 22, .path = "/media/bass.wav"}};
    orvo::AudioTrack bus;
    bus.id = 13;
    bus.name = "Room";
    bus.index = 2;
    bus.kind = orvo::TrackKind::Bus;
    session.audioTracks = {MakeDrums(), MakeBass(), bus};
    session.clipGroups = {
        {.id = 31,
         .name = "Intro",
         .items = {{.trackId = 11, .clipId = 100}, {.trackId = 12, .clipId = 200}}}};
    session.audioDevice.inputPorts = {{.id = 1, .name = "Mic"}, {.id = 2, .name = "Line"}};
    session.audioDevice.outputPorts = {{.id = 1, .name = "Left"}, {.id = 2, .name = "Right"}};
    session.properties = {{.key = "author", .value = "Ann"}};
    return session;
}

std::vector<std::string> SentencesOf(const orvo::Session& before, const orvo::Session& after,
                                     const orvo::ChangeOptions& options) {
    std::vector<std::string> sentences;
    for (const orvo::Change& change : orvo::FindChanges(before, after, options)) {
        sentences.push_back(change.sentence);
    }
    return sentences;
}

}  // namespace test
