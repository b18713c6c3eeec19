#pragma once

#include "host/HostObject.h"

namespace tses {

/// A stretch of MIDI events on an instrument track. From `IEditMIDIClipList::CreateMIDIClip`.
struct IEditMIDIClip : IHostObject {
    /// The events in the host's own layout. Called only with at least one byte, after the rest.
    virtual void SetMIDIEvents(const kelcore::byte* data, kelcore::uint32 size) = 0;
    /// In samples. -1 when the file does not say.
    virtual void SetSourceInPoint(kelcore::int64 sample) = 0;
    /// In samples.
    virtual void SetDuration(kelcore::int64 samples) = 0;
    /// Where the clip starts on the timeline. -1 when the file does not say.
    virtual void SetStartPoint(kelcore::int64 sample) = 0;
    /// The colour's hue in degrees. That of the clip before when the file does not say.
    virtual void SetHue(double degrees) = 0;
    /// The name of the clip before when the file does not say.
    virtual void SetName(const kelcore::char16* name) = 0;
    virtual void SetSelected(bool selected) = 0;
    /// Whether the clip may not be moved in time.
    virtual void SetLockedInTime(bool locked) = 0;

protected:
    ~IEditMIDIClip() = default;
};

/// The MIDI clips of an instrument track. From `IEditAudioTrack::GetMIDIClipList`.
struct IEditMIDIClipList : IHostObject {
    /// A new clip. Null: what the file says of the clip is dropped.
    virtual IEditMIDIClip* CreateMIDIClip(kelcore::uint32 id) = 0;

protected:
    ~IEditMIDIClipList() = default;
};

/// A stretch of MIDI events on an instrument track. From `IQueryMIDIClipList::GetClip`. Units are
/// those of `IEditMIDIClip`.
struct IQueryMIDIClip : IHostObject {
    /// Unique among the session's clips.
    virtual kelcore::uint32 GetID() = 0;
    /// In bytes. 0: no events are stored.
    virtual kelcore::uint32 GetMIDIEventsSize() = 0;
    /// Fills the buffer, which has exactly the size given before. False: no events are stored.
    virtual bool GetMIDIEvents(kelcore::byte* buffer) = 0;
    virtual kelcore::int64 GetSourceInPoint() = 0;
    virtual kelcore::int64 GetDuration() = 0;
    virtual kelcore::int64 GetStartPoint() = 0;
    virtual double GetHue() = 0;
    /// Null: stored as empty.
    virtual IHostString* GetName() = 0;
    virtual bool GetSelected() = 0;
    virtual bool GetLockedInTime() = 0;

protected:
    ~IQueryMIDIClip() = default;
};

/// The MIDI clips of an instrument track. From `IQueryAudioTrack::GetMIDIClipList`.
struct IQueryMIDIClipList : IHostObject {
    virtual kelcore::uint32 GetCount() = 0;
    /// Null: skipped.
    virtual IQueryMIDIClip* GetClip(kelcore::uint32 index) = 0;

protected:
    ~IQueryMIDIClipList() = default;
};

}  // namespace tses
