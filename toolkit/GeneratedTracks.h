#pragma once

#include <string_view>
#include <vector>

#include "platform/kelcore/Types.h"
#include "reference_host/model/AudioTrack.h"
#include "reference_host/model/VideoTrack.h"
#include "toolkit/Dice.h"
#include "toolkit/GeneratedSession.h"

// The tracks of a generated session. Only GeneratedSession.cpp includes this.

namespace toolkit {

inline constexpr kelcore::uint32 kGeneratedSampleRate = 48000;

/// The codes are those of `AudioTrack::kind`.
enum class TrackKind : kelcore::uint32 { Audio = 1, Bus = 2, Master = 3, Instrument = 5 };

/// What tracks refer to.
struct Routing {
    kelcore::uint32 masterId = 0;
    std::vector<kelcore::uint32> busIds{};
    kelcore::uint32 files = 1;  ///< their ids count from 1
};

/// Makes tracks one after the other; ids of clips go on from track to track.
class TrackMaker {
public:
    /// All three must outlive the maker.
    TrackMaker(const GeneratedSize& size, const Routing& routing, Dice& dice)
        : size_(size), routing_(routing), dice_(dice) {}

    refhost::model::AudioTrack MakeTrack(kelcore::uint32 id, kelcore::uint32 index, TrackKind kind);
    refhost::model::VideoTrack MakeVideoTrack(kelcore::uint32 id);

    /// The sample after the last one of all clips so far.
    kelcore::int64 End() const { return end_; }

private:
    refhost::model::AudioClip MakeClip(kelcore::int64& cursor, std::u16string_view track);
    refhost::model::MidiClip MakeMidiClip(kelcore::int64& cursor);
    refhost::model::VideoClip MakeVideoClip(kelcore::int64& cursor);
    refhost::model::Component MakeControl(std::u16string_view id, std::u16string_view name,
                                          double value);
    refhost::model::Component MakeFader();
    refhost::model::AutomationLane MakeLane(kelcore::int32 low, kelcore::int32 high);
    refhost::model::Component MakeEffect();
    refhost::model::EffectsRack MakeRack();
    refhost::model::SendList MakeSends();
    void AddOccasionalTraits(refhost::model::AudioClip& clip);

    const GeneratedSize& size_;
    const Routing& routing_;
    Dice& dice_;
    kelcore::uint32 nextClipId_ = 1;
    kelcore::int64 end_ = 0;
};

}  // namespace toolkit
