#pragma once

#include <cstdint>
#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <orvo/Api.h>
#include <orvo/Effects.h>
#include <orvo/Ids.h>

namespace orvo {

/// The curve of a fade. A value that has no name here is kept as it is.
enum class FadeType : std::uint32_t { Logarithmic = 0, Cosine = 1 };

/// How the two fades of a crossfade move together. A value that has no name here is kept as it is.
enum class CrossFadeLink : std::uint32_t { Symmetric = 0, Asymmetric = 1 };

/// When a clip is stretched. A value that has no name here is kept as it is.
enum class StretchMode : std::uint32_t {
    Off = 0,
    Realtime = 1,  ///< during playback
    Rendered = 2
};

/// The stretching algorithm. A value that has no name here is kept as it is.
enum class StretchType : std::uint32_t { Normal = 0, Solo = 1, Varispeed = 2 };

/// A value that has no name here is kept as it is.
enum class StretchQuality : std::uint32_t { High = 0, Medium = 1, Low = 2 };

/// The fade at one end of a clip. The points are in samples.
struct Fade {
    std::int64_t startPoint = 0;
    std::int64_t endPoint = 0;
    FadeType type = FadeType::Logarithmic;
    std::int32_t shape = 0;  ///< the host's number
    CrossFadeLink crossFadeLinkType = CrossFadeLink::Symmetric;

    friend bool operator==(const Fade&, const Fade&) = default;
};

/// How a clip is stretched in time and shifted in pitch.
struct ClipStretch {
    StretchMode stretchMode = StretchMode::Off;
    StretchType stretchType = StretchType::Normal;
    double stretchRatio = 1;     ///< the host's number
    double pitchAdjustment = 0;  ///< the host's number
    StretchQuality stretchQuality = StretchQuality::High;
    std::int32_t transientSensitivity = 40;  ///< the host's number
    std::int32_t adaptiveWindowSize = 37;    ///< the host's number
    bool preserveFormants = true;

    friend bool operator==(const ClipStretch&, const ClipStretch&) = default;
};

/// A region of a media file on a track.
struct AudioClip {
    std::uint32_t id = 0;  ///< unique in the session by intent; nothing enforces it
    std::uint32_t fileId = kNoId;
    std::int64_t sourceInPoint = 0;
    std::int64_t duration = 0;
    std::int64_t startPoint = 0;
    double hue = 0;  ///< the host's number
    std::string name{};
    bool looped = false;
    bool offline = false;
    bool selected = false;
    bool lockedInTime = false;
    std::int32_t zOrder = 0;  ///< the host's number
    bool autoCrossfade = true;
    std::int32_t crossFadeHeadClipId = kNone;
    std::int32_t crossFadeTailClipId = kNone;
    std::optional<Fade> fadeIn{};
    std::optional<Fade> fadeOut{};
    std::optional<ClipStretch> stretch{};
    std::vector<std::int64_t> takes{};  ///< the first sample of each in the file
    std::optional<Component> gain{};
    std::optional<Component> mute{};
    std::optional<Component> pan{};
    std::optional<EffectsRack> effectsRack{};
    std::vector<EditParameter> editParameters{};
    std::optional<std::string> properties{};  ///< what the host keeps with the clip
    /// Which channel of the file feeds a channel of the clip. One that is left out is fed by the
    /// channel of its own number.
    std::map<std::uint32_t, std::int32_t> channelSources{};

    friend bool operator==(const AudioClip&, const AudioClip&) = default;
};

/// Print the value's word, or its number if it has none.
ORVO_API std::ostream& operator<<(std::ostream& out, FadeType type);
ORVO_API std::ostream& operator<<(std::ostream& out, CrossFadeLink link);
ORVO_API std::ostream& operator<<(std::ostream& out, StretchMode mode);
ORVO_API std::ostream& operator<<(std::ostream& out, StretchType type);
ORVO_API std::ostream& operator<<(std::ostream& out, StretchQuality quality);

/// Print the JSON form.
ORVO_API std::ostream& operator<<(std::ostream& out, const Fade& fade);
ORVO_API std::ostream& operator<<(std::ostream& out, const ClipStretch& stretch);
ORVO_API std::ostream& operator<<(std::ostream& out, const AudioClip& clip);

}  // namespace orvo
