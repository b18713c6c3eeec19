#pragma once

#include <optional>
#include <string_view>

#include "format/Names.h"
#include "format/Rows.h"

// How a track sounds and where it goes:
//
//     <trackAudioParameters audioChannelType="stereo" automationMode="1" monitoring="false"
//                           recordArmed="false" solo="false" soloSafe="true">
//       <trackOutput outputID="2" type="trackID"/>
//       <trackInput inputID="1"/>
//       <component id="trackFader"/> <component id="trackMute"/>
//       <component id="trackPan"/> <component id="trackEQ"/>
//     </trackAudioParameters>
//
// Its switches are on for "true" and for "1", while a track's own are on only for "true". "volume"
// and "mute" of old files mean nothing: the fader and mute components carry them. The pan of old
// files means nothing either. It has an element of its own:
//
//     <trackPanner angle="0" panLeftRight="-0.3" radius="1" stereoSpread="0"> ... </trackPanner>

namespace tses {

struct TrackAudioRecord {
    kelcore::uint32 audioChannelType = 0;
    float volume = 0;
    bool mute = false;
    bool solo = false;
    bool recordArmed = false;
    bool monitoring = false;
    bool soloSafe = false;
    kelcore::int32 automationMode = 1;
};

inline constexpr auto kTrackAudioRows =
    Rows(KnownWord<&TrackAudioRecord::audioChannelType, kChannelLayouts>(names::audioChannelType),
         Number<&TrackAudioRecord::automationMode>(names::automationMode),
         LenientBool<&TrackAudioRecord::monitoring>(names::monitoring),
         Dropped(LenientBool<&TrackAudioRecord::mute>(names::mute)),
         LenientBool<&TrackAudioRecord::recordArmed>(names::recordArmed),
         LenientBool<&TrackAudioRecord::solo>(names::solo),
         LenientBool<&TrackAudioRecord::soloSafe>(names::soloSafe),
         Dropped(LenientReal<&TrackAudioRecord::volume>(names::volume)));

/// The id is a track's only if "type" is exactly "trackID"; otherwise it is a hardware output's.
struct TrackOutputRecord {
    bool toTrack = false;
    kelcore::int32 id = -1;
};

inline constexpr Keyword<bool> kOutputTypes[] = {{u"trackID", true}, {u"hardwareOutput", false}};

inline constexpr auto kTrackOutputRows =
    Rows(Number<&TrackOutputRecord::id>(names::outputID),
         FirstOfTwo<&TrackOutputRecord::toTrack, kOutputTypes>(names::type));

struct TrackInputRecord {
    kelcore::int32 id = -1;
};

inline constexpr auto kTrackInputRows = Rows(Number<&TrackInputRecord::id>(names::inputID));

struct TrackPannerRecord {
    float panLeftRight = 0;
    float angle = 0;
    float radius = 0;
    float stereoSpread = 0;
};

/// "balanceLeftRight" is another name of "panLeftRight", which wins over it.
inline constexpr auto kTrackPannerRows =
    Rows(Dropped(LenientReal<&TrackPannerRecord::angle>(names::angle)),
         Dropped(LenientReal<&TrackPannerRecord::panLeftRight>(names::balanceLeftRight)),
         Dropped(LenientReal<&TrackPannerRecord::panLeftRight>(names::panLeftRight)),
         Dropped(LenientReal<&TrackPannerRecord::radius>(names::radius)),
         Dropped(LenientReal<&TrackPannerRecord::stereoSpread>(names::stereoSpread)));

inline constexpr std::u16string_view kTrackFader = u"trackFader";
inline constexpr std::u16string_view kTrackMute = u"trackMute";
inline constexpr std::u16string_view kTrackPan = u"trackPan";
inline constexpr std::u16string_view kTrackEq = u"trackEQ";
inline constexpr std::u16string_view kTrackComponents[] = {kTrackFader, kTrackMute, kTrackPan,
                                                           kTrackEq};

}  // namespace tses
