#pragma once

#include "toolkit/interchange/Format.h"

/// OpenTimelineIO: JSON with tracks of clips, gaps and transitions.
///
/// Placement is exact to the sample, or rounded to frames if `ExportOptions::frameRate` says so.
/// Crossfades are transitions; fades are transitions beside a gap. Clips that overlap otherwise
/// stand on further tracks, "name (2)" and so on, which a reading merges again. All else is under
/// `metadata.orvo`: other programs keep it and do not use it. What a file says itself counts more
/// than its `metadata.orvo`, so that what others changed stays changed.
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
