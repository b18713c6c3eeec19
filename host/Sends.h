#pragma once

#include "host/HostObject.h"

namespace tses {

struct IEditComponent;
struct IQueryComponent;

/// One feed from a track to another track. From `IEditSendList::AddSlot`.
struct IEditSendSlot : IHostObject {
    /// The send's place among the track's sends, from 0. Called first.
    virtual void SetSlotIndex(kelcore::uint32 slotIndex) = 0;
    /// The id of the track that is fed, or -1. Not called if the file does not say.
    virtual void SetSendOutputId(kelcore::int32 trackId) = 0;
    /// Whether the signal is taken before the fader. Not called if the file does not say.
    virtual void SetPreFader(bool preFader) = 0;
    /// The component of the send's level. `id`: "sendComponent".
    virtual IEditComponent* GetSendComponent(const kelcore::char16* id) = 0;
    /// The component of the send's panner. `id`: "sendPan".
    virtual IEditComponent* GetPanComponent(const kelcore::char16* id) = 0;
    /// Which component of the destination is fed. Not called if the file does not say.
    virtual void SetDestCompIndex(kelcore::int32 index) = 0;

protected:
    ~IEditSendSlot() = default;
};

/// The sends of a track. From `IEditAudioTrackPrivate::GetSendList`.
struct IEditSendList : IHostObject {
    /// A new send, after the existing ones.
    virtual IEditSendSlot* AddSlot() = 0;

protected:
    ~IEditSendList() = default;
};

/// One feed from a track to another track. From `IQuerySendList::GetSlot`.
struct IQuerySendSlot : IHostObject {
    /// The send's place among the track's sends.
    virtual kelcore::uint32 GetSlotIndex() = 0;
    /// The id of the track that is fed.
    virtual kelcore::int32 GetSendOutputId() = 0;
    /// Whether the signal is taken before the fader.
    virtual bool IsPreFader() = 0;
    /// The component of the send's level.
    virtual IQueryComponent* GetSendComponent() = 0;
    /// The component of the send's panner.
    virtual IQueryComponent* GetPanComponent() = 0;
    /// Which component of the destination is fed. Negative: not stored.
    virtual kelcore::int32 GetDestCompIndex() = 0;

protected:
    ~IQuerySendSlot() = default;
};

/// The sends of a track. From `IQueryAudioTrackPrivate::GetSendList`.
struct IQuerySendList : IHostObject {
    /// How many sends there are.
    virtual kelcore::uint32 GetSlotCount() = 0;
    /// A send. Null: skipped.
    virtual IQuerySendSlot* GetSlot(kelcore::uint32 index) = 0;

protected:
    ~IQuerySendList() = default;
};

}  // namespace tses
