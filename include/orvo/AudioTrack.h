#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include <orvo/Api.h>
#include <orvo/AudioClip.h>
#include <orvo/Effects.h>
#include <orvo/Ids.h>
#include <orvo/MidiClip.h>
#include <orvo/Sends.h>

namespace orvo {

/// A value that has no name here is kept as it is.
enum class TrackKind : std::uint32_t {
    Audio = 1,
    Bus = 2,
    Master = 3,
    Metronome = 4,
    Instrument = 5
};

/// The channels of a track or session; a value is their number. One that has no name here is kept
/// as it is.
enum class ChannelType : std::uint32_t { NotSaid = 0, Mono = 1, Stereo = 2, FivePointOne = 6 };

/// What only instrument tracks have.
struct InstrumentTrack {
    std::string midiIn{};  ///< the MIDI input by name; empty: none
    bool midiAll = false;  ///< all MIDI inputs are heard

    friend bool operator==(const InstrumentTrack&, const InstrumentTrack&) = default;
};

/// A track of the audio side: audio, bus, master, metronome or instrument.
struct AudioTrack {
    std::uint32_t id = 0;
    std::uint32_t index = 0;  ///< its place in the list of tracks
    TrackKind kind = TrackKind::Audio;
    std::string name{};
    double hue = -1;          ///< the host's number
    std::int32_t height = 0;  ///< the host's number
    bool selected = false;
    bool minimized = false;
    bool visible = true;
    bool automationLaneOpen = false;
    bool phaseInverted = false;
    bool preRendered = false;  ///< the file below is played in place of clips and effects
    std::string preRenderedFile{};
    bool sumToMono = false;
    ChannelType audioChannelType = ChannelType::NotSaid;
    bool solo = false;
    bool recordArmed = false;
    bool monitoring = false;
    bool soloSafe = false;                  ///< heard while another track is solo
    std::int32_t outputTrackId = kNone;     ///< the track that this one feeds; stored if above 0
    std::int32_t inputId = kNone;           ///< a port of the audio device
    std::int32_t hardwareOutputId = kNone;  ///< a port of the audio device
    std::int32_t automationMode = 1;        ///< the host's number
    std::optional<InstrumentTrack> instrument{};
    std::optional<Component> fader{};
    std::optional<Component> mute{};
    std::optional<Component> pan{};
    std::optional<Component> eq{};
    std::optional<EffectsRack> effectsRack{};
    std::vector<EditParameter> editParameters{};
    std::optional<SendList> sendList{};
    std::vector<AudioClip> clips{};     ///< not stored for a master or instrument track
    std::vector<MidiClip> midiClips{};  ///< stored for an instrument track only
    /// A host may show nothing of a track but its clips. Such a track is not stored.
    bool clipsOnly = false;

    friend bool operator==(const AudioTrack&, const AudioTrack&) = default;
};

/// Print the value's word, or its number if it has none.
ORVO_API std::ostream& operator<<(std::ostream& out, TrackKind kind);
ORVO_API std::ostream& operator<<(std::ostream& out, ChannelType type);

/// Print the JSON form.
ORVO_API std::ostream& operator<<(std::ostream& out, const InstrumentTrack& instrument);
ORVO_API std::ostream& operator<<(std::ostream& out, const AudioTrack& track);

}  // namespace orvo
