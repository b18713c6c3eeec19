#include "toolkit/GeneratedSession.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "toolkit/Dice.h"
#include "toolkit/GeneratedTracks.h"

namespace toolkit {
namespace {

using kelcore::int64;
using kelcore::uint32;
using kelcore::uint64;
using orvo::TrackKind;

constexpr uint32 kTracksWithVideo = 8;
constexpr uint32 kClipsOfGroup = 4;

const std::string_view kSounds[] = {"voice",  "rain",    "guitar",    "drums",
                                    "street", "strings", "caf\u00e9", "foot-steps"};

// Media

orvo::File MakeFile(uint32 id, Dice& dice) {
    const std::string name = std::string(dice.OneOf(kSounds)) + "-" + std::to_string(id);
    return {.id = id,
            .path = "/media/sessions/generated/media/" + name + ".wav",
            .mediaHandler = "kel.importer.wave"};
}

/// One file for every four clips, and at least one.
uint32 CountFiles(const GeneratedSize& size) {
    const uint64 clips = uint64{size.tracks} * size.clips;
    return static_cast<uint32>(clips / 4 + 1);
}

// Tracks

/// The kinds of the tracks, from the first to the last, without the video track.
std::vector<TrackKind> PlanTracks(uint32 count) {
    std::vector<TrackKind> kinds;
    for (uint32 i = 0; i + 1 < count; ++i) {
        kinds.push_back(i % 8 == 5   ? TrackKind::Instrument
                        : i % 8 == 6 ? TrackKind::Bus
                                     : TrackKind::Audio);
    }
    kinds.push_back(TrackKind::Master);
    return kinds;
}

/// What the tracks of a session know about each other.
Routing PlanRouting(const std::vector<TrackKind>& kinds, uint32 firstId, uint32 files) {
    Routing routing;
    routing.masterId = firstId + static_cast<uint32>(kinds.size()) - 1;
    routing.files = files;
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        if (kinds[i] == TrackKind::Bus) {
            routing.busIds.push_back(firstId + static_cast<uint32>(i));
        }
    }
    return routing;
}

void AddTracks(orvo::Session& session, const GeneratedSize& size, Dice& dice) {
    const bool hasVideo = size.tracks >= kTracksWithVideo;
    const std::vector<TrackKind> kinds = PlanTracks(size.tracks - (hasVideo ? 1 : 0));
    const uint32 firstId = hasVideo ? 2 : 1;
    const Routing routing = PlanRouting(kinds, firstId, CountFiles(size));
    TrackMaker maker(size, routing, dice);
    if (hasVideo) {
        session.videoTracks.push_back(maker.MakeVideoTrack(1));
    }
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        session.audioTracks.push_back(
            maker.MakeTrack(firstId + static_cast<uint32>(i), static_cast<uint32>(i), kinds[i]));
    }
    session.duration = maker.End();
}

// What refers to the tracks

orvo::ClipGroup MakeGroup(uint32 id, const orvo::AudioTrack& track, Dice& dice) {
    orvo::ClipGroup group = {.id = id,
                             .name = "Group " + std::to_string(id),
                             .hue = static_cast<double>(dice.Below(360))};
    for (std::size_t i = 0; i < std::min<std::size_t>(kClipsOfGroup, track.clips.size()); ++i) {
        group.items.push_back({track.id, track.clips[i].id});
    }
    return group;
}

/// Groups the first clips of every fourth track.
void AddGroups(orvo::Session& session, Dice& dice) {
    uint32 id = 1;
    for (std::size_t i = 0; i < session.audioTracks.size(); i += 4) {
        if (!session.audioTracks[i].clips.empty()) {
            session.clipGroups.push_back(MakeGroup(id++, session.audioTracks[i], dice));
        }
    }
}

void AddVisibilityPresets(orvo::Session& session) {
    orvo::TrackVisibilityPreset preset = {.id = 1, .name = "Everything"};
    for (const orvo::AudioTrack& track : session.audioTracks) {
        preset.tracks.push_back({track.id, static_cast<float>(track.height), track.minimized});
    }
    session.trackVisibilityPresets.push_back(std::move(preset));
}

// The session's own

void AddState(orvo::Session& session, Dice& dice) {
    session.ctiPosition = dice.Between(0, 480'000);
    session.selection = {session.ctiPosition, dice.Between(0, 96'000)};
    session.viewState = {0, session.duration, 220, 0};
    session.timeFormat = {
        .format = orvo::TimeDisplay::Timecode, .frameRate = 25, .linkedToDefaults = false};
    session.musicalTime = {static_cast<double>(dice.Between(70, 140)), 4, 4, 16};
    session.mixingOptions = {true, -3, true};
    session.metronome.pattern = {orvo::Beat::DownBeat, orvo::Beat::UpBeat, orvo::Beat::UpBeat,
                                 orvo::Beat::UpBeat};
    session.metronome.globalTrackInfo = {.tempoVisible = true, .tempoEvents = {0, 0, 0, 120}};
    session.properties = {{"client", "Harbour Radio & Sons"}, {"take", "3"}};
    session.xmpMetadata = "<x:xmpmeta xmlns:x=\"urn:example:meta\"/>";
    session.audioDevice = {"Studio desk",
                           "Studio desk",
                           {{1, "Booth microphone"}, {2, "Line"}},
                           {{1, "Main left"}, {2, "Main right"}}};
}

}  // namespace

uint64 CountItems(const GeneratedSize& size) {
    const uint64 lanes = uint64{size.slots} + 1;
    return size.tracks * (1 + uint64{size.clips} + size.slots + lanes * size.keyframes);
}

orvo::Session GenerateSession(const GeneratedSize& size, uint64 seed) {
    Dice dice(seed);
    orvo::Session session;
    session.sampleRate = kGeneratedSampleRate;
    session.bitDepth = 24;
    AddTracks(session, size, dice);
    AddGroups(session, dice);
    AddVisibilityPresets(session);
    AddState(session, dice);
    for (uint32 id = 1; id <= CountFiles(size); ++id) {
        session.files.push_back(MakeFile(id, dice));
    }
    return session;
}

}  // namespace toolkit
