#pragma once

#include "toolkit/interchange/Format.h"

/// OpenTimelineIO: JSON with tracks of clips, gaps and transitions.
///
/// Placement is exact to the sample, or rounded to frames if `ExportOptions::frameRate` says so.
/// Crossfades are transitions; fades are transitions beside a gap. Clips that overlap otherwise
/// stand on further tracks, "name (2)" and so on, which a reading merges again. All else is under
/// `metadata.orvo`, so that it comes back; for other programs it is lost, and reported as such.
/// What a file says itself counts more than its `metadata.orvo`: what others changed stays changed.
///
/// A clip that begins before the session, or ends beyond 2^53 samples, stands in the metadata only.
/// A fade has the length of its transition; its curve is in the metadata. Media that cannot be
/// looked into get an `available_range` that is guessed of the clips that play them.
///
/// A reading takes old schemas, nested compositions (their layers become tracks), rates of all
/// kinds, and the forms of URLs that programs write. Without `metadata.orvo`, the session has the
/// rate of the first sound in the file, and stereo tracks without a master.
///
/// What nobody tried with other programs: whether they show transitions beside gaps as fades.
namespace toolkit::interchange {

/// @throws Failure, Cancelled
void WriteOtio(const Export& job);
orvo::Session ReadOtio(const Import& job);

/// The same in a ZIP archive, with the media that exist.
/// @throws Failure, Cancelled
void WriteOtioz(const Export& job);
orvo::Session ReadOtioz(const Import& job);

}  // namespace toolkit::interchange
