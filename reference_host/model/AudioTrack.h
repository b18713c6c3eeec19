#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "platform/kelcore/Types.h"
#include "reference_host/model/AudioClip.h"
#include "reference_host/model/Effects.h"
#include "reference_host/model/MidiClip.h"
#include "reference_host/model/Sends.h"

namespace refhost::model {

/// What only instrument tracks have.
struct InstrumentTrack {
    std::u16string midiIn{};  ///< the MIDI input by name; empty: none
    bool midiAll = false;     ///< all MIDI inputs are heard

    friend bool operator==(const InstrumentTrack&, const InstrumentTrack&) = default;
};

/// A track of the audio side: audio, bus, master, metronome or instrument.
struct AudioTrack {
    kelcore::uint32 id = 0;
    kelcore::uint32 index = 0;  ///< its place in the list of tracks
    kelcore::uint32 kind = 1;   ///< 1 audio, 2 bus, 3 master, 4 metronome, 5 instrument
    std::u16string name{};
    double hue = -1;            ///< the host's number
    kelcore::int32 height = 0;  ///< the host's number
    bool selected = false;
    bool minimized = false;
    bool visible = true;
    bool automationLaneOpen = false;
    bool phaseInverted = false;
    bool preRendered = false;  ///< the file below is played in place of clips and effects
    std::u16string preRenderedFile{};
    bool sumToMono = false;
    kelcore::uint32 audioChannelType = 0;  ///< 1 mono, 2 stereo, 6 for 5.1; 0: not said
    bool solo = false;
    bool recordArmed = false;
    bool monitoring = false;
    bool soloSafe = false;                 ///< heard while another track is solo
    kelcore::int32 outputTrackId = -1;     ///< the track that this one feeds; -1: none
    kelcore::int32 inputId = -1;           ///< a port's id; -1: none
    kelcore::int32 hardwareOutputId = -1;  ///< a port's id; -1: none
    kelcore::int32 automationMode = 1;
    std::optional<InstrumentTrack> instrument{};
    std::optional<Component> fader{};
    std::optional<Component> mute{};
    std::optional<Component> pan{};
    std::optional<Component> eq{};
    std::optional<EffectsRack> effectsRack{};
    std::vector<EditParameter> editParameters{};
    std::optional<SendList> sendList{};
    std::vector<AudioClip> clips{};
    std::vector<MidiClip> midiClips{};
    /// A host may show nothing of a track but its clips. Such a track is not stored.
    bool clipsOnly = false;

    friend bool operator==(const AudioTrack&, const AudioTrack&) = default;
};

/// Print the JSON form.
std::ostream& operator<<(std::ostream& out, const InstrumentTrack& instrument);
std::ostream& operator<<(std::ostream& out, const AudioTrack& track);

}  // namespace refhost::model
