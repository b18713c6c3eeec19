#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <vector>

#include <orvo/Api.h>
#include <orvo/AudioTrack.h>

namespace orvo {

/// The musical timeline. The layout of its events is the host's own.
struct GlobalTrackInfo {
    bool timeSigVisible = false;
    bool keySigVisible = false;
    bool tempoVisible = false;
    std::vector<std::uint8_t> tempoEvents{};
    std::vector<std::uint8_t> timeSignatureEvents{};
    std::vector<std::uint8_t> keySignatureEvents{};

    friend bool operator==(const GlobalTrackInfo&, const GlobalTrackInfo&) = default;
};

/// What the metronome sounds like. A value that has no name here is kept as it is.
enum class SoundSet : std::uint32_t {
    African1 = 0,
    African2 = 1,
    Beeps = 2,
    Cymbals = 3,
    Kit = 4,
    Latin1 = 5,
    Latin2 = 6,
    Latin3 = 7,
    Sticks = 8,
    Tabla = 9
};

/// One beat of the metronome's bar. A value that has no name here is kept as it is.
enum class Beat : std::uint32_t { Silent = 0, DownBeat = 1, UpBeat = 2, Subdivision = 3 };

struct Metronome {
    bool enabled = false;
    SoundSet soundSet = SoundSet::Sticks;
    std::vector<Beat> pattern{};  ///< the beats of a bar
    /// Stored only if its kind is `TrackKind::Metronome`; its id is not stored.
    std::optional<AudioTrack> track{};
    std::optional<GlobalTrackInfo> globalTrackInfo{};

    friend bool operator==(const Metronome&, const Metronome&) = default;
};

/// Print the value's word, or its number if it has none.
ORVO_API std::ostream& operator<<(std::ostream& out, SoundSet soundSet);
ORVO_API std::ostream& operator<<(std::ostream& out, Beat beat);

/// Print the JSON form.
ORVO_API std::ostream& operator<<(std::ostream& out, const GlobalTrackInfo& info);
ORVO_API std::ostream& operator<<(std::ostream& out, const Metronome& metronome);

}  // namespace orvo
