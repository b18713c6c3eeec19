#pragma once

#include <cstdint>

#include <orvo/Lookup.h>
#include <orvo/Session.h>

namespace orvo::diff {

/// What an id names. Tracks of both kinds share one space, and so do clips of all kinds, because
/// what refers to them does not say which kind it means.
enum class IdSpace { File, Track, Clip, Group, Preset, InputPort, OutputPort };

/// Calls `visit(space, id)` for each id by which a thing refers to another one. The ids are 32 bits
/// wide, and some are signed.
template <class Owner, class Visitor>
void ForEachReference(Owner& session, const Visitor& visit) {
    ForEachAudioTrack(session, [&](auto& track) {
        visit(IdSpace::Track, track.outputTrackId);
        visit(IdSpace::InputPort, track.inputId);
        visit(IdSpace::OutputPort, track.hardwareOutputId);
        if (track.sendList) {
            for (auto& slot : track.sendList->slots) {
                if (slot) {
                    visit(IdSpace::Track, slot->sendOutputId);
                }
            }
        }
        for (auto& clip : track.clips) {
            visit(IdSpace::File, clip.fileId);
            visit(IdSpace::Clip, clip.crossFadeHeadClipId);
            visit(IdSpace::Clip, clip.crossFadeTailClipId);
        }
    });
    for (auto& track : session.videoTracks) {
        for (auto& clip : track.clips) {
            visit(IdSpace::File, clip.fileId);
        }
    }
    for (auto& group : session.clipGroups) {
        for (auto& item : group.items) {
            visit(IdSpace::Track, item.trackId);
            visit(IdSpace::Clip, item.clipId);
        }
    }
    for (auto& preset : session.trackVisibilityPresets) {
        for (auto& track : preset.tracks) {
            visit(IdSpace::Track, track.trackId);
        }
    }
}

/// Calls `visit(space, id)` for each thing's own id.
template <class Owner, class Visitor>
void ForEachOwnId(Owner& session, const Visitor& visit) {
    const auto visitAll = [&](IdSpace space, auto& list) {
        for (auto& thing : list) {
            visit(space, thing.id);
        }
    };
    visitAll(IdSpace::File, session.files);
    ForEachAudioTrack(session, [&](auto& track) { visit(IdSpace::Track, track.id); });
    visitAll(IdSpace::Track, session.videoTracks);
    ForEachClip(session, [&](auto&, auto& clip) { visit(IdSpace::Clip, clip.id); });
    visitAll(IdSpace::Group, session.clipGroups);
    visitAll(IdSpace::Preset, session.trackVisibilityPresets);
    visitAll(IdSpace::InputPort, session.audioDevice.inputPorts);
    visitAll(IdSpace::OutputPort, session.audioDevice.outputPorts);
}

}  // namespace orvo::diff
