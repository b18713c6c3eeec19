#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <orvo/Model.h>
#include "platform/kelcore/Types.h"

namespace toolkit {

/// The amount of automation. A lane without keyframes does not count, because no file keeps it.
struct AutomationCount {
    std::size_t lanes = 0;
    std::size_t keyframes = 0;

    AutomationCount& operator+=(const AutomationCount& other);
    friend bool operator==(const AutomationCount&, const AutomationCount&) = default;
};

/// An effect in a rack.
struct EffectSummary {
    kelcore::uint32 slotIndex = 0;
    std::string name;  ///< the component's name, else its id; empty: an empty slot
    std::string preset;
    bool bypassed = false;
    std::size_t parameters = 0;
    std::size_t presetBytes = 0;
    kelcore::uint32 sideChainChannels = 0;  ///< 0: nothing keys it
    AutomationCount automation;

    friend bool operator==(const EffectSummary&, const EffectSummary&) = default;
};

/// A send and where it goes.
struct SendSummary {
    std::string destination;
    std::optional<kelcore::int32> component;  ///< of the destination's effects, if it feeds one
    bool preFader = false;
    AutomationCount automation;

    friend bool operator==(const SendSummary&, const SendSummary&) = default;
};

/// One track, of any kind, as a person wants to see it.
struct TrackSummary {
    std::optional<orvo::TrackKind> kind;  ///< no value: a video track
    kelcore::uint32 id = 0;
    std::string name;
    orvo::ChannelType audioChannelType = orvo::ChannelType::NotSaid;
    std::string output;     ///< the track or port that it goes to, by name; empty: nowhere
    std::string input;      ///< the port that it records from, by name; empty: none
    std::string midiInput;  ///< the MIDI inputs that an instrument hears; empty: none
    bool solo = false;
    bool soloSafe = false;
    bool recordArmed = false;
    bool monitoring = false;
    bool phaseInverted = false;
    bool sumToMono = false;
    bool preRendered = false;
    bool muted = false;  ///< its mute component's parameter is on
    bool visible = true;
    std::vector<SendSummary> sends;
    std::vector<EffectSummary> effects;
    std::vector<orvo::VideoFormat> pictures;  ///< each format of a video track's clips
    std::size_t clips = 0;
    AutomationCount automation;  ///< of everything in the track, its clips included

    friend bool operator==(const TrackSummary&, const TrackSummary&) = default;
};

/// What a track is called in tables and JSON: "video", or its kind's word.
std::string KindName(const std::optional<orvo::TrackKind>& kind);

/// The video tracks, the other tracks and the metronome's, each side in its order.
std::vector<TrackSummary> SummariseTracks(const orvo::Session& session);

/// The effects in a rack.
std::vector<EffectSummary> SummariseEffects(const std::optional<orvo::EffectsRack>& rack);

/// From here the parameter of a switch, such as a mute, means on.
inline constexpr float kOnFrom = 0.5F;

/// Whether a control that is a switch is on.
bool IsSwitchedOn(const std::optional<orvo::Component>& component);

/// The automation of a clip's own controls and effects.
AutomationCount CountAutomation(const orvo::AudioClip& clip);

}  // namespace toolkit
