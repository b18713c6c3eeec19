#include "toolkit/SessionContent.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "platform/kelcore/Numbers.h"
#include "platform/tbcore/MediaHandlers.h"

namespace toolkit {
namespace {

using enum ValueKind;
using enum Occurrence;

using Scope = std::u16string_view;

constexpr CarriedAttribute kRootAttributes[] = {
    {u"version", Text},
};

constexpr CarriedAttribute kSessionAttributes[] = {
    {u"sampleRate", Number},   {u"audioChannelType", ChannelType},
    {u"duration", LongNumber}, {u"bitDepth", Number},
    {u"appVersion", Text},     {u"appBuild", Text},
};

constexpr CarriedAttribute kFileAttributes[] = {
    {u"id", Number},
    {u"absolutePath", Text},
    {u"relativePath", Text},
    {u"mediaHandler", HandlerName},
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
    {u"select", Text},
    {u"automationLaneOpenState", Text},
    {u"visible", Text},
    {u"phaseInverted", Text},
    {u"preRendered", Text},
    {u"sumtomono", Text},
    {u"preRenderedFile", Text},
};

constexpr CarriedAttribute kInstrumentTrackAttributes[] = {
    {u"id", Number},
    {u"index", Number},
    {u"select", Text},
    {u"automationLaneOpenState", Text},
    {u"visible", Text},
    {u"phaseInverted", Text},
    {u"preRendered", Text},
    {u"sumtomono", Text},
    {u"preRenderedFile", Text},
    {u"midiAll", Text},
    {u"midiIn", Text},
};

constexpr CarriedAttribute kVideoTrackAttributes[] = {
    {u"id", Number},
    {u"index", Number},
    {u"select", Text},
};

constexpr CarriedAttribute kTrackParametersAttributes[] = {
    {u"trackHeight", Number},
    {u"trackHue", Text},
    {u"trackMinimized", Text},
};

/// Not "volume" and "mute", which are read and dropped.
constexpr CarriedAttribute kTrackAudioAttributes[] = {
    {u"audioChannelType", ChannelType},
    {u"solo", Text},
    {u"recordArmed", Text},
    {u"monitoring", Text},
    {u"soloSafe", Text},
    {u"automationMode", Number},
};

constexpr CarriedAttribute kTrackOutputAttributes[] = {
    {u"type", Text},
    {u"outputID", Number},
};

constexpr CarriedAttribute kTrackInputAttributes[] = {
    {u"inputID", Number},
};

constexpr CarriedAttribute kComponentAttributes[] = {
    {u"id", Text},
    {u"componentGuid", Text},
    {u"componentID", Text},
    {u"name", Text},
    {u"presetName", Text},
    {u"powered", Text},
    {u"editorVisible", Text},
    {u"editorLeft", Number},
    {u"editorTop", Number},
    {u"editorWidth", Number},
    {u"editorHeight", Number},
};

constexpr CarriedAttribute kSlotComponentAttributes[] = {
    {u"componentGuid", Text}, {u"componentID", Text},   {u"name", Text},
    {u"presetName", Text},    {u"editorVisible", Text}, {u"editorLeft", Number},
    {u"editorTop", Number},   {u"editorWidth", Number}, {u"editorHeight", Number},
};

constexpr CarriedAttribute kParameterAttributes[] = {
    {u"index", Number},
    {u"parameterValue", Text},
    {u"name", Text},
    {u"safeDuringWrite", Text},
};

constexpr CarriedAttribute kLaneAttributes[] = {
    {u"enableSplines", Text},
    {u"readOnly", Text},
};

constexpr CarriedAttribute kKeyframeAttributes[] = {
    {u"sampleOffset", LongNumber},
    {u"value", Text},
    {u"type", Text},
    {u"select", Text},
};

constexpr CarriedAttribute kSendSlotAttributes[] = {
    {u"slotIndex", Number},
    {u"sendOutputID", Number},
    {u"destCompIndex", Number},
    {u"preFader", Text},
};

constexpr CarriedAttribute kRackAttributes[] = {
    {u"preFader", Text},
};

constexpr CarriedAttribute kSlotAttributes[] = {
    {u"slotIndex", Number},
    {u"powered", Text},
    {u"sideChainChannels", Number},
};

constexpr CarriedAttribute kSlotChannelMapAttributes[] = {
    {u"direction", Text},
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
    {u"hue", Text},
    {u"name", Text},
    {u"select", Text},
    {u"lockedInTime", Text},
    {u"fileID", Number},
    {u"looped", Text},
    {u"offline", Text},
    {u"zOrder", Number},
    {u"crossFadeHeadClipID", Number},
    {u"crossFadeTailClipID", Number},
    {u"clipAutoCrossfade", Text},
};

constexpr CarriedAttribute kMidiClipAttributes[] = {
    {u"id", Number},
    {u"sourceInPoint", LongNumber},
    {u"sourceOutPoint", LongNumber},
    {u"startPoint", LongNumber},
    {u"endPoint", LongNumber},
    {u"hue", Text},
    {u"name", Text},
    {u"select", Text},
    {u"lockedInTime", Text},
};

constexpr CarriedAttribute kVideoClipAttributes[] = {
    {u"id", Number},
    {u"sourceInPoint", LongNumber},
    {u"sourceOutPoint", LongNumber},
    {u"startPoint", LongNumber},
    {u"endPoint", LongNumber},
    {u"hue", Text},
    {u"name", Text},
    {u"select", Text},
    {u"lockedInTime", Text},
    {u"fileID", Number},
    {u"offline", Text},
    {u"zOrder", Number},
};

constexpr CarriedAttribute kFadeAttributes[] = {
    {u"startPoint", LongNumber}, {u"endPoint", LongNumber},    {u"type", Text},
    {u"shape", Number},          {u"crossFadeLinkType", Text},
};

constexpr CarriedAttribute kStretchAttributes[] = {
    {u"stretchMode", Text},          {u"stretchType", Text},      {u"stretchQuality", Text},
    {u"stretchRatio", Text},         {u"pitchAdjustment", Text},  {u"transientSensitivity", Number},
    {u"adaptiveWindowSize", Number}, {u"preserveFormants", Text},
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
    {u"enabled", Text},
    {u"soundSet", Text},
    {u"pattern", Text},
};

constexpr CarriedAttribute kGlobalTrackInfoAttributes[] = {
    {u"timeSigVisible", Text},
    {u"keySigVisible", Text},
    {u"tempoVisible", Text},
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
    {u"timeFormat", Text},        {u"timeCodeFrameRate", Number},
    {u"timeCodeNTSC", Text},      {u"timeCodeDropFrame", Text},
    {u"customFrameRate", Number}, {u"linkToDefaultTimeSettings", Text},
    {u"beatsPerMinute", Text},    {u"beatsPerBar", Number},
    {u"noteLength", Number},      {u"subdivisions", Number},
};

constexpr CarriedAttribute kMixingAttributes[] = {
    {u"defaultPanModeLogarithmic", Text},
    {u"panPower", Text},
    {u"playOverlappingClips", Text},
};

constexpr CarriedAttribute kClipGroupAttributes[] = {
    {u"id", Number},
    {u"hue", Text},
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
    {u"trackHeight", Text},
    {u"trackMinimized", Text},
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

constexpr Scope kInKeywordOwner[] = {u"trackAudioParameters", u"sendSlot", u"effectsRack",
                                     u"audioClip"};

constexpr Scope kInRackOwner[] = {u"masterTrack",     u"busTrack",       u"audioTrack",
                                  u"instrumentTrack", u"metronomeTrack", u"audioClip"};

constexpr Scope kInRack[] = {u"effectsRack"};

constexpr Scope kInSlot[] = {u"slot"};

constexpr Scope kInSlotComponent[] = {u"slotComponent"};

constexpr Scope kInAnyComponent[] = {u"component", u"slotComponent"};

constexpr Scope kInParameter[] = {u"parameter"};

constexpr Scope kInLane[] = {u"parameterKeyframes"};

constexpr Scope kInAnyChannelMap[] = {u"channelMap"};

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

// clang-format off
constexpr CarriedElement kElements[] = {
    {kRootElement, {}, Once, kRootAttributes, kRootElement},
    {u"session", kInRoot, Once, kSessionAttributes, u"session"},
    {u"files", kInRoot, Many, {}, u"files"},
    {u"file", kInFiles, ById, kFileAttributes, u"file"},
    {u"audioDevice", kInRoot, Once, kDeviceAttributes, u"audioDevice"},
    {u"inputPort", kInDevice, Many, kPortAttributes, u"inputPort"},
    {u"outputPort", kInDevice, Many, kPortAttributes, u"outputPort"},
    {u"tracks", kInSession, Many, {}, u"tracks"},
    {u"masterTrack", kInTracks, ById, kTrackAttributes, u"masterTrack"},
    {u"busTrack", kInTracks, ById, kTrackAttributes, u"busTrack"},
    {u"audioTrack", kInTracks, ById, kTrackAttributes, u"audioTrack"},
    {u"instrumentTrack", kInTracks, ById, kInstrumentTrackAttributes, u"instrumentTrack"},
    {u"videoTrack", kInTracks, ById, kVideoTrackAttributes, u"videoTrack"},
    {u"trackParameters", kInAnyTrack, Once, kTrackParametersAttributes, u"trackParameters"},
    {u"name", kInTrackParameters, Once, {}, u"name", true},
    {u"trackAudioParameters", kInSoundingTrack, Once, kTrackAudioAttributes, u"trackAudioParameters"},
    {u"trackOutput", kInTrackAudio, Once, kTrackOutputAttributes, u"trackOutput"},
    {u"trackInput", kInTrackAudio, Once, kTrackInputAttributes, u"trackInput"},
    {u"component", kInKeywordOwner, Many, kComponentAttributes, u"component"},
    {u"sendList", kInSendingTrack, Many, {}, u"sendList"},
    {u"sendSlot", kInSendList, Many, kSendSlotAttributes, u"sendSlot"},
    {u"effectsRack", kInRackOwner, Once, kRackAttributes, u"effectsRack"},
    {u"slot", kInRack, Many, kSlotAttributes, u"slot"},
    {u"component", kInSlot, Once, kSlotComponentAttributes, u"slotComponent"},
    {u"presetChunkData", kInSlotComponent, Once, {}, u"presetChunkData", true},
    {u"busConfig", kInSlotComponent, Once, {}, u"busConfig", true},
    {u"channelMap", kInSlotComponent, Many, kSlotChannelMapAttributes, u"channelMap"},
    {u"channelMap", kInAudioClip, Many, {}, u"channelMap"},
    {u"channel", kInAnyChannelMap, Many, kChannelAttributes, u"channel"},
    {u"parameter", kInAnyComponent, Many, kParameterAttributes, u"parameter"},
    {u"parameterKeyframes", kInParameter, Many, kLaneAttributes, u"parameterKeyframes"},
    {u"parameterKeyframe", kInLane, Many, kKeyframeAttributes, u"parameterKeyframe"},
    {u"editParameter", kInRackOwner, Many, kEditParameterAttributes, u"editParameter"},
    {u"clip", kInAudioTrack, Many, kAudioClipAttributes, u"audioClip"},
    {u"audioClip", kInAudioTrack, Many, kAudioClipAttributes, u"audioClip"},
    {u"fadeIn", kInAudioClip, Once, kFadeAttributes, u"fadeIn"},
    {u"fadeOut", kInAudioClip, Once, kFadeAttributes, u"fadeOut"},
    {u"clipStretch", kInAudioClip, Once, kStretchAttributes, u"clipStretch"},
    {u"take", kInAudioClip, Many, kTakeAttributes, u"take"},
    {u"properties", kInAudioClip, Once, kClipPropertiesAttributes, u"clipProperties"},
    {u"midiClip", kInInstrumentTrack, Many, kMidiClipAttributes, u"midiClip"},
    {u"midiEvents", kInMidiClip, Once, {}, u"midiEvents", true},
    {u"videoClip", kInVideoTrack, Many, kVideoClipAttributes, u"videoClip"},
    {u"videoFormat", kInVideoClip, Once, kVideoFormatAttributes, u"videoFormat"},
    {u"metronome", kInSession, Once, kMetronomeAttributes, u"metronome"},
    {u"metronomeTrack", kInMetronome, Once, kTrackAttributes, u"metronomeTrack"},
    {u"globalTrackInfo", kInMetronome, Once, kGlobalTrackInfoAttributes, u"globalTrackInfo"},
    {u"tempoEvents", kInGlobalTrackInfo, Once, {}, u"tempoEvents", true},
    {u"timeSignatureEvents", kInGlobalTrackInfo, Once, {}, u"timeSignatureEvents", true},
    {u"keySignatureEvents", kInGlobalTrackInfo, Once, {}, u"keySignatureEvents", true},
    {u"xmpMetadata", kInSession, Once, {}, u"xmpMetadata", true},
    {u"sessionState", kInSession, Once, kSessionStateAttributes, u"sessionState"},
    {u"selectionState", kInSessionState, Once, kSelectionAttributes, u"selectionState"},
    {u"viewState", kInSessionState, Once, kViewAttributes, u"viewState"},
    {u"timeFormatState", kInSessionState, Once, kTimeFormatAttributes, u"timeFormatState"},
    {u"mixingOptionState", kInSessionState, Once, kMixingAttributes, u"mixingOptionState"},
    {u"clipGroups", kInSession, Many, {}, u"clipGroups"},
    {u"clipGroup", kInClipGroups, Many, kClipGroupAttributes, u"clipGroup"},
    {u"name", kInClipGroup, Once, {}, u"name", true},
    {u"item", kInClipGroup, Many, kItemAttributes, u"item"},
    {u"properties", kInSession, Many, {}, u"sessionProperties"},
    {u"property", kInProperties, Many, kPropertyAttributes, u"property", true},
    {u"trackVisibilityPresets", kInSession, Many, {}, u"trackVisibilityPresets"},
    {u"trackVisibilityPreset", kInPresets, Many, kVisibilityPresetAttributes, u"trackVisibilityPreset"},
    {u"trackVisibility", kInPreset, Many, kVisibilityAttributes, u"trackVisibility"},
};
// clang-format on

constexpr std::u16string_view kChannelTypes[] = {u"mono", u"stereo", u"fivePointOne"};

template <class Number>
bool IsNumber(std::u16string_view text) {
    Number ignored{};
    return kelcore::StringToNumber(text, ignored);
}

bool IsHandlerName(std::u16string_view text) {
    std::u16string ignored;
    return tbcore::TranslateFromHumanReadableMediaHandler(text, ignored);
}

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

bool IsCarriedValue(ValueKind kind, std::u16string_view text) {
    switch (kind) {
        case Text:
            return true;
        case Number:
            return IsNumber<kelcore::int32>(text);
        case LongNumber:
            return IsNumber<kelcore::int64>(text);
        case ChannelType:
            return std::find(std::begin(kChannelTypes), std::end(kChannelTypes), text) !=
                   std::end(kChannelTypes);
        case HandlerName:
            return IsHandlerName(text);
    }
    return false;
}

}  // namespace toolkit
