#pragma once

#include <iosfwd>
#include <optional>
#include <vector>

#include "platform/kelcore/Types.h"
#include "reference_host/model/AudioTrack.h"

namespace refhost::model {

/// The musical timeline. The layout of its events is the host's own.
struct GlobalTrackInfo {
    bool timeSigVisible = false;
    bool keySigVisible = false;
    bool tempoVisible = false;
    std::vector<kelcore::byte> tempoEvents{};
    std::vector<kelcore::byte> timeSignatureEvents{};
    std::vector<kelcore::byte> keySignatureEvents{};

    friend bool operator==(const GlobalTrackInfo&, const GlobalTrackInfo&) = default;
};

struct Metronome {
    bool enabled = false;
    /// 0 and 1 african, 2 beeps, 3 cymbals, 4 kit, 5 to 7 latin, 8 sticks, 9 tabla.
    kelcore::uint32 soundSet = 8;
    /// The beats of a bar: 0 silent, 1 down beat, 2 up beat, 3 subdivision.
    std::vector<kelcore::uint32> pattern{};
    std::optional<AudioTrack> track{};
    std::optional<GlobalTrackInfo> globalTrackInfo{};

    friend bool operator==(const Metronome&, const Metronome&) = default;
};

/// Print the JSON form.
std::ostream& operator<<(std::ostream& out, const GlobalTrackInfo& info);
std::ostream& operator<<(std::ostream& out, const Metronome& metronome);

}  // namespace refhost::model
