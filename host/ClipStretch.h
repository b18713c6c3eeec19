#pragma once

#include "host/HostObject.h"

namespace tses {

/// How an audio clip is stretched in time and shifted in pitch. From
/// `IEditAudioClip::GetClipStretch`; all eight operations are called, in this order. Values are as
/// the file has them, unchecked.
struct IEditClipStretch : IHostObject {
    /// When the stretch is computed: 0 off, 1 during playback, 2 rendered.
    virtual void SetStretchMode(kelcore::uint32 mode) = 0;
    /// The family of the algorithm: 0 normal, 1 solo, 2 varispeed.
    virtual void SetStretchType(kelcore::uint32 type) = 0;
    /// The stretch ratio. 1 if the file does not say.
    virtual void SetStretchRatio(double ratio) = 0;
    /// The shift of the pitch. 0 if the file does not say; in the host's unit.
    virtual void SetPitchAdjustment(double adjustment) = 0;
    /// The quality: 0 high, 1 medium, 2 low.
    virtual void SetStretchQuality(kelcore::uint32 quality) = 0;
    /// How sensitive the algorithm is to transients. 40 if the file does not say.
    virtual void SetTransientSensitivity(kelcore::int32 sensitivity) = 0;
    /// The algorithm's window of analysis. 37 if the file does not say.
    virtual void SetAdaptiveWindowSize(kelcore::int32 size) = 0;
    /// Whether formants stay when the pitch changes. True if the file does not say.
    virtual void SetPreserveFormants(bool preserve) = 0;

protected:
    ~IEditClipStretch() = default;
};

/// How an audio clip is stretched. From `IQueryAudioClip::GetClipStretch`. Codes are those of
/// `IEditClipStretch`; one beyond 2 is stored as 2.
struct IQueryClipStretch : IHostObject {
    /// When the stretch is computed: 0 off, 1 during playback, 2 rendered.
    virtual kelcore::uint32 GetStretchMode() = 0;
    /// The family of the algorithm: 0 normal, 1 solo, 2 varispeed.
    virtual kelcore::uint32 GetStretchType() = 0;
    /// The stretch ratio.
    virtual double GetStretchRatio() = 0;
    /// The shift of the pitch.
    virtual double GetPitchAdjustment() = 0;
    /// The quality: 0 high, 1 medium, 2 low.
    virtual kelcore::uint32 GetStretchQuality() = 0;
    /// How sensitive the algorithm is to transients.
    virtual kelcore::int32 GetTransientSensitivity() = 0;
    /// The algorithm's window of analysis.
    virtual kelcore::int32 GetAdaptiveWindowSize() = 0;
    /// Whether formants stay when the pitch changes.
    virtual bool GetPreserveFormants() = 0;

protected:
    ~IQueryClipStretch() = default;
};

}  // namespace tses
