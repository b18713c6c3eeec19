#pragma once

#include "host/HostObject.h"

namespace tses {

struct IEditAudioTrack;
struct IQueryAudioTrack;
struct IEditGlobalTrackInfo;
struct IQueryGlobalTrackInfo;

/// The metronome's settings. From `IEditSession::GetMetronomeInfo`.
struct IEditMetronomeInfo : IHostObject {
    /// Whether the metronome is on. False if the file does not say.
    virtual void SetEnabled(bool enabled) = 0;
    /// The sounds: 0 and 1 african, 2 beeps, 3 cymbals, 4 kit, 5 to 7 latin, 8 sticks, 9 tabla. 8
    /// if the file does not say.
    virtual void SetSoundSet(kelcore::uint32 soundSet) = 0;
    /// The `count` beats of a bar: 0 silent, 1 down beat, 2 up beat, 3 subdivision. Called only
    /// with at least one; the count need not fit the time signature.
    virtual void SetPattern(const kelcore::uint32* beats, kelcore::uint32 count) = 0;
    /// The track that the metronome plays on. Null, or an object that does not cast to
    /// `IEditAudioTrackPrivate`: a file with such a track fails to read.
    virtual IEditAudioTrack* GetTrack() = 0;

protected:
    ~IEditMetronomeInfo() = default;
};

/// The rest of the metronome. The plug-in casts `IEditMetronomeInfo` to it.
struct IEditMetronomeInfoPrivate : IEditMetronomeInfo {
    /// The session's musical timeline. Null, as when the cast fails: what the file says about it is
    /// dropped.
    virtual IEditGlobalTrackInfo* GetGlobalTrackInfo() = 0;

protected:
    ~IEditMetronomeInfoPrivate() = default;
};

/// The metronome's settings. From `IQuerySession::GetMetronomeInfo`. Codes are those of
/// `IEditMetronomeInfo`.
struct IQueryMetronomeInfo : IHostObject {
    /// Whether the metronome is on.
    virtual bool IsEnabled() = 0;
    /// The sounds. A value beyond 9 is not stored.
    virtual kelcore::uint32 GetSoundSet() = 0;
    /// How many beats a bar has.
    virtual kelcore::uint32 GetPatternLength() = 0;
    /// A beat of the bar. A value beyond 3 is left out.
    virtual kelcore::uint32 GetPatternBeat(kelcore::uint32 index) = 0;
    /// The track that the metronome plays on. Null, or an object that does not cast to
    /// `IQueryAudioTrackPrivate`: not stored.
    virtual IQueryAudioTrack* GetMetronomeTrack() = 0;

protected:
    ~IQueryMetronomeInfo() = default;
};

/// The rest of the metronome. The plug-in casts `IQueryMetronomeInfo` to it.
struct IQueryMetronomeInfoPrivate : IQueryMetronomeInfo {
    /// The session's musical timeline. Null, as when the cast fails: not stored.
    virtual IQueryGlobalTrackInfo* GetGlobalTrackInfo() = 0;

protected:
    ~IQueryMetronomeInfoPrivate() = default;
};

}  // namespace tses
