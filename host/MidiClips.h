#pragma once

#include "host/HostObject.h"

namespace tses {

/// A stretch of MIDI events on an instrument track. From `IEditMIDIClipList::CreateMIDIClip`.
struct IEditMIDIClip : IHostObject {
    /// The events in the host's own layout. Called only with at least one byte, after the rest.
    virtual void SetMIDIEvents(const kelcore::byte* data, kelcore::uint32 size) = 0;
    /// The first sample of the region in the events. -1 if the file does not say.
    virtual void SetSourceInPoint(kelcore::int64 sample) = 0;
    /// Length of the region in samples.
    virtual void SetDuration(kelcore::int64 samples) = 0;
    /// Where the clip starts on the timeline. -1 if the file does not say.
    virtual void SetStartPoint(kelcore::int64 sample) = 0;
    /// The colour's hue, the host's number. That of the previous clip if the file does not say.
    virtual void SetHue(double hue) = 0;
    /// The clip's name. That of the previous clip if the file does not say.
    virtual void SetName(const kelcore::char16* name) = 0;
    /// Whether the clip is selected.
    virtual void SetSelected(bool selected) = 0;
    /// Whether the clip may not be moved in time.
    virtual void SetLockedInTime(bool locked) = 0;

protected:
    ~IEditMIDIClip() = default;
};

/// The MIDI clips of an instrument track. From `IEditAudioTrack::GetMIDIClipList`.
struct IEditMIDIClipList : IHostObject {
    /// A new MIDI clip. Null: what the file says about the clip is dropped.
    virtual IEditMIDIClip* CreateMIDIClip(kelcore::uint32 id) = 0;

protected:
    ~IEditMIDIClipList() = default;
};

/// A stretch of MIDI events on an instrument track. From `IQueryMIDIClipList::GetClip`. Units are
/// those of `IEditMIDIClip`.
struct IQueryMIDIClip : IHostObject {
    /// The id, unique among the session's clips.
    virtual kelcore::uint32 GetID() = 0;
    /// The size of the events in bytes. 0: no events are stored. More than 1 GiB: the save fails.
    virtual kelcore::uint32 GetMIDIEventsSize() = 0;
    /// Fills a buffer of exactly that size with the events. False: no events are stored.
    virtual bool GetMIDIEvents(kelcore::byte* buffer) = 0;
    /// The first sample of the region in the events.
    virtual kelcore::int64 GetSourceInPoint() = 0;
    /// Length of the region in samples.
    virtual kelcore::int64 GetDuration() = 0;
    /// Where the region starts on the timeline.
    virtual kelcore::int64 GetStartPoint() = 0;
    /// The colour's hue, the host's number.
    virtual double GetHue() = 0;
    /// The clip's name. Null: stored as empty.
    virtual IHostString* GetName() = 0;
    /// Whether the clip is selected.
    virtual bool GetSelected() = 0;
    /// Whether the clip may not be moved in time.
    virtual bool GetLockedInTime() = 0;

protected:
    ~IQueryMIDIClip() = default;
};

/// The MIDI clips of an instrument track. From `IQueryAudioTrack::GetMIDIClipList`.
struct IQueryMIDIClipList : IHostObject {
    /// How many MIDI clips there are.
    virtual kelcore::uint32 GetCount() = 0;
    /// A MIDI clip. Null: skipped.
    virtual IQueryMIDIClip* GetClip(kelcore::uint32 index) = 0;

protected:
    ~IQueryMIDIClipList() = default;
};

}  // namespace tses
