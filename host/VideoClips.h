#pragma once

#include "host/HostObject.h"

namespace tses {

/// The format of a clip's video. From `IEditVideoClip::GetVideoFormat`; all five operations are
/// called, in this order.
struct IEditVideoFormat : IHostObject {
    /// A frame lasts `sampleSize` units; a second has `timeScale` of them. Both are 0 if the file
    /// does not say.
    virtual void SetFrameTiming(kelcore::int64 timeScale, kelcore::int64 sampleSize) = 0;
    /// The host's code of the pixel format, never 0. 1 if the file does not say.
    virtual void SetPixelType(kelcore::int32 type) = 0;
    /// The frame's size in pixels. 0 if the file does not say.
    virtual void SetDimensions(kelcore::int32 width, kelcore::int32 height) = 0;
    /// How wide a pixel is in relation to its height. 0 and 1 if the file does not say.
    virtual void SetPixelAspectRatio(kelcore::uint32 numerator, kelcore::uint32 denominator) = 0;
    /// The host's code for progressive frames or the order of fields. 0 if the file does not say.
    virtual void SetFieldType(kelcore::uint32 type) = 0;

protected:
    ~IEditVideoFormat() = default;
};

/// The format of a clip's video. From `IQueryVideoClip::GetVideoFormat`. Units and codes are those
/// of `IEditVideoFormat`.
struct IQueryVideoFormat : IHostObject {
    /// The units per second of the frame timing.
    virtual kelcore::int64 GetTimeScale() = 0;
    /// How many of these units a frame lasts.
    virtual kelcore::int64 GetSampleSize() = 0;
    /// The host's code of the pixel format.
    virtual kelcore::int32 GetPixelType() = 0;
    /// The frame's height in pixels.
    virtual kelcore::int32 GetHeight() = 0;
    /// The frame's width in pixels.
    virtual kelcore::int32 GetWidth() = 0;
    /// The numerator of the pixel aspect ratio.
    virtual kelcore::uint32 GetParNumerator() = 0;
    /// The denominator of the pixel aspect ratio.
    virtual kelcore::uint32 GetParDenominator() = 0;
    /// The host's code for progressive frames or the order of fields.
    virtual kelcore::uint32 GetFieldType() = 0;

protected:
    ~IQueryVideoFormat() = default;
};

/// A region of a media file's video on a track. From `IEditVideoTrack::CreateVideoClip`.
struct IEditVideoClip : IHostObject {
    /// The id of the media file that is shown.
    virtual void SetFileID(kelcore::uint32 fileId) = 0;
    /// The first sample of the region in the file. -1 if the file does not say.
    virtual void SetSourceInPoint(kelcore::int64 sample) = 0;
    /// Length of the region in samples.
    virtual void SetDuration(kelcore::int64 samples) = 0;
    /// Where the region starts on the timeline. -1 if the file does not say.
    virtual void SetStartPoint(kelcore::int64 sample) = 0;
    /// The colour's hue, the host's number. That of the previous clip if the file does not say.
    virtual void SetHue(double hue) = 0;
    /// The clip's name. That of the previous clip if the file does not say.
    virtual void SetName(const kelcore::char16* name) = 0;
    /// Whether the media is offline.
    virtual void SetOffline(bool offline) = 0;
    /// Whether the clip is selected.
    virtual void SetSelected(bool selected) = 0;
    /// The order among clips that overlap, the host's number.
    virtual void SetZOrder(kelcore::int32 order) = 0;
    /// Whether the clip may not be moved in time.
    virtual void SetLockedInTime(bool locked) = 0;
    /// The format of the video.
    virtual IEditVideoFormat* GetVideoFormat() = 0;

protected:
    ~IEditVideoClip() = default;
};

/// A region of a media file's video on a track. From `IQueryVideoTrack::GetVideoClip`. Units are
/// those of `IEditVideoClip`.
struct IQueryVideoClip : IHostObject {
    /// The id, unique among the session's clips.
    virtual kelcore::uint32 GetID() = 0;
    /// The id of the media file that is shown.
    virtual kelcore::uint32 GetFileID() = 0;
    /// The first sample of the region in the file.
    virtual kelcore::int64 GetSourceInPoint() = 0;
    /// Length of the region in samples.
    virtual kelcore::int64 GetDuration() = 0;
    /// Where the region starts on the timeline.
    virtual kelcore::int64 GetStartPoint() = 0;
    /// The colour's hue, the host's number.
    virtual double GetHue() = 0;
    /// The clip's name. Null: stored as empty.
    virtual IHostString* GetName() = 0;
    /// Whether the media is offline.
    virtual bool GetOffline() = 0;
    /// Whether the clip is selected.
    virtual bool GetSelected() = 0;
    /// The order among clips that overlap, the host's number.
    virtual kelcore::int32 GetZOrder() = 0;
    /// Whether the clip may not be moved in time.
    virtual bool GetLockedInTime() = 0;
    /// The format of the video.
    virtual IQueryVideoFormat* GetVideoFormat() = 0;

protected:
    ~IQueryVideoClip() = default;
};

}  // namespace tses
