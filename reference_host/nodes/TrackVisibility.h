#pragma once

#include "host/TrackVisibility.h"
#include <orvo/TrackVisibility.h>
#include "reference_host/Node.h"

namespace refhost {

class EditVisibilityPreset final
    : public Face<tses::IEditTrackVisibilityPreset, orvo::TrackVisibilityPreset> {
public:
    using Face::Face;

    void SetId(kelcore::uint32 id) override { Value().id = id; }
    void SetName(const kelcore::char16* name) override { Value().name = kelcore::UTF16to8(name); }
    void AddTrack(kelcore::uint32 trackId, float height, bool minimized) override {
        Value().tracks.push_back({trackId, height, minimized});
    }
};

class QueryVisibilityPreset final
    : public Face<tses::IQueryTrackVisibilityPreset, orvo::TrackVisibilityPreset> {
public:
    using Face::Face;

    kelcore::uint32 GetId() override { return Value().id; }
    tses::IHostString* GetName() override { return GiveOut(Value().name); }
    kelcore::uint32 GetTrackCount() override { return CountOf(Value().tracks); }
    void GetTrack(kelcore::uint32 index, kelcore::uint32& trackId, float& height,
                  bool& minimized) override {
        const orvo::TrackVisibility& track = Value().tracks.at(index);
        trackId = track.trackId;
        height = track.height;
        minimized = track.minimized;
    }
};

using VisibilityPresetNode =
    TwoFacedNode<orvo::TrackVisibilityPreset, EditVisibilityPreset, QueryVisibilityPreset>;

}  // namespace refhost
