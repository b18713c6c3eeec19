#pragma once

#include "plugin/elements/clips/ReadState.h"
#include "plugin/serializer/HostText.h"
#include "plugin/serializer/ValueEncoding.h"
#include "plugin/xml/AttributeMap.h"
#include "plugin/xml/TagAttributes.h"

// What audio, MIDI and video clips have in common, in both directions.

namespace tses {

/// Reads "id", the four points, "hue", "name", "select" and "lockedInTime".
void ReadCommonClipAttributes(const TagAttributes& attributes, PendingClipRecord& record);

/// Reads these and what only audio clips have. Video clips read all of it and apply a part.
void ReadAudioClipAttributes(const TagAttributes& attributes, PendingClipRecord& record);

/// Adds "id" and the common attributes of `record`, "endPoint" among them, for readers of the
/// document.
void SetCommonClipAttributes(const PendingClipRecord& record, AttributeMap& attributes);

/// The clip's length comes from its source range alone; "endPoint" says nothing. Computed so that
/// no value that a file can hold overflows.
kelcore::int64 DurationOf(const PendingClipRecord& record);

/// Passes the common values to a clip of any kind, in the order that hosts know.
template <class EditClip>
void ApplyCommonClipAttributes(const PendingClipRecord& record, EditClip& clip) {
    clip.SetSourceInPoint(record.sourceInPoint);
    clip.SetDuration(DurationOf(record));
    clip.SetStartPoint(record.startPoint);
    clip.SetHue(record.hue);
    clip.SetName(record.name.c_str());
    clip.SetSelected(record.selected);
    clip.SetLockedInTime(record.lockedInTime);
}

/// Sets the out point and the end point, which hosts give as a duration.
void SetEnds(kelcore::int64 duration, PendingClipRecord& record);

/// Asks a clip of any kind for the common values, in the order that hosts know: after its id and
/// what only its kind has.
template <class QueryClip>
void QueryCommonClipAttributes(QueryClip& clip, PendingClipRecord& record) {
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
