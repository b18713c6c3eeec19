#pragma once

#include <orvo/Model.h>

/// Tracks with everything that a file can hold, and what of a track a file holds.
namespace test {

/// A track of a kind with every part of it filled: all switches on, routing, components with lanes,
/// a rack with slots, sends. No clips.
orvo::AudioTrack FullTrack(kelcore::uint32 kind, kelcore::uint32 id);

orvo::VideoTrack FullVideoTrack(kelcore::uint32 id);

/// A component with every part of it filled that a keyword's element holds.
orvo::Component FullComponent();

// What is left of a part of the model once it has been written and read.

/// Of a component of a track, send or rack: no preset's state, no editor without an area, no
/// parameter without a value, no lane without keyframes.
orvo::Component StoredControl(orvo::Component component);

/// Of an effect in a slot: the same with its preset's state, and without a power of its own.
orvo::Component StoredEffect(orvo::Component component);

/// No null slots, and of each component what is stored of it.
orvo::EffectsRack StoredRack(orvo::EffectsRack rack);

/// No null slots, no destination component below 0, and of each component what is stored of it.
orvo::SendList StoredSends(orvo::SendList sends);

/// All of the above, and the rules of the track and of its kind. Only clips are left as they are.
orvo::AudioTrack StoredTrack(orvo::AudioTrack track);

orvo::VideoTrack StoredVideoTrack(orvo::VideoTrack track);

/// The tracks that are stored at all, and what is stored of each.
std::vector<orvo::AudioTrack> StoredTracks(const std::vector<orvo::AudioTrack>& tracks);

}  // namespace test
