#include "toolkit/SessionContent.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "toolkit/SessionWords.h"

namespace toolkit {
namespace {

using enum ValueKind;

using Scope = std::u16string_view;

constexpr CarriedAttribute kRootAttributes[] = {
    {u"version", Text},
};

constexpr CarriedAttribute kSessionAttributes[] = {
    {u"sampleRate", Number},   {u"audioChannelType", Keyword, kChannelLayouts},
    {u"duration", LongNumber}, {u"bitDepth", Number},
    {u"appVersion", Text},     {u"appBuild", Text},
};

constexpr CarriedAttribute kFileAttributes[] = {
    {u"id", Number},
    {u"absolutePath", Text},
    {u"relativePath", Text},
    {u"mediaHandler", HandlerName, {}, u"mediaHandlerID"},
    {u"mediaHandlerID", Text},
    {u"recoveryID", Text},
    {u"importerPrivateSettings", Text},
};

constexpr CarriedAttribute kDeviceAttributes[] = {
    {u"inputID", Text},
    {u"outputID", Text},
};

constexpr CarriedAttribute kPortAttributes[] = {
    {u"id", Number},
    {u"name", Text},
};

constexpr CarriedAttribute kTrackAttributes[] = {
    {u"id", Number},
    {u"index", Number},
    {u"select", Boolean},
    {u"automationLaneOpenState", Boolean},
    {u"visible", Boolean},
    {u"phaseInverted", Boolean},
    {u"preRendered", Boolean},
    {u"sumtomono", Boolean},
    {u"preRenderedFile", Text},
};

constexpr CarriedAttribute kInstrumentTrackAttributes[] = {
    {u"id", Number},
    {u"index", Number},
    {u"select", Boolean},
    {u"automationLaneOpenState", Boolean},
    {u"visible", Boolean},
    {u"phaseInverted", Boolean},
    {u"preRendered", Boolean},
    {u"sumtomono", Boolean},
    {u"preRenderedFile", Text},
    {u"midiAll", Boolean},
    {u"midiIn", Text},
};

constexpr CarriedAttribute kVideoTrackAttributes[] = {
    {u"id", Number},
    {u"index", Number},
    {u"select", Boolean},
};

constexpr CarriedAttribute kTrackParametersAttributes[] = {
    {u"trackHeight", Number},
    {u"trackHue", Real},
    {u"trackMinimized", Boolean},
};

/// Not "volume" and "mute", which are read and dropped.
constexpr CarriedAttribute kTrackAudioAttributes[] = {
    {u"audioChannelType", Keyword, kChannelLayouts},
    {u"solo", BooleanOr1},
    {u"recordArmed", BooleanOr1},
    {u"monitoring", BooleanOr1},
    {u"soloSafe", BooleanOr1},
    {u"automationMode", Number},
};

constexpr CarriedAttribute kTrackOutputAttributes[] = {
    {u"type", Keyword, kOutputTypes},
    {u"outputID", Number},
};

constexpr CarriedAttribute kTrackInputAttributes[] = {
    {u"inputID", Number},
};

/// The controls of tracks, sends, racks and clips differ in their ids alone.
constexpr auto ComponentAttributes(std::span<const Word> ids) {
    return std::to_array<CarriedAttribute>({
        {u"id", Keyword, ids},
        {u"componentGuid", Text},
        {u"componentID", Text},
        {u"name", Text},
        {u"presetName", Text},
        {u"powered", Boolean},
        {u"editorVisible", Boolean},
        {u"editorLeft", Number},
        {u"editorTop", Number},
        {u"editorWidth", Number},
        {u"editorHeight", Number},
    });
}

constexpr auto kTrackComponentAttributes = ComponentAttributes(kTrackComponents);

constexpr auto kSendComponentAttributes = ComponentAttributes(kSendComponents);

constexpr auto kRackComponentAttributes = ComponentAttributes(kRackComponents);

constexpr auto kClipComponentAttributes = ComponentAttributes(kClipComponents);

constexpr CarriedAttribute kSlotComponentAttributes[] = {
    {u"componentGuid", Text}, {u"componentID", Text},      {u"name", Text},
    {u"presetName", Text},    {u"editorVisible", Boolean}, {u"editorLeft", Number},
    {u"editorTop", Number},   {u"editorWidth", Number},    {u"editorHeight", Number},
};

constexpr CarriedAttribute kParameterAttributes[] = {
    {u"index", Number},
    {u"parameterValue", Real32},
    {u"name", Text},
    {u"safeDuringWrite", Boolean},
};

constexpr CarriedAttribute kLaneAttributes[] = {
    {u"enableSplines", BooleanOr1},
    {u"readOnly", BooleanOr1},
};

constexpr CarriedAttribute kKeyframeAttributes[] = {
    {u"sampleOffset", LongNumber},
    {u"value", Real32},
    {u"type", Keyword, kKeyframeTypes},
    {u"select", BooleanOr1},
};

constexpr CarriedAttribute kSendSlotAttributes[] = {
    {u"slotIndex", Number},
    {u"sendOutputID", Number},
    {u"destCompIndex", Number},
    {u"preFader", Boolean},
};

constexpr CarriedAttribute kRackAttributes[] = {
    {u"preFader", Boolean},
};

constexpr CarriedAttribute kSlotAttributes[] = {
    {u"slotIndex", Number},
    {u"powered", Boolean},
    {u"sideChainChannels", Number},
};

constexpr CarriedAttribute kSlotChannelMapAttributes[] = {
    {u"direction", Keyword, kDirections},
};

constexpr CarriedAttribute kChannelAttributes[] = {
    {u"index", Number},
    {u"sourceIndex", Number},
};

constexpr CarriedAttribute kEditParameterAttributes[] = {
    {u"slotIndex", Number},
    {u"parameterIndex", Number},
};

constexpr CarriedAttribute kAudioClipAttributes[] = {
    {u"id", Number},
    {u"sourceInPoint", LongNumber},
    {u"sourceOutPoint", LongNumber},
    {u"startPoint", LongNumber},
    {u"endPoint", LongNumber},
    {u"hue", Real},
    {u"name", Text},
    {u"select", Boolean},
    {u"lockedInTime", Boolean},
    {u"fileID", Number},
    {u"looped", Boolean},
    {u"offline", Boolean},
    {u"zOrder", Number},
    {u"crossFadeHeadClipID", Number},
    {u"crossFadeTailClipID", Number},
    {u"clipAutoCrossfade", Boolean},
};

constexpr CarriedAttribute kMidiClipAttributes[] = {
    {u"id", Number},
    {u"sourceInPoint", LongNumber},
    {u"sourceOutPoint", LongNumber},
    {u"startPoint", LongNumber},
    {u"endPoint", LongNumber},
    {u"hue", Real},
    {u"name", Text},
    {u"select", Boolean},
    {u"lockedInTime", Boolean},
};

constexpr CarriedAttribute kVideoClipAttributes[] = {
    {u"id", Number},
    {u"sourceInPoint", LongNumber},
    {u"sourceOutPoint", LongNumber},
    {u"startPoint", LongNumber},
    {u"endPoint", LongNumber},
    {u"hue", Real},
    {u"name", Text},
    {u"select", Boolean},
    {u"lockedInTime", Boolean},
    {u"fileID", Number},
    {u"offline", Boolean},
    {u"zOrder", Number},
};

constexpr CarriedAttribute kFadeAttributes[] = {
    {u"startPoint", LongNumber},
    {u"endPoint", LongNumber},
    {u"type", Keyword, kFadeTypes},
    {u"shape", Number},
    {u"crossFadeLinkType", Keyword, kLinkTypes},
};

constexpr CarriedAttribute kStretchAttributes[] = {
    {u"stretchMode", KeywordOrNumber, kStretchModes},
    {u"stretchType", KeywordOrNumber, kStretchTypes},
    {u"stretchQuality", KeywordOrNumber, kStretchQualities},
    {u"stretchRatio", Real},
    {u"pitchAdjustment", Real},
    {u"transientSensitivity", Number},
    {u"adaptiveWindowSize", Number},
    {u"preserveFormants", BooleanOr1},
};

constexpr CarriedAttribute kTakeAttributes[] = {
    {u"sourceInPoint", LongNumber},
};

constexpr CarriedAttribute kClipPropertiesAttributes[] = {
    {u"properties", Text},
};

constexpr CarriedAttribute kVideoFormatAttributes[] = {
    {u"timeScale", LongNumber},  {u"sampleSize", LongNumber}, {u"pixelType", Number},
    {u"width", Number},          {u"height", Number},         {u"parNumerator", Number},
    {u"parDenominator", Number}, {u"fieldType", Number},
};

constexpr CarriedAttribute kMetronomeAttributes[] = {
    {u"enabled", Boolean},
    {u"soundSet", Keyword, kSoundSets},
    {u"pattern", Keywords, kBeats},
};

constexpr CarriedAttribute kGlobalTrackInfoAttributes[] = {
    {u"timeSigVisible", Boolean},
    {u"keySigVisible", Boolean},
    {u"tempoVisible", Boolean},
};

constexpr CarriedAttribute kSessionStateAttributes[] = {
    {u"ctiPosition", LongNumber},
    {u"smpteStart", LongNumber},
};

constexpr CarriedAttribute kSelectionAttributes[] = {
    {u"selectionStart", LongNumber},
    {u"selectionDuration", LongNumber},
};

constexpr CarriedAttribute kViewAttributes[] = {
    {u"horizontalViewStart", LongNumber},
    {u"horizontalViewDuration", LongNumber},
    {u"trackControlsWidth", Number},
    {u"verticalScrollOffset", Number},
};

constexpr CarriedAttribute kTimeFormatAttributes[] = {
    {u"timeFormat", Keyword, kTimeFormats},
    {u"timeCodeFrameRate", Number},
    {u"timeCodeNTSC", BooleanOr1},
    {u"timeCodeDropFrame", BooleanOr1},
    {u"customFrameRate", Number},
    {u"linkToDefaultTimeSettings", BooleanOr1},
    {u"beatsPerMinute", Real},
    {u"beatsPerBar", Number},
    {u"noteLength", Number},
    {u"subdivisions", Number},
};

constexpr CarriedAttribute kMixingAttributes[] = {
    {u"defaultPanModeLogarithmic", BooleanOr1},
    {u"panPower", Real},
    {u"playOverlappingClips", BooleanOr1},
};

constexpr CarriedAttribute kClipGroupAttributes[] = {
    {u"id", Number},
    {u"hue", Real},
};

constexpr CarriedAttribute kItemAttributes[] = {
    {u"trackID", Number},
    {u"clipID", Number},
};

constexpr CarriedAttribute kPropertyAttributes[] = {
    {u"key", Text},
};

constexpr CarriedAttribute kVisibilityPresetAttributes[] = {
    {u"id", Number},
    {u"name", Text},
};

constexpr CarriedAttribute kVisibilityAttributes[] = {
    {u"id", Number},
    {u"trackHeight", ExactReal32},
    {u"trackMinimized", Boolean},
};

constexpr Scope kInRoot[] = {u"orvo"};

constexpr Scope kInFiles[] = {u"files"};

constexpr Scope kInDevice[] = {u"audioDevice"};

constexpr Scope kInSession[] = {u"session"};

constexpr Scope kInTracks[] = {u"tracks"};

constexpr Scope kInMetronome[] = {u"metronome"};

constexpr Scope kInAnyTrack[] = {u"masterTrack",     u"busTrack",   u"audioTrack",
                                 u"instrumentTrack", u"videoTrack", u"metronomeTrack"};

constexpr Scope kInSoundingTrack[] = {u"masterTrack", u"busTrack", u"audioTrack",
                                      u"instrumentTrack", u"metronomeTrack"};

constexpr Scope kInSendingTrack[] = {u"busTrack", u"audioTrack", u"instrumentTrack",
                                     u"metronomeTrack"};

constexpr Scope kInAudioTrack[] = {u"audioTrack"};

constexpr Scope kInInstrumentTrack[] = {u"instrumentTrack"};

constexpr Scope kInVideoTrack[] = {u"videoTrack"};

constexpr Scope kInTrackParameters[] = {u"trackParameters"};

constexpr Scope kInTrackAudio[] = {u"trackAudioParameters"};

constexpr Scope kInSendList[] = {u"sendList"};

constexpr Scope kInSendSlot[] = {u"sendSlot"};

constexpr Scope kInRackOwner[] = {u"masterTrack",     u"busTrack",       u"audioTrack",
                                  u"instrumentTrack", u"metronomeTrack", u"audioClip"};

constexpr Scope kInRack[] = {u"effectsRack"};

constexpr Scope kInSlot[] = {u"slot"};

constexpr Scope kInSlotComponent[] = {u"slotComponent"};

constexpr Scope kInAnyComponent[] = {u"component", u"slotComponent"};

constexpr Scope kInParameter[] = {u"parameter"};

constexpr Scope kInLane[] = {u"parameterKeyframes"};

constexpr Scope kInSlotChannelMap[] = {u"slotChannelMap"};

constexpr Scope kInClipChannelMap[] = {u"clipChannelMap"};

constexpr Scope kInAudioClip[] = {u"audioClip"};

constexpr Scope kInMidiClip[] = {u"midiClip"};

constexpr Scope kInVideoClip[] = {u"videoClip"};

constexpr Scope kInGlobalTrackInfo[] = {u"globalTrackInfo"};

constexpr Scope kInSessionState[] = {u"sessionState"};

constexpr Scope kInClipGroups[] = {u"clipGroups"};

constexpr Scope kInClipGroup[] = {u"clipGroup"};

constexpr Scope kInProperties[] = {u"sessionProperties"};

constexpr Scope kInPresets[] = {u"trackVisibilityPresets"};

constexpr Scope kInPreset[] = {u"trackVisibilityPreset"};

constexpr Occurrence kMany;

constexpr Occurrence kOnce = {.once = true};

/// Of two with one key the second takes the first one's place.
constexpr Occurrence UniqueInParent(std::u16string_view key) {
    return {.key = key, .unique = Occurrence::Unique::InParent};
}

/// Without the key it goes nowhere.
constexpr Occurrence Needing(std::u16string_view key) {
    return {.key = key, .withoutKey = Occurrence::WithoutKey::IsLost};
}

constexpr Occurrence UniqueAndNeeding(std::u16string_view key) {
    return {.key = key,
            .withoutKey = Occurrence::WithoutKey::IsLost,
            .unique = Occurrence::Unique::InParent};
}

constexpr Occurrence ById(std::string_view among, Occurrence::WithoutKey withoutId) {
    return {.key = u"id",
            .mayNameNone = true,
            .withoutKey = withoutId,
            .unique = Occurrence::Unique::InSession,
            .among = among};
}

constexpr Occurrence kFileById = ById("file", Occurrence::WithoutKey::IsLost);

constexpr Occurrence kVideoTrackById = ById("video track", Occurrence::WithoutKey::IsLost);

constexpr Occurrence kTrackById = ById("track", Occurrence::WithoutKey::EndsTheRead);

constexpr Occurrence kPropertyByKey = {
    .key = u"key", .unique = Occurrence::Unique::InSession, .among = "property"};

constexpr Occurrence kEditParameter = {
    .key = u"slotIndex", .mayNameNone = true, .withoutKey = Occurrence::WithoutKey::IsNotSaved};

// clang-format off
constexpr CarriedElement kElements[] = {
    {kRootElement, {}, kOnce, kRootAttributes, kRootElement},
    {u"session", kInRoot, kOnce, kSessionAttributes, u"session"},
    {u"files", kInRoot, kMany, {}, u"files"},
    {u"file", kInFiles, kFileById, kFileAttributes, u"file"},
    {u"audioDevice", kInRoot, kOnce, kDeviceAttributes, u"audioDevice"},
    {u"inputPort", kInDevice, kMany, kPortAttributes, u"inputPort"},
    {u"outputPort", kInDevice, kMany, kPortAttributes, u"outputPort"},
    {u"tracks", kInSession, kMany, {}, u"tracks"},
    {u"masterTrack", kInTracks, kTrackById, kTrackAttributes, u"masterTrack"},
    {u"busTrack", kInTracks, kTrackById, kTrackAttributes, u"busTrack"},
    {u"audioTrack", kInTracks, kTrackById, kTrackAttributes, u"audioTrack"},
    {u"instrumentTrack", kInTracks, kTrackById, kInstrumentTrackAttributes, u"instrumentTrack"},
    {u"videoTrack", kInTracks, kVideoTrackById, kVideoTrackAttributes, u"videoTrack"},
    {u"trackParameters", kInAnyTrack, kOnce, kTrackParametersAttributes, u"trackParameters"},
    {u"name", kInTrackParameters, kOnce, {}, u"name", TextKind::Plain},
    {u"trackAudioParameters", kInSoundingTrack, kOnce, kTrackAudioAttributes, u"trackAudioParameters"},
    {u"trackOutput", kInTrackAudio, kOnce, kTrackOutputAttributes, u"trackOutput"},
    {u"trackInput", kInTrackAudio, kOnce, kTrackInputAttributes, u"trackInput"},
    {u"component", kInTrackAudio, UniqueAndNeeding(u"id"), kTrackComponentAttributes, u"component"},
    {u"sendList", kInSendingTrack, kMany, {}, u"sendList"},
    {u"sendSlot", kInSendList, Needing(u"slotIndex"), kSendSlotAttributes, u"sendSlot"},
    {u"component", kInSendSlot, UniqueAndNeeding(u"id"), kSendComponentAttributes, u"component"},
    {u"effectsRack", kInRackOwner, kOnce, kRackAttributes, u"effectsRack"},
    {u"component", kInRack, UniqueAndNeeding(u"id"), kRackComponentAttributes, u"component"},
    {u"slot", kInRack, kMany, kSlotAttributes, u"slot"},
    {u"component", kInSlot, kOnce, kSlotComponentAttributes, u"slotComponent"},
    {u"presetChunkData", kInSlotComponent, kOnce, {}, u"presetChunkData", TextKind::Base64},
    {u"busConfig", kInSlotComponent, kOnce, {}, u"busConfig", TextKind::Plain},
    {u"channelMap", kInSlotComponent, kMany, kSlotChannelMapAttributes, u"slotChannelMap"},
    {u"channel", kInSlotChannelMap, Needing(u"index"), kChannelAttributes, u"channel"},
    {u"parameter", kInAnyComponent, UniqueInParent(u"index"), kParameterAttributes, u"parameter"},
    {u"parameterKeyframes", kInParameter, kMany, kLaneAttributes, u"parameterKeyframes"},
    {u"parameterKeyframe", kInLane, kMany, kKeyframeAttributes, u"parameterKeyframe"},
    {u"editParameter", kInRackOwner, kEditParameter, kEditParameterAttributes, u"editParameter"},
    {u"clip", kInAudioTrack, kMany, kAudioClipAttributes, u"audioClip"},
    {u"audioClip", kInAudioTrack, kMany, kAudioClipAttributes, u"audioClip"},
    {u"component", kInAudioClip, UniqueAndNeeding(u"id"), kClipComponentAttributes, u"component"},
    {u"channelMap", kInAudioClip, kMany, {}, u"clipChannelMap"},
    {u"channel", kInClipChannelMap, UniqueInParent(u"index"), kChannelAttributes, u"channel"},
    {u"fadeIn", kInAudioClip, kOnce, kFadeAttributes, u"fadeIn"},
    {u"fadeOut", kInAudioClip, kOnce, kFadeAttributes, u"fadeOut"},
    {u"clipStretch", kInAudioClip, kOnce, kStretchAttributes, u"clipStretch"},
    {u"take", kInAudioClip, kMany, kTakeAttributes, u"take"},
    {u"properties", kInAudioClip, kOnce, kClipPropertiesAttributes, u"clipProperties"},
    {u"midiClip", kInInstrumentTrack, kMany, kMidiClipAttributes, u"midiClip"},
    {u"midiEvents", kInMidiClip, kOnce, {}, u"midiEvents", TextKind::Base64},
    {u"videoClip", kInVideoTrack, kMany, kVideoClipAttributes, u"videoClip"},
    {u"videoFormat", kInVideoClip, kOnce, kVideoFormatAttributes, u"videoFormat"},
    {u"metronome", kInSession, kOnce, kMetronomeAttributes, u"metronome"},
    {u"metronomeTrack", kInMetronome, kOnce, kTrackAttributes, u"metronomeTrack"},
    {u"globalTrackInfo", kInMetronome, kOnce, kGlobalTrackInfoAttributes, u"globalTrackInfo"},
    {u"tempoEvents", kInGlobalTrackInfo, kOnce, {}, u"tempoEvents", TextKind::Base64},
    {u"timeSignatureEvents", kInGlobalTrackInfo, kOnce, {}, u"timeSignatureEvents", TextKind::Base64},
    {u"keySignatureEvents", kInGlobalTrackInfo, kOnce, {}, u"keySignatureEvents", TextKind::Base64},
    {u"xmpMetadata", kInSession, kOnce, {}, u"xmpMetadata", TextKind::Plain},
    {u"sessionState", kInSession, kOnce, kSessionStateAttributes, u"sessionState"},
    {u"selectionState", kInSessionState, kOnce, kSelectionAttributes, u"selectionState"},
    {u"viewState", kInSessionState, kOnce, kViewAttributes, u"viewState"},
    {u"timeFormatState", kInSessionState, kOnce, kTimeFormatAttributes, u"timeFormatState"},
    {u"mixingOptionState", kInSessionState, kOnce, kMixingAttributes, u"mixingOptionState"},
    {u"clipGroups", kInSession, kMany, {}, u"clipGroups"},
    {u"clipGroup", kInClipGroups, kMany, kClipGroupAttributes, u"clipGroup"},
    {u"name", kInClipGroup, kOnce, {}, u"name", TextKind::Plain},
    {u"item", kInClipGroup, kMany, kItemAttributes, u"item"},
    {u"properties", kInSession, kMany, {}, u"sessionProperties"},
    {u"property", kInProperties, kPropertyByKey, kPropertyAttributes, u"property", TextKind::Plain},
    {u"trackVisibilityPresets", kInSession, kMany, {}, u"trackVisibilityPresets"},
    {u"trackVisibilityPreset", kInPresets, kMany, kVisibilityPresetAttributes, u"trackVisibilityPreset"},
    {u"trackVisibility", kInPreset, kMany, kVisibilityAttributes, u"trackVisibility"},
};
// clang-format on

}  // namespace

const CarriedElement* FindCarriedElement(std::u16string_view name,
                                         std::u16string_view parentScope) {
    const auto standsThere = [parentScope](const CarriedElement& element) {
        const auto& parents = element.parents;
        return parents.empty()
                   ? parentScope.empty()
                   : std::find(parents.begin(), parents.end(), parentScope) != parents.end();
    };
    const auto row = std::find_if(std::begin(kElements), std::end(kElements),
                                  [&](const CarriedElement& element) {
                                      return element.name == name && standsThere(element);
                                  });
    return row != std::end(kElements) ? row : nullptr;
}

const CarriedAttribute* FindCarriedAttribute(const CarriedElement& element,
                                             std::u16string_view name) {
    const auto row =
        std::find_if(element.attributes.begin(), element.attributes.end(),
                     [&](const CarriedAttribute& attribute) { return attribute.name == name; });
    return row != element.attributes.end() ? &*row : nullptr;
}

}  // namespace toolkit
