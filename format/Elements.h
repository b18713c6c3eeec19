#pragma once

#include "format/Element.h"
#include "format/Names.h"
#include "format/clips/Clip.h"
#include "format/clips/ClipGroup.h"
#include "format/clips/ClipParts.h"
#include "format/clips/ClipStretch.h"
#include "format/clips/Fade.h"
#include "format/clips/GlobalTrackInfo.h"
#include "format/clips/VideoFormat.h"
#include "format/document/Document.h"
#include "format/document/File.h"
#include "format/effects/Component.h"
#include "format/effects/EffectsRack.h"
#include "format/effects/Parameter.h"
#include "format/state/Metronome.h"
#include "format/state/Property.h"
#include "format/state/SessionState.h"
#include "format/state/TimeFormat.h"
#include "format/tracks/AudioDevice.h"
#include "format/tracks/Sends.h"
#include "format/tracks/Track.h"
#include "format/tracks/TrackAudioParameters.h"
#include "format/tracks/TrackVisibility.h"

namespace tses {

namespace places {

using namespace states;

template <State... Parents>
inline constexpr State kIn[] = {Parents...};

inline constexpr auto& kInSoundingTrack =
    kIn<masterTrack, busTrack, audioTrack, instrumentTrack, metronomeTrack>;
inline constexpr auto& kInSendingTrack = kIn<busTrack, audioTrack, instrumentTrack, metronomeTrack>;

inline constexpr Occurrence kMany;
inline constexpr Occurrence kOnce = {.once = true};

/// Of two with the same key, the second replaces the first.
consteval Occurrence UniqueInParent(std::u16string_view key) {
    return {.key = key, .unique = Occurrence::Unique::InParent};
}

/// Without the key, the element is lost.
consteval Occurrence Needing(std::u16string_view key) {
    return {.key = key, .withoutKey = Occurrence::WithoutKey::IsLost};
}

inline constexpr Occurrence kControl = {.key = names::id,
                                        .withoutKey = Occurrence::WithoutKey::IsLost,
                                        .unique = Occurrence::Unique::InParent};

consteval Occurrence ById(std::string_view among, Occurrence::WithoutKey withoutId) {
    return {.key = names::id,
            .mayNameNone = true,
            .withoutKey = withoutId,
            .unique = Occurrence::Unique::InSession,
            .among = among};
}

inline constexpr Occurrence kFileById = ById("file", Occurrence::WithoutKey::IsLost);
inline constexpr Occurrence kVideoTrackById = ById("video track", Occurrence::WithoutKey::IsLost);
inline constexpr Occurrence kTrackById = ById("track", Occurrence::WithoutKey::EndsTheRead);

inline constexpr Occurrence kPropertyByKey = {
    .key = names::key, .unique = Occurrence::Unique::InSession, .among = "property"};

inline constexpr Occurrence kEditParameter = {
    .key = names::slotIndex, .mayNameNone = true, .withoutKey = Occurrence::WithoutKey::IsNotSaved};

template <const auto& Keywords>
inline constexpr auto& kControlAttributes =
    kAttributesOf<kComponentKeywordRows<Keywords>, kKeywordComponentRows, kEditorRectRows>;

consteval Element Dropped(Element element) {
    element.isDropped = true;
    return element;
}

consteval Element WithInstruments(Element element) {
    element.needsInstrumentTracks = true;
    return element;
}

// clang-format off

/// The tree of elements, the root first.
inline constexpr Element kElements[] = {
    {names::orvo, {}, orvo, kOnce, kAttributesOf<kDocumentRows>},
    {names::session, kIn<orvo>, session, kOnce, kAttributesOf<kSessionRows>},
    Dropped({names::name, kIn<session>, name, kMany, {}, TextKind::Plain}),
    {names::files, kIn<orvo>, files},
    {names::file, kIn<files>, file, kFileById, kAttributesOf<kFileRows>},
    {names::audioDevice, kIn<orvo>, audioDevice, kOnce, kAttributesOf<kAudioDeviceRows>},
    {names::inputPort, kIn<audioDevice>, audioPort, kMany, kAttributesOf<kPortRows>},
    {names::outputPort, kIn<audioDevice>, audioPort, kMany, kAttributesOf<kPortRows>},

    {names::tracks, kIn<session>, tracks},
    {names::masterTrack, kIn<tracks>, masterTrack, kTrackById, kAttributesOf<kTrackIdRows, kTrackRows>},
    {names::busTrack, kIn<tracks>, busTrack, kTrackById, kAttributesOf<kTrackIdRows, kTrackRows>},
    {names::audioTrack, kIn<tracks>, audioTrack, kTrackById, kAttributesOf<kTrackIdRows, kTrackRows>},
    WithInstruments({names::instrumentTrack, kIn<tracks>, instrumentTrack, kTrackById, kAttributesOf<kTrackIdRows, kTrackRows, kInstrumentRows>}),
    {names::videoTrack, kIn<tracks>, videoTrack, kVideoTrackById, kAttributesOf<kVideoTrackRows>},
    {names::trackParameters, kInSoundingTrack, trackParameters, kOnce, kAttributesOf<kTrackParametersRows>},
    {names::trackParameters, kIn<videoTrack>, trackParameters, kOnce, kAttributesOf<kTrackParametersRows>},
    {names::name, kIn<trackParameters>, name, kOnce, {}, TextKind::Plain},
    {names::trackAudioParameters, kInSoundingTrack, trackAudioParameters, kOnce, kAttributesOf<kTrackAudioRows>},
    {names::trackOutput, kIn<trackAudioParameters>, trackOutput, kOnce, kAttributesOf<kTrackOutputRows>},
    {names::trackInput, kIn<trackAudioParameters>, trackInput, kOnce, kAttributesOf<kTrackInputRows>},
    Dropped({names::trackPanner, kIn<trackAudioParameters>, trackPanner, kMany, kAttributesOf<kTrackPannerRows>}),
    Dropped({names::fivePointOneLeft, kIn<trackPanner>, fivePointOneLeft}),
    Dropped({names::fivePointOneRight, kIn<trackPanner>, fivePointOneRight}),
    Dropped({names::fivePointOneCenter, kIn<trackPanner>, fivePointOneCenter}),
    Dropped({names::fivePointOneLeftSurround, kIn<trackPanner>, fivePointOneLeftSurround}),
    Dropped({names::fivePointOneRightSurround, kIn<trackPanner>, fivePointOneRightSurround}),
    Dropped({names::fivePointOneLFE, kIn<trackPanner>, fivePointOneLFE}),
    {names::component, kIn<trackAudioParameters>, component, kControl, kControlAttributes<kTrackComponents>},
    {names::sendList, kInSendingTrack, sendList},
    {names::sendSlot, kIn<sendList>, sendSlot, Needing(names::slotIndex), kAttributesOf<kSendSlotRows>},
    {names::component, kIn<sendSlot>, component, kControl, kControlAttributes<kSendComponents>},

    {names::effectsRack, kInSoundingTrack, effectsRack, kOnce, kAttributesOf<kRackRows>},
    {names::effectsRack, kIn<audioClip>, effectsRack, kOnce, kAttributesOf<kRackRows>},
    {names::component, kIn<effectsRack>, component, kControl, kControlAttributes<kRackComponents>},
    {names::slot, kIn<effectsRack>, slot, kMany, kAttributesOf<kSlotRows>},
    {names::component, kIn<slot>, slotComponent, kOnce, kAttributesOf<kEffectComponentRows, kEditorRectRows>},
    {names::presetChunkData, kIn<slotComponent>, presetChunkData, kOnce, {}, TextKind::Base64},
    {names::busConfig, kIn<slotComponent>, busConfig, kOnce, {}, TextKind::Plain},
    {names::channelMap, kIn<slotComponent>, slotChannelMap, kMany, kAttributesOf<kChannelMapRows>},
    {names::channel, kIn<slotChannelMap>, slotChannel, Needing(names::index), kAttributesOf<kSlotChannelRows>},
    {names::parameter, kIn<component, slotComponent>, parameter, UniqueInParent(names::index), kAttributesOf<kParameterRows>},
    {names::parameterKeyframes, kIn<parameter>, parameterKeyframes, kMany, kAttributesOf<kLaneRows>},
    {names::parameterKeyframe, kIn<parameterKeyframes>, parameterKeyframe, kMany, kAttributesOf<kKeyframeRows>},
    {names::editParameter, kInSoundingTrack, editParameter, kEditParameter, kAttributesOf<kEditParameterRows>},
    {names::editParameter, kIn<audioClip>, editParameter, kEditParameter, kAttributesOf<kEditParameterRows>},

    {names::clip, kIn<audioTrack>, audioClip, kMany, kAttributesOf<kClipRows, kAudioClipRows>},
    {names::audioClip, kIn<audioTrack>, audioClip, kMany, kAttributesOf<kClipRows, kAudioClipRows>},
    {names::component, kIn<audioClip>, component, kControl, kControlAttributes<kClipComponents>},
    {names::channelMap, kIn<audioClip>, clipChannelMap},
    {names::channel, kIn<clipChannelMap>, clipChannel, UniqueInParent(names::index), kAttributesOf<kClipChannelRows>},
    {names::fadeIn, kIn<audioClip>, fadeIn, kOnce, kAttributesOf<kFadeRows>},
    {names::fadeOut, kIn<audioClip>, fadeOut, kOnce, kAttributesOf<kFadeRows>},
    {names::clipStretch, kIn<audioClip>, clipStretch, kOnce, kAttributesOf<kStretchRows>},
    {names::take, kIn<audioClip>, take, kMany, kAttributesOf<kTakeRows>},
    {names::properties, kIn<audioClip>, clipProperties, kOnce, kAttributesOf<kClipPropertiesRows>},
    WithInstruments({names::midiClip, kIn<instrumentTrack>, midiClip, kMany, kAttributesOf<kClipRows>}),
    WithInstruments({names::midiEvents, kIn<midiClip>, midiEvents, kOnce, {}, TextKind::Base64}),
    {names::videoClip, kIn<videoTrack>, videoClip, kMany, kAttributesOf<kClipRows, kVideoClipRows>},
    {names::videoFormat, kIn<videoClip>, videoFormat, kOnce, kAttributesOf<kVideoFormatRows>},

    {names::metronome, kIn<session>, metronome, kOnce, kAttributesOf<kMetronomeRows>},
    {names::metronomeTrack, kIn<metronome>, metronomeTrack, kOnce, kAttributesOf<kMetronomeTrackIdRows, kTrackRows>},
    WithInstruments({names::globalTrackInfo, kIn<metronome>, globalTrackInfo, kOnce, kAttributesOf<kGlobalTrackInfoRows>}),
    WithInstruments({names::tempoEvents, kIn<globalTrackInfo>, tempoEvents, kOnce, {}, TextKind::Base64}),
    WithInstruments({names::timeSignatureEvents, kIn<globalTrackInfo>, timeSignatureEvents, kOnce, {}, TextKind::Base64}),
    WithInstruments({names::keySignatureEvents, kIn<globalTrackInfo>, keySignatureEvents, kOnce, {}, TextKind::Base64}),
    {names::xmpMetadata, kIn<session>, xmpMetadata, kOnce, {}, TextKind::Plain},
    {names::sessionState, kIn<session>, sessionState, kOnce, kAttributesOf<kSessionStateRows>},
    {names::selectionState, kIn<sessionState>, selectionState, kOnce, kAttributesOf<kSelectionRows>},
    {names::viewState, kIn<sessionState>, viewState, kOnce, kAttributesOf<kViewRows>},
    {names::timeFormatState, kIn<sessionState>, timeFormatState, kOnce, kAttributesOf<kTimeFormatRows>},
    {names::mixingOptionState, kIn<sessionState>, mixingOptionState, kOnce, kAttributesOf<kMixingRows>},
    {names::clipGroups, kIn<session>, clipGroups},
    {names::clipGroup, kIn<clipGroups>, clipGroup, kMany, kAttributesOf<kClipGroupRows>},
    {names::name, kIn<clipGroup>, name, kOnce, {}, TextKind::Plain},
    {names::item, kIn<clipGroup>, clipGroupItem, kMany, kAttributesOf<kClipGroupItemRows>},
    {names::properties, kIn<session>, sessionProperties},
    {names::property, kIn<sessionProperties>, property, kPropertyByKey, kAttributesOf<kPropertyRows>, TextKind::Plain},
    {names::trackVisibilityPresets, kIn<session>, trackVisibilityPresets},
    {names::trackVisibilityPreset, kIn<trackVisibilityPresets>, trackVisibilityPreset, kMany, kAttributesOf<kTrackVisibilityPresetRows>},
    {names::trackVisibility, kIn<trackVisibilityPreset>, trackVisibility, kMany, kAttributesOf<kTrackVisibilityRows>},
};
// clang-format on

}  // namespace places

using places::kElements;

inline constexpr const Element& kRootElement = kElements[0];

/// The element of that name in a parent of that State; null if none stands there.
constexpr const Element* FindElement(std::u16string_view name, State parent) {
    for (const Element& element : kElements) {
        if (element.name == name && element.StandsIn(parent)) {
            return &element;
        }
    }
    return nullptr;
}

}  // namespace tses
