#pragma once

#include "host/HostObject.h"

namespace tses {

/// A named choice of visible tracks. From `IEditSession::CreateTrackVisibilityPreset`.
struct IEditTrackVisibilityPreset : IHostObject {
    /// The preset's id. 0 if the file does not say.
    virtual void SetId(kelcore::uint32 id) = 0;
    /// The preset's name.
    virtual void SetName(const kelcore::char16* name) = 0;
    /// One more visible track. `height`: the host's number. What the file does not say is 0 or
    /// false.
    virtual void AddTrack(kelcore::uint32 trackId, float height, bool minimized) = 0;

protected:
    ~IEditTrackVisibilityPreset() = default;
};

/// A named choice of visible tracks. From `IQuerySession::GetTrackVisibilityPreset`.
struct IQueryTrackVisibilityPreset : IHostObject {
    /// The preset's id.
    virtual kelcore::uint32 GetId() = 0;
    /// The preset's name. Null or empty: not stored.
    virtual IHostString* GetName() = 0;
    /// How many visible tracks there are.
    virtual kelcore::uint32 GetTrackCount() = 0;
    /// A visible track. `height`: the host's number. The outputs are 0 and false before the
    /// call.
    virtual void GetTrack(kelcore::uint32 index, kelcore::uint32& trackId, float& height,
                          bool& minimized) = 0;

protected:
    ~IQueryTrackVisibilityPreset() = default;
};

}  // namespace tses
