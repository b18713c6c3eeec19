#pragma once

#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/kelcore/Types.h"
#include "reference_host/model/Effects.h"

namespace refhost::model {

/// The fade at one end of a clip. The codes are the host's.
struct Fade {
    kelcore::int64 startPoint = 0;
    kelcore::int64 endPoint = 0;
    kelcore::uint32 type = 0;  ///< 0 logarithmic, 1 cosine
    kelcore::int32 shape = 0;
    kelcore::uint32 crossFadeLinkType = 0;  ///< 0 symmetric, 1 asymmetric

    friend bool operator==(const Fade&, const Fade&) = default;
};

/// How a clip is stretched in time and shifted in pitch.
struct ClipStretch {
    kelcore::uint32 stretchMode = 0;  ///< 0 off, 1 during playback, 2 rendered
    kelcore::uint32 stretchType = 0;  ///< 0 normal, 1 solo, 2 varispeed
    double stretchRatio = 1;
    double pitchAdjustment = 0;
    kelcore::uint32 stretchQuality = 0;  ///< 0 high, 1 medium, 2 low
    kelcore::int32 transientSensitivity = 40;
    kelcore::int32 adaptiveWindowSize = 37;
    bool preserveFormants = true;

    friend bool operator==(const ClipStretch&, const ClipStretch&) = default;
};

/// A region of a media file on a track.
struct AudioClip {
    kelcore::uint32 id = 0;
    kelcore::uint32 fileId = 4294967295;
    kelcore::int64 sourceInPoint = 0;
    kelcore::int64 duration = 0;
    kelcore::int64 startPoint = 0;
    double hue = 0;  ///< the host's number
    std::u16string name{};
    bool looped = false;
    bool offline = false;
    bool selected = false;
    bool lockedInTime = false;
    kelcore::int32 zOrder = 0;
    bool autoCrossfade = true;
    kelcore::int32 crossFadeHeadClipId = -1;  ///< -1: none
    kelcore::int32 crossFadeTailClipId = -1;  ///< -1: none
    std::optional<Fade> fadeIn{};
    std::optional<Fade> fadeOut{};
    std::optional<ClipStretch> stretch{};
    std::vector<kelcore::int64> takes{};  ///< the first sample of each in the file
    std::optional<Component> gain{};
    std::optional<Component> mute{};
    std::optional<Component> pan{};
    std::optional<EffectsRack> effectsRack{};
    std::vector<EditParameter> editParameters{};
    std::optional<std::u16string> properties{};  ///< what the host keeps with the clip
    /// Which channel of the file feeds a channel of the clip. One that is left out is fed by the
    /// channel of its own number.
    std::map<kelcore::uint32, kelcore::int32> channelSources{};

    friend bool operator==(const AudioClip&, const AudioClip&) = default;
};

/// Print the JSON form.
std::ostream& operator<<(std::ostream& out, const Fade& fade);
std::ostream& operator<<(std::ostream& out, const ClipStretch& stretch);
std::ostream& operator<<(std::ostream& out, const AudioClip& clip);

}  // namespace refhost::model
