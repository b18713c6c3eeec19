#pragma once

#include "host/HostObject.h"

namespace tses {

/// The fade at one end of an audio clip, or its side of a crossfade. From
/// `IEditAudioClip::GetFadeIn` or `GetFadeOut`; all five operations are called, in this order.
struct IEditClipFade : IHostObject {
    /// Where the fade begins, in samples.
    virtual void SetStartPoint(kelcore::int64 sample) = 0;
    /// Where the fade ends, in samples.
    virtual void SetEndPoint(kelcore::int64 sample) = 0;
    /// The family of the curve: 0 logarithmic, 1 cosine.
    virtual void SetType(kelcore::uint32 type) = 0;
    /// The curve within its family; the host's number.
    virtual void SetShape(kelcore::int32 shape) = 0;
    /// How the two sides of a crossfade are edited together: 0 symmetrically, 1 asymmetrically.
    virtual void SetCrossFadeLinkType(kelcore::uint32 type) = 0;

protected:
    ~IEditClipFade() = default;
};

/// The fade at one end of an audio clip. From `IQueryAudioClip::GetFadeIn` or `GetFadeOut`. Units
/// and codes are those of `IEditClipFade`; a code beyond 1 is stored as 1.
struct IQueryClipFade : IHostObject {
    /// Where the fade begins, in samples.
    virtual kelcore::int64 GetStartPoint() = 0;
    /// Where the fade ends, in samples.
    virtual kelcore::int64 GetEndPoint() = 0;
    /// The family of the curve: 0 logarithmic, 1 cosine.
    virtual kelcore::uint32 GetType() = 0;
    /// The curve within its family.
    virtual kelcore::int32 GetShape() = 0;
    /// How the two sides of a crossfade are edited together: 0 symmetrically, 1 asymmetrically.
    virtual kelcore::uint32 GetCrossFadeLinkType() = 0;

protected:
    ~IQueryClipFade() = default;
};

}  // namespace tses
