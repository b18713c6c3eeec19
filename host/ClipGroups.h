#pragma once

#include "host/HostObject.h"

namespace tses {

/// Clips that are edited as one. From `IEditSession::CreateClipGroup`.
struct IEditClipGroup : IHostObject {
    /// One more member, by the ids of its track and of the clip. Either need not exist; 0 if the
    /// file does not say.
    virtual void AddItem(kelcore::uint32 trackId, kelcore::uint32 clipId) = 0;
    /// The colour's hue, the host's number. 0 if the file does not say.
    virtual void SetHue(double hue) = 0;
    /// The group's name. Called last; empty if the file does not say.
    virtual void SetName(const kelcore::char16* name) = 0;

protected:
    ~IEditClipGroup() = default;
};

/// Clips that are edited as one. From `IQuerySession::GetClipGroup`.
struct IQueryClipGroup : IHostObject {
    /// How many members there are.
    virtual kelcore::uint32 GetItemCount() = 0;
    /// A member, by the ids of its track and of the clip. The outputs are 0 before the call.
    virtual void GetItem(kelcore::uint32 index, kelcore::uint32& trackId,
                         kelcore::uint32& clipId) = 0;
    /// The group's name. Null: stored as empty.
    virtual IHostString* GetName() = 0;
    /// The colour's hue, the host's number.
    virtual double GetHue() = 0;
    /// The group's id.
    virtual kelcore::uint32 GetID() = 0;

protected:
    ~IQueryClipGroup() = default;
};

}  // namespace tses
