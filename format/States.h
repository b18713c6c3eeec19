#pragma once

#include "platform/kelcore/Types.h"

namespace tses {

/// Where in the document the reader is: the value that the innermost open element pushed.
using State = kelcore::uint32;

/// The State of every element. 41, 49, 50 and 52 belonged to elements that no longer exist.
namespace states {

/// Inside an element that means nothing here; also the bottom of the stack.
inline constexpr State unknown = 0;
inline constexpr State orvo = 1;
inline constexpr State session = 2;
inline constexpr State files = 3;
inline constexpr State file = 4;
inline constexpr State tracks = 5;
inline constexpr State masterTrack = 6;
inline constexpr State busTrack = 7;
inline constexpr State audioTrack = 8;
inline constexpr State instrumentTrack = 9;
inline constexpr State videoTrack = 10;
inline constexpr State globalTrackInfo = 11;
inline constexpr State metronomeTrack = 12;
inline constexpr State audioClip = 13;
inline constexpr State midiClip = 14;
inline constexpr State midiEvents = 15;
inline constexpr State tempoEvents = 16;
inline constexpr State timeSignatureEvents = 17;
inline constexpr State keySignatureEvents = 18;
inline constexpr State clipChannelMap = 19;
inline constexpr State clipChannel = 20;
inline constexpr State videoClip = 21;
inline constexpr State component = 22;
inline constexpr State trackParameters = 23;
inline constexpr State trackAudioParameters = 24;
inline constexpr State effectsRack = 25;
inline constexpr State slotComponent = 26;
inline constexpr State slot = 27;
inline constexpr State presetChunkData = 28;
inline constexpr State parameter = 29;
inline constexpr State parameterKeyframes = 30;
inline constexpr State parameterKeyframe = 31;
inline constexpr State sendList = 32;
inline constexpr State sendSlot = 33;
inline constexpr State trackInput = 34;
inline constexpr State trackOutput = 35;
inline constexpr State sessionState = 36;
inline constexpr State selectionState = 37;
inline constexpr State viewState = 38;
inline constexpr State timeFormatState = 39;
inline constexpr State mixingOptionState = 40;
inline constexpr State trackPanner = 42;
inline constexpr State fivePointOneLeft = 43;
inline constexpr State fivePointOneRight = 44;
inline constexpr State fivePointOneCenter = 45;
inline constexpr State fivePointOneLeftSurround = 46;
inline constexpr State fivePointOneRightSurround = 47;
inline constexpr State fivePointOneLFE = 48;
inline constexpr State name = 51;
inline constexpr State xmpMetadata = 53;
inline constexpr State videoFormat = 54;
inline constexpr State fadeIn = 55;
inline constexpr State fadeOut = 56;
inline constexpr State clipStretch = 57;
inline constexpr State editParameter = 58;
inline constexpr State audioDevice = 59;
inline constexpr State audioPort = 60;
inline constexpr State take = 61;
inline constexpr State clipGroups = 62;
inline constexpr State clipGroup = 63;
inline constexpr State metronome = 64;
inline constexpr State clipGroupItem = 65;
inline constexpr State busConfig = 66;
inline constexpr State slotChannelMap = 67;
inline constexpr State slotChannel = 68;
inline constexpr State clipProperties = 69;
inline constexpr State sessionProperties = 70;
inline constexpr State property = 71;
inline constexpr State trackVisibilityPresets = 72;
inline constexpr State trackVisibilityPreset = 73;
inline constexpr State trackVisibility = 74;

}  // namespace states
}  // namespace tses
