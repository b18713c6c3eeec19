#pragma once

#include <string_view>

/// The words of the attributes that have some. The place of a word is its number, where an
/// attribute takes numbers, too.
namespace toolkit {

using Word = std::u16string_view;

inline constexpr Word kChannelLayouts[] = {u"mono", u"stereo", u"fivePointOne"};

inline constexpr Word kOutputTypes[] = {u"trackID", u"hardwareOutput"};

inline constexpr Word kKeyframeTypes[] = {u"hold", u"linear"};

inline constexpr Word kDirections[] = {u"input", u"output"};

inline constexpr Word kFadeTypes[] = {u"log", u"cosine"};

inline constexpr Word kLinkTypes[] = {u"linkedSymmetric", u"linkedAsymmetric"};

inline constexpr Word kStretchModes[] = {u"off", u"realtime", u"rendered"};

inline constexpr Word kStretchTypes[] = {u"normal", u"solo", u"varispeed"};

inline constexpr Word kStretchQualities[] = {u"high", u"medium", u"low"};

inline constexpr Word kSoundSets[] = {u"african1", u"african2", u"beeps",  u"cymbals", u"kit",
                                      u"latin1",   u"latin2",   u"latin3", u"sticks",  u"tabla"};

inline constexpr Word kBeats[] = {u"none", u"downBeat", u"upBeat", u"subdivision"};

inline constexpr Word kTimeFormats[] = {u"timeFormatDecimal", u"timeFormatSamples",
                                        u"timeFormatTimeCode", u"timeFormatBarsAndBeats"};

inline constexpr Word kTrackComponents[] = {u"trackFader", u"trackMute", u"trackPan", u"trackEQ"};

inline constexpr Word kSendComponents[] = {u"sendComponent", u"sendPan"};

inline constexpr Word kRackComponents[] = {u"rackMix", u"rackInput", u"rackOutput"};

inline constexpr Word kClipComponents[] = {u"clipGain", u"clipMute", u"clipPan"};

}  // namespace toolkit
