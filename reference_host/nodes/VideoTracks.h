#pragma once

#include "host/VideoTracks.h"
#include <orvo/VideoTrack.h>
#include "host/VideoClips.h"
#include "reference_host/Node.h"

namespace refhost {

class EditVideoFormat final : public Face<tses::IEditVideoFormat, orvo::VideoFormat> {
public:
    using Face::Face;

    void SetFrameTiming(kelcore::int64 timeScale, kelcore::int64 sampleSize) override {
        Value().timeScale = timeScale;
        Value().sampleSize = sampleSize;
    }
    void SetPixelType(kelcore::int32 type) override { Value().pixelType = type; }
    void SetDimensions(kelcore::int32 width, kelcore::int32 height) override {
        Value().width = width;
        Value().height = height;
    }
    void SetPixelAspectRatio(kelcore::uint32 numerator, kelcore::uint32 denominator) override {
        Value().parNumerator = numerator;
        Value().parDenominator = denominator;
    }
    void SetFieldType(kelcore::uint32 type) override { Value().fieldType = type; }
};

class QueryVideoFormat final : public Face<tses::IQueryVideoFormat, orvo::VideoFormat> {
public:
    using Face::Face;

    kelcore::int64 GetTimeScale() override { return Value().timeScale; }
    kelcore::int64 GetSampleSize() override { return Value().sampleSize; }
    kelcore::int32 GetPixelType() override { return Value().pixelType; }
    kelcore::int32 GetHeight() override { return Value().height; }
    kelcore::int32 GetWidth() override { return Value().width; }
    kelcore::uint32 GetParNumerator() override { return Value().parNumerator; }
    kelcore::uint32 GetParDenominator() override { return Value().parDenominator; }
    kelcore::uint32 GetFieldType() override { return Value().fieldType; }
};

using VideoFormatNode = TwoFacedNode<orvo::VideoFormat, EditVideoFormat, QueryVideoFormat>;

class EditVideoClip final : public Face<tses::IEditVideoClip, orvo::VideoClip> {
public:
    using Face::Face;

    void SetFileID(kelcore::uint32 fileId) override { Value().fileId = fileId; }
    void SetSourceInPoint(kelcore::int64 sample) override { Value().sourceInPoint = sample; }
    void SetDuration(kelcore::int64 samples) override { Value().duration = samples; }
    void SetStartPoint(kelcore::int64 sample) override { Value().startPoint = sample; }
    void SetHue(double hue) override { Value().hue = hue; }
    void SetName(const kelcore::char16* name) override { Value().name = kelcore::UTF16to8(name); }
    void SetOffline(bool offline) override { Value().offline = offline; }
    void SetSelected(bool selected) override { Value().selected = selected; }
    void SetZOrder(kelcore::int32 order) override { Value().zOrder = order; }
    void SetLockedInTime(bool locked) override { Value().lockedInTime = locked; }
    tses::IEditVideoFormat* GetVideoFormat() override {
        return Made<VideoFormatNode, &orvo::VideoClip::format>();
    }
};

class QueryVideoClip final : public Face<tses::IQueryVideoClip, orvo::VideoClip> {
public:
    using Face::Face;

    kelcore::uint32 GetID() override { return Value().id; }
    kelcore::uint32 GetFileID() override { return Value().fileId; }
    kelcore::int64 GetSourceInPoint() override { return Value().sourceInPoint; }
    kelcore::int64 GetDuration() override { return Value().duration; }
    kelcore::int64 GetStartPoint() override { return Value().startPoint; }
    double GetHue() override { return Value().hue; }
    tses::IHostString* GetName() override { return GiveOut(Value().name); }
    bool GetOffline() override { return Value().offline; }
    bool GetSelected() override { return Value().selected; }
    kelcore::int32 GetZOrder() override { return Value().zOrder; }
    bool GetLockedInTime() override { return Value().lockedInTime; }
    tses::IQueryVideoFormat* GetVideoFormat() override {
        return Found<VideoFormatNode, &orvo::VideoClip::format>();
    }
};

using VideoClipNode = TwoFacedNode<orvo::VideoClip, EditVideoClip, QueryVideoClip>;

class EditVideoTrack final : public Face<tses::IEditVideoTrack, orvo::VideoTrack> {
public:
    using Face::Face;

    void SetIndex(kelcore::uint32 index) override { Value().index = index; }
    void SetSelected(bool selected) override { Value().selected = selected; }
    void SetHue(double hue) override { Value().hue = hue; }
    void SetMinimized(bool minimized) override { Value().minimized = minimized; }
    void SetName(const kelcore::char16* name) override { Value().name = kelcore::UTF16to8(name); }
    void SetHeight(kelcore::int32 height) override { Value().height = height; }
    tses::IEditVideoClip* CreateVideoClip(kelcore::uint32 id) override {
        tses::IEditVideoClip* const clip = Appended<VideoClipNode, &orvo::VideoTrack::clips>();
        Value().clips.back().id = id;
        return clip;
    }
};

class QueryVideoTrack final : public Face<tses::IQueryVideoTrack, orvo::VideoTrack> {
public:
    using Face::Face;

    kelcore::uint32 GetId() override { return Value().id; }
    bool IsSelected() override { return Value().selected; }
    double GetHue() override { return Value().hue; }
    tses::IHostString* GetName() override { return GiveOut(Value().name); }
    kelcore::int32 GetHeight() override { return Value().height; }
    bool IsMinimized() override { return Value().minimized; }
    kelcore::uint32 GetVideoClipCount() override { return CountOf(Value().clips); }
    tses::IQueryVideoClip* GetVideoClip(kelcore::uint32 index) override {
        return FoundAt<VideoClipNode, &orvo::VideoTrack::clips>(index);
    }
};

using VideoTrackNode = TwoFacedNode<orvo::VideoTrack, EditVideoTrack, QueryVideoTrack>;

}  // namespace refhost
