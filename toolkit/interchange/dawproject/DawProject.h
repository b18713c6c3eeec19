#pragma once

#include "toolkit/interchange/Format.h"

namespace toolkit::interchange {

/// Writes a session as a DAWproject 1.0 file. Everything stands in seconds. Tracks come in the
/// order of their indices and get new ids, so that ids may repeat in the session.
///
/// The whole session travels along as an entry of its own, with digests of the document and the
/// metadata. A reading of the untouched file gives the same session back.
///
/// - A parameter of an effect keeps its own unit; levels become factors, pans lie from 0 to 1.
/// - A track without an output feeds the first master, as DAWproject has no ports.
/// - The equaliser of a track becomes the last of its effects.
/// - A looped clip loops all of its file. Its automation does not go beyond the first turn.
/// - Clips keep their order. Which of two overlapping clips covers the other one has no place.
/// @throws Failure, Cancelled
void WriteDawProject(const Export& job);

/// Reads a DAWproject file of any program. Content is flattened into clips on tracks: loops,
/// stretches that are not even and nested clips become several clips, which are grouped. A loop of
/// a whole file stays one clip.
///
/// - The rate is that of the media of most clips.
/// - A track without a destination feeds the group that holds it, else the first master.
/// - A group of tracks becomes a bus if it has a channel.
/// - Clips that a master cannot hold, and notes on audio tracks, get tracks of their own.
/// - Notes, scenes, expressions and automation of the tempo are reported and left out.
/// @throws Failure, Cancelled
orvo::Session ReadDawProject(const Import& job);

}  // namespace toolkit::interchange
