#pragma once

#include "host/HostObject.h"

namespace tses {

/// The session's musical timeline: its rulers and their events, whose layout is the host's own.
/// From `IEditMetronomeInfoPrivate::GetGlobalTrackInfo`. An operation is not called if the file
/// does not say its value; blocks have at least one byte.
struct IEditGlobalTrackInfo : IHostObject {
    /// Whether the ruler of time signatures is shown.
    virtual void SetTimeSigVisible(bool visible) = 0;
    /// Whether the ruler of key signatures is shown.
    virtual void SetKeySigVisible(bool visible) = 0;
    /// Whether the ruler of tempi is shown.
    virtual void SetTempoVisible(bool visible) = 0;
    /// The tempo events.
    virtual void SetTempoEvents(const kelcore::byte* data, kelcore::uint32 size) = 0;
    /// The time signature events.
    virtual void SetTimeSignatureEvents(const kelcore::byte* data, kelcore::uint32 size) = 0;
    /// The key signature events.
    virtual void SetKeySignatureEvents(const kelcore::byte* data, kelcore::uint32 size) = 0;

protected:
    ~IEditGlobalTrackInfo() = default;
};

/// The session's musical timeline. From `IQueryMetronomeInfoPrivate::GetGlobalTrackInfo`. Each
/// block is asked for its size in bytes (0: not stored; more than 1 GiB: the save fails), then
/// filled into a buffer of that size (false: not stored).
struct IQueryGlobalTrackInfo : IHostObject {
    /// Whether the ruler of time signatures is shown.
    virtual bool GetTimeSigVisible() = 0;
    /// Whether the ruler of key signatures is shown.
    virtual bool GetKeySigVisible() = 0;
    /// Whether the ruler of tempi is shown.
    virtual bool GetTempoVisible() = 0;
    /// The size of the tempo events in bytes.
    virtual kelcore::uint32 GetTempoEventsSize() = 0;
    /// Fills a buffer of that size with the tempo events.
    virtual bool GetTempoEvents(kelcore::byte* buffer) = 0;
    /// The size of the time signature events in bytes.
    virtual kelcore::uint32 GetTimeSignatureEventsSize() = 0;
    /// Fills a buffer of that size with the time signature events.
    virtual bool GetTimeSignatureEvents(kelcore::byte* buffer) = 0;
    /// The size of the key signature events in bytes.
    virtual kelcore::uint32 GetKeySignatureEventsSize() = 0;
    /// Fills a buffer of that size with the key signature events.
    virtual bool GetKeySignatureEvents(kelcore::byte* buffer) = 0;

protected:
    ~IQueryGlobalTrackInfo() = default;
};

}  // namespace tses
