#pragma once

#include "format/clips/Clip.h"
#include "plugin/serializer/HostText.h"

// What audio, MIDI and video clips have in common, in both directions.

namespace tses {

/// The clip's length comes from its source range alone; "endPoint" says nothing. Computed so that
/// no value that a file can hold overflows.
kelcore::int64 DurationOf(const ClipRecord& record);

/// Passes the common values to a clip of any kind, in the order that hosts know.
template <class EditClip>
void ApplyCommonClipAttributes(const ClipRecord& record, EditClip& clip) {
    clip.SetSourceInPoint(record.sourceInPoint);
    clip.SetDuration(DurationOf(record));
    clip.SetStartPoint(record.startPoint);
    clip.SetHue(record.hue);
    clip.SetName(record.name.c_str());
    clip.SetSelected(record.selected);
    clip.SetLockedInTime(record.lockedInTime);
}

/// Sets the out point and the end point, which hosts give as a duration.
void SetEnds(kelcore::int64 duration, ClipRecord& record);

/// Asks a clip of any kind for the common values, in the order that hosts know: after its id and
/// what only its kind has.
template <class QueryClip>
void QueryCommonClipAttributes(QueryClip& clip, ClipRecord& record) {
    record.sourceInPoint = clip.GetSourceInPoint();
    const kelcore::int64 duration = clip.GetDuration();
    record.startPoint = clip.GetStartPoint();
    SetEnds(duration, record);
    record.hue = clip.GetHue();
    record.name = TextOf(clip.GetName());
    record.selected = clip.GetSelected();
    record.lockedInTime = clip.GetLockedInTime();
}

}  // namespace tses
