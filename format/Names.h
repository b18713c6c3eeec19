#pragma once

#include <string_view>

// Every element and attribute name of a session file, once. A name is its own identifier.
// clang-format off
#define TSES_NAMES(NAME)                                                                            \
    /* the document */                                                                              \
    NAME(orvo) NAME(version) NAME(session) NAME(workspaceSettings)                                  \
    NAME(sampleRate) NAME(audioChannelType) NAME(duration) NAME(bitDepth) NAME(appVersion)          \
    NAME(appBuild) NAME(files) NAME(file) NAME(absolutePath) NAME(relativePath) NAME(mediaHandler)  \
    NAME(mediaHandlerID) NAME(recoveryID) NAME(importerPrivateSettings)                             \
    /* in many places */                                                                            \
    NAME(id) NAME(name) NAME(index) NAME(type) NAME(value) NAME(hue) NAME(select)                   \
    /* tracks and routing */                                                                        \
    NAME(audioDevice) NAME(inputPort) NAME(outputPort) NAME(inputID) NAME(outputID)                 \
    NAME(tracks) NAME(masterTrack) NAME(audioTrack) NAME(instrumentTrack) NAME(busTrack)            \
    NAME(videoTrack) NAME(automationLaneOpenState) NAME(visible) NAME(phaseInverted)                \
    NAME(preRendered) NAME(sumtomono) NAME(preRenderedFile) NAME(midiAll) NAME(midiIn)              \
    NAME(trackParameters) NAME(trackHeight) NAME(trackHue) NAME(trackMinimized)                     \
    NAME(trackAudioParameters) NAME(volume) NAME(mute) NAME(solo) NAME(recordArmed)                 \
    NAME(monitoring) NAME(soloSafe) NAME(automationMode) NAME(trackInput) NAME(trackOutput)         \
    NAME(trackPanner) NAME(panLeftRight) NAME(balanceLeftRight) NAME(angle) NAME(radius)            \
    NAME(stereoSpread) NAME(fivePointOneLeft) NAME(fivePointOneRight) NAME(fivePointOneCenter)      \
    NAME(fivePointOneLeftSurround) NAME(fivePointOneRightSurround) NAME(fivePointOneLFE)            \
    NAME(sendList) NAME(sendSlot) NAME(sendOutputID) NAME(destCompIndex) NAME(channelMap)           \
    NAME(channel) NAME(sourceIndex) NAME(direction) NAME(busConfig)                                 \
    NAME(trackVisibilityPresets) NAME(trackVisibilityPreset) NAME(trackVisibility)                  \
    /* clips and the timeline */                                                                    \
    NAME(clip) NAME(audioClip) NAME(fileID) NAME(sourceInPoint) NAME(sourceOutPoint)                \
    NAME(startPoint) NAME(endPoint) NAME(lockedInTime) NAME(looped) NAME(offline) NAME(zOrder)      \
    NAME(crossFadeHeadClipID) NAME(crossFadeTailClipID) NAME(clipAutoCrossfade) NAME(take)          \
    NAME(fadeIn) NAME(fadeOut) NAME(shape) NAME(crossFadeLinkType) NAME(clipStretch)                \
    NAME(stretchMode) NAME(stretchType) NAME(stretchRatio) NAME(pitchAdjustment)                    \
    NAME(stretchQuality) NAME(transientSensitivity) NAME(adaptiveWindowSize)                        \
    NAME(preserveFormants) NAME(midiClip) NAME(midiEvents) NAME(globalTrackInfo)                    \
    NAME(timeSigVisible) NAME(keySigVisible) NAME(tempoVisible) NAME(tempoEvents)                   \
    NAME(timeSignatureEvents) NAME(keySignatureEvents) NAME(videoClip) NAME(videoFormat)            \
    NAME(timeScale) NAME(sampleSize) NAME(pixelType) NAME(width) NAME(height)                       \
    NAME(parNumerator) NAME(parDenominator) NAME(fieldType) NAME(clipGroups) NAME(clipGroup)        \
    NAME(item) NAME(trackID) NAME(clipID)                                                           \
    /* effects and automation */                                                                    \
    NAME(effectsRack) NAME(preFader) NAME(slot) NAME(slotIndex) NAME(powered)                       \
    NAME(sideChainChannels) NAME(component) NAME(componentGuid) NAME(componentID)                   \
    NAME(presetName) NAME(editorVisible) NAME(editorLeft) NAME(editorTop) NAME(editorWidth)         \
    NAME(editorHeight) NAME(presetChunkData) NAME(parameter) NAME(parameterValue)                   \
    NAME(safeDuringWrite) NAME(editParameter) NAME(parameterIndex) NAME(parameterKeyframes)         \
    NAME(enableSplines) NAME(readOnly) NAME(parameterKeyframe) NAME(sampleOffset)                   \
    /* saved state */                                                                               \
    NAME(metronome) NAME(metronomeTrack) NAME(enabled) NAME(soundSet) NAME(pattern)                 \
    NAME(sessionState) NAME(ctiPosition) NAME(smpteStart) NAME(selectionState)                      \
    NAME(selectionStart) NAME(selectionDuration) NAME(viewState) NAME(horizontalViewStart)          \
    NAME(horizontalViewDuration) NAME(trackControlsWidth) NAME(verticalScrollOffset)                \
    NAME(timeFormatState) NAME(timeFormat) NAME(timeCodeFrameRate) NAME(timeCodeNTSC)               \
    NAME(timeCodeDropFrame) NAME(customFrameRate) NAME(linkToDefaultTimeSettings)                   \
    NAME(beatsPerMinute) NAME(beatsPerBar) NAME(noteLength) NAME(subdivisions)                      \
    NAME(mixingOptionState) NAME(defaultPanModeLogarithmic) NAME(panPower)                          \
    NAME(playOverlappingClips) NAME(properties) NAME(property) NAME(key) NAME(xmpMetadata)
// clang-format on

/// The names as UTF-16 constants. They are literals: they are ready before any code runs, and they
/// are zero-terminated, so `data()` serves where the XML library wants a terminated string.
namespace tses::names {

#define TSES_DEFINE_NAME(name) inline constexpr std::u16string_view name = u"" #name;
TSES_NAMES(TSES_DEFINE_NAME)
#undef TSES_DEFINE_NAME

}  // namespace tses::names
