#pragma once

#include "format/clips/Clip.h"
#include "plugin/serializer/HostText.h"

// What audio, MIDI and video clips have in common, in both directions.

namespace tses {

/// Returns the clip's length. Only the source range counts; "endPoint" is ignored. No value that a
/// file can hold causes an overflow.
kelcore::int64 DurationOf(const ClipRecord& record);

/// Passes the common values to a clip of any kind, in the order that hosts expect.
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

/// Sets the out point and the end point from the duration, which is what hosts report.
void SetEnds(kelcore::int64 duration, ClipRecord& record);

/// Asks a clip of any kind for the common values, in the order that hosts expect. Ask for the id
/// and for the values of this kind of clip first.
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
