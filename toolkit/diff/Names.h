#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <orvo/Lookup.h>
#include <orvo/Session.h>
#include "toolkit/diff/Values.h"

/// What sentences call the things of a session, and where these stand in its JSON.
namespace orvo::diff {

/// A place in a list, as a JSON pointer.
std::string PlaceIn(std::string_view list, std::size_t index);

/// The place of a track with an index as in `SessionMatch`.
std::string PlaceOfAudioTrack(const Session& session, std::size_t index);

std::string NounOf(const AudioTrack& track);
std::string NounOf(const VideoTrack& track);

/// A name in quotation marks, or else the id.
template <class Thing>
std::string NameOrId(const Thing& thing) {
    return thing.name.empty() ? std::to_string(thing.id) : Quoted(thing.name);
}

/// A track for a sentence: its noun and its name.
template <class Track>
std::string NameOf(const Track& track) {
    return NounOf(track) + ' ' + NameOrId(track);
}

/// The name of the file in its path.
std::string NameOf(const File& file);

/// The name of a clip, or else that of its media.
std::string NameOf(const AudioClip& clip, const SessionIndex& index);
std::string NameOf(const VideoClip& clip, const SessionIndex& index);
std::string NameOf(const MidiClip& clip, const SessionIndex& index);

/// The file of an id.
std::string MediaOf(std::uint32_t fileId, const SessionIndex& index);

/// The audio track of an id, where one leads to.
std::string TrackOf(const SessionIndex& index, std::int32_t id);

}  // namespace orvo::diff
