#pragma once

#include "reference_host/model/Session.h"

/// Tracks with everything that a file can hold, and what of a track a file holds.
namespace test {

/// A track of a kind with every part of it filled: all switches on, routing, components with lanes,
/// a rack with slots, sends. No clips.
refhost::model::AudioTrack FullTrack(kelcore::uint32 kind, kelcore::uint32 id);

refhost::model::VideoTrack FullVideoTrack(kelcore::uint32 id);

/// A component with every part of it filled that a keyword's element holds.
refhost::model::Component FullComponent();

// What is left of a part of the model once it has been written and read.

/// Of a component of a track, send or rack: no preset's state, no editor without an area, no
/// parameter without a value, no lane without keyframes.
refhost::model::Component StoredControl(refhost::model::Component component);

/// Of an effect in a slot: the same with its preset's state, and without a power of its own.
refhost::model::Component StoredEffect(refhost::model::Component component);

/// No null slots, and of each component what is stored of it.
refhost::model::EffectsRack StoredRack(refhost::model::EffectsRack rack);

/// No null slots, no destination component below 0, and of each component what is stored of it.
refhost::model::SendList StoredSends(refhost::model::SendList sends);

/// All of the above, and the rules of the track and of its kind. Only clips are left as they are.
refhost::model::AudioTrack StoredTrack(refhost::model::AudioTrack track);

refhost::model::VideoTrack StoredVideoTrack(refhost::model::VideoTrack track);

/// The tracks that are stored at all, and what is stored of each.
std::vector<refhost::model::AudioTrack> StoredTracks(
    const std::vector<refhost::model::AudioTrack>& tracks);

}  // namespace test
