#include "toolkit/diff/Names.h"

#include <fmt/format.h>

#include <string>
#include <string_view>

#include "session/MemberKey.h"

namespace orvo::diff {
namespace {

/// The name of a clip that plays a file.
template <class Clip>
std::string NameOfPlayer(const Clip& clip, const SessionIndex& index) {
    if (!clip.name.empty()) {
        return Quoted(clip.name);
    }
    const File* const file = index.FindFile(clip.fileId);
    return file != nullptr ? NameOf(*file) : std::to_string(clip.id);
}

}  // namespace

std::string PlaceIn(std::string_view list, std::size_t index) {
    return fmt::format("/{}/{}", list, index);
}

std::string PlaceOfAudioTrack(const Session& session, std::size_t index) {
    return index < session.audioTracks.size()
               ? PlaceIn(KeyOf(&Session::audioTracks), index)
               : fmt::format("/{}/{}", KeyOf(&Session::metronome), KeyOf(&Metronome::track));
}

std::string NounOf(const AudioTrack& track) {
    switch (track.kind) {
        case TrackKind::Bus:
        case TrackKind::Master:
            return std::string(*WordOf(track.kind));
        case TrackKind::Metronome:
        case TrackKind::Instrument:
            return std::string(*WordOf(track.kind)) + " track";
        default:
            return "track";
    }
}
std::string NounOf(const VideoTrack&) {
    return "video track";
}

std::string NameOf(const File& file) {
    const std::string name = file.path.substr(file.path.find_last_of("/\\") + 1);
    return name.empty() ? std::to_string(file.id) : Quoted(name);
}

std::string NameOf(const AudioClip& clip, const SessionIndex& index) {
    return NameOfPlayer(clip, index);
}

std::string NameOf(const VideoClip& clip, const SessionIndex& index) {
    return NameOfPlayer(clip, index);
}

std::string NameOf(const MidiClip& clip, const SessionIndex&) {
    return NameOrId(clip);
}

std::string MediaOf(std::uint32_t fileId, const SessionIndex& index) {
    const File* const file = index.FindFile(fileId);
    return file != nullptr   ? NameOf(*file)
           : fileId == kNoId ? "nothing"
                             : fmt::format("the missing file {}", fileId);
}

std::string TrackOf(const SessionIndex& index, std::int32_t id) {
    const AudioTrack* const track = index.FindAudioTrack(static_cast<std::uint32_t>(id));
    return track != nullptr ? NameOf(*track)
           : id < 0         ? "nowhere"
                            : fmt::format("the missing track {}", id);
}

}  // namespace orvo::diff
