#pragma once

#include "host/HostObject.h"

namespace tses {

/// The session's musical timeline: its rulers and their events, whose layout is the host's own.
/// From `IEditMetronomeInfoPrivate::GetGlobalTrackInfo`. What the file does not say is not called;
/// blocks have at least one byte.
struct IEditGlobalTrackInfo : IHostObject {
    /// Whether the ruler of time signatures is shown.
    virtual void SetTimeSigVisible(bool visible) = 0;
    /// Whether the ruler of key signatures is shown.
    virtual void SetKeySigVisible(bool visible) = 0;
    /// Whether the ruler of tempi is shown.
    virtual void SetTempoVisible(bool visible) = 0;
    virtual void SetTempoEvents(const kelcore::byte* data, kelcore::uint32 size) = 0;
    virtual void SetTimeSignatureEvents(const kelcore::byte* data, kelcore::uint32 size) = 0;
    virtual void SetKeySignatureEvents(const kelcore::byte* data, kelcore::uint32 size) = 0;

protected:
    ~IEditGlobalTrackInfo() = default;
};

/// The session's musical timeline. From `IQueryMetronomeInfoPrivate::GetGlobalTrackInfo`. Each
/// block is asked for its size in bytes (0: not stored), then filled into a buffer of that size
/// (false: not stored).
struct IQueryGlobalTrackInfo : IHostObject {
    virtual bool GetTimeSigVisible() = 0;
    virtual bool GetKeySigVisible() = 0;
    virtual bool GetTempoVisible() = 0;
    virtual kelcore::uint32 GetTempoEventsSize() = 0;
    virtual bool GetTempoEvents(kelcore::byte* buffer) = 0;
    virtual kelcore::uint32 GetTimeSignatureEventsSize() = 0;
    virtual bool GetTimeSignatureEvents(kelcore::byte* buffer) = 0;
    virtual kelcore::uint32 GetKeySignatureEventsSize() = 0;
    virtual bool GetKeySignatureEvents(kelcore::byte* buffer) = 0;

protected:
    ~IQueryGlobalTrackInfo() = default;
};

}  // namespace tses
