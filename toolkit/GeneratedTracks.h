#pragma once

#include <string_view>
#include <vector>

#include <orvo/AudioTrack.h>
#include <orvo/VideoTrack.h>
#include "platform/kelcore/Types.h"
#include "toolkit/Dice.h"
#include "toolkit/GeneratedSession.h"

// The tracks of a generated session. Only GeneratedSession.cpp includes this.

namespace toolkit {

inline constexpr kelcore::uint32 kGeneratedSampleRate = 48000;

/// What tracks refer to.
struct Routing {
    kelcore::uint32 masterId = 0;
    std::vector<kelcore::uint32> busIds{};
    kelcore::uint32 files = 1;  ///< their ids count from 1
};

/// Makes tracks one after the other; the ids of clips continue from track to track.
class TrackMaker {
public:
    /// All three must outlive the maker.
    TrackMaker(const GeneratedSize& size, const Routing& routing, Dice& dice)
        : size_(size), routing_(routing), dice_(dice) {}

    orvo::AudioTrack MakeTrack(kelcore::uint32 id, kelcore::uint32 index, orvo::TrackKind kind);
    orvo::VideoTrack MakeVideoTrack(kelcore::uint32 id);

    /// The sample after the end of all clips so far.
    kelcore::int64 End() const { return end_; }

private:
    orvo::AudioClip MakeClip(kelcore::int64& cursor, std::string_view track);
    orvo::MidiClip MakeMidiClip(kelcore::int64& cursor);
    orvo::VideoClip MakeVideoClip(kelcore::int64& cursor);
    static orvo::Component MakeControl(std::string_view id, std::string_view name, double value);
    orvo::Component MakeFader();
    orvo::AutomationLane MakeLane(kelcore::int32 low, kelcore::int32 high);
    orvo::Component MakeEffect();
    orvo::EffectsRack MakeRack();
    orvo::SendList MakeSends();
    void AddOccasionalTraits(orvo::AudioClip& clip);

    const GeneratedSize& size_;
    const Routing& routing_;
    Dice& dice_;
    kelcore::uint32 nextClipId_ = 1;
    kelcore::int64 end_ = 0;
};

}  // namespace toolkit
