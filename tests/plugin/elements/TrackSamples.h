#pragma once

#include <orvo/Model.h>

#include <vector>

#include "platform/kelcore/Types.h"

/// Tracks with everything that a file can hold, and what a file keeps of a track.
namespace test {

/// A track of a kind with all its parts: all switches on, routing, components with lanes, a rack
/// with slots, sends. No clips.
orvo::AudioTrack FullTrack(kelcore::uint32 kind, kelcore::uint32 id);

orvo::VideoTrack FullVideoTrack(kelcore::uint32 id);

/// A component with everything that the element of a keyword can hold.
orvo::Component FullComponent();

// What is left of a part of the model after it has been written and read.

/// For a component of a track, send or rack: without a preset's state, an editor without an area,
/// parameters without a value and lanes without keyframes.
orvo::Component StoredControl(orvo::Component component);

/// For an effect in a slot: the same, but with its preset's state and always powered.
orvo::Component StoredEffect(orvo::Component component);

/// Without null slots, and with what is stored of each component.
orvo::EffectsRack StoredRack(orvo::EffectsRack rack);

/// Without null slots and destination components below 0, and with what is stored of each
/// component.
orvo::SendList StoredSends(orvo::SendList sends);

/// All of the above, and the rules of the track and of its kind. Leaves clips as they are.
orvo::AudioTrack StoredTrack(orvo::AudioTrack track);

orvo::VideoTrack StoredVideoTrack(orvo::VideoTrack track);

/// The tracks that are stored at all, each with what is stored of it.
std::vector<orvo::AudioTrack> StoredTracks(const std::vector<orvo::AudioTrack>& tracks);

}  // namespace test
