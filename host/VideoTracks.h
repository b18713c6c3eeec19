#pragma once

#include "host/HostObject.h"

namespace tses {

struct IEditVideoClip;
struct IQueryVideoClip;

/// A video track. From `IEditSession::GetVideoTrack`.
struct IEditVideoTrack : IHostObject {
    /// The track's place in the list of tracks, from 0. 0 if the file does not say; the files that
    /// this plug-in writes never do.
    virtual void SetIndex(kelcore::uint32 index) = 0;
    /// Whether the track is selected.
    virtual void SetSelected(bool selected) = 0;
    /// The colour's hue, the host's number. -1 if the file does not say.
    virtual void SetHue(double hue) = 0;
    /// Whether the track is folded to its smallest height.
    virtual void SetMinimized(bool minimized) = 0;
    /// The track's name.
    virtual void SetName(const kelcore::char16* name) = 0;
    /// The track's height, the host's number. 0 if the file does not say.
    virtual void SetHeight(kelcore::int32 height) = 0;
    /// A new clip on this track. Null: what the file says about the clip is dropped.
    virtual IEditVideoClip* CreateVideoClip(kelcore::uint32 id) = 0;

protected:
    ~IEditVideoTrack() = default;
};

/// A video track. From `IQuerySession::GetVideoTrack`. Units are those of `IEditVideoTrack`.
struct IQueryVideoTrack : IHostObject {
    /// The id, unique among the session's tracks of all kinds.
    virtual kelcore::uint32 GetId() = 0;
    /// Whether the track is selected.
    virtual bool IsSelected() = 0;
    /// The colour's hue, the host's number.
    virtual double GetHue() = 0;
    /// The track's name. Null: stored as empty.
    virtual IHostString* GetName() = 0;
    /// The track's height, the host's number.
    virtual kelcore::int32 GetHeight() = 0;
    /// Whether the track is folded to its smallest height.
    virtual bool IsMinimized() = 0;
    /// How many video clips there are.
    virtual kelcore::uint32 GetVideoClipCount() = 0;
    /// A video clip. Null: skipped.
    virtual IQueryVideoClip* GetVideoClip(kelcore::uint32 index) = 0;

protected:
    ~IQueryVideoTrack() = default;
};

}  // namespace tses
