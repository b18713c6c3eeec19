#pragma once

#include <tuple>

#include <orvo/Model.h>

/// Every struct of the model as a JSON object: a row for each key, which serves both directions.
/// docs/json.md says what the keys mean.
namespace refhost {

template <class Struct, class Member>
struct Row {
    const char* key;
    Member Struct::*member;
};
template <class Struct, class Member>
Row(const char*, Member Struct::*) -> Row<Struct, Member>;

/// For each struct: its name for people and its rows.
template <class Struct>
struct Schema;

template <class Struct>
concept HasSchema = requires {
    Schema<Struct>::kRows;
};

template <>
struct Schema<orvo::Keyframe> {
    using T = orvo::Keyframe;
    static constexpr char kName[] = "Keyframe";
    static constexpr std::tuple kRows{
        Row{"value", &T::value},
        Row{"sampleOffset", &T::sampleOffset},
        Row{"hold", &T::hold},
        Row{"selected", &T::selected},
    };
};

template <>
struct Schema<orvo::AutomationLane> {
    using T = orvo::AutomationLane;
    static constexpr char kName[] = "AutomationLane";
    static constexpr std::tuple kRows{
        Row{"enableSplines", &T::enableSplines},
        Row{"readOnly", &T::readOnly},
        Row{"keyframes", &T::keyframes},
    };
};

template <>
struct Schema<orvo::Parameter> {
    using T = orvo::Parameter;
    static constexpr char kName[] = "Parameter";
    static constexpr std::tuple kRows{
        Row{"value", &T::value},
        Row{"name", &T::name},
        Row{"safeDuringWrite", &T::safeDuringWrite},
        Row{"automation", &T::automation},
    };
};

template <>
struct Schema<orvo::EditorRect> {
    using T = orvo::EditorRect;
    static constexpr char kName[] = "EditorRect";
    static constexpr std::tuple kRows{
        Row{"left", &T::left},
        Row{"top", &T::top},
        Row{"width", &T::width},
        Row{"height", &T::height},
    };
};

template <>
struct Schema<orvo::Component> {
    using T = orvo::Component;
    static constexpr char kName[] = "Component";
    static constexpr std::tuple kRows{
        Row{"guid", &T::guid},
        Row{"componentId", &T::componentId},
        Row{"name", &T::name},
        Row{"presetName", &T::presetName},
        Row{"powered", &T::powered},
        Row{"editorVisible", &T::editorVisible},
        Row{"editorRect", &T::editorRect},
        Row{"presetChunk", &T::presetChunk},
        Row{"parameters", &T::parameters},
    };
};

template <>
struct Schema<orvo::ChannelRoute> {
    using T = orvo::ChannelRoute;
    static constexpr char kName[] = "ChannelRoute";
    static constexpr std::tuple kRows{
        Row{"index", &T::index},
        Row{"source", &T::source},
    };
};

template <>
struct Schema<orvo::EffectsSlot> {
    using T = orvo::EffectsSlot;
    static constexpr char kName[] = "EffectsSlot";
    static constexpr std::tuple kRows{
        Row{"slotIndex", &T::slotIndex},
        Row{"bypassed", &T::bypassed},
        Row{"sideChainChannels", &T::sideChainChannels},
        Row{"busConfig", &T::busConfig},
        Row{"inputChannels", &T::inputChannels},
        Row{"outputChannels", &T::outputChannels},
        Row{"component", &T::component},
    };
};

template <>
struct Schema<orvo::EffectsRack> {
    using T = orvo::EffectsRack;
    static constexpr char kName[] = "EffectsRack";
    static constexpr std::tuple kRows{
        Row{"preFader", &T::preFader}, Row{"mix", &T::mix},     Row{"input", &T::input},
        Row{"output", &T::output},     Row{"slots", &T::slots},
    };
};

template <>
struct Schema<orvo::EditParameter> {
    using T = orvo::EditParameter;
    static constexpr char kName[] = "EditParameter";
    static constexpr std::tuple kRows{
        Row{"slotIndex", &T::slotIndex},
        Row{"parameterIndex", &T::parameterIndex},
    };
};

template <>
struct Schema<orvo::SendSlot> {
    using T = orvo::SendSlot;
    static constexpr char kName[] = "SendSlot";
    static constexpr std::tuple kRows{
        Row{"slotIndex", &T::slotIndex},         Row{"sendOutputId", &T::sendOutputId},
        Row{"preFader", &T::preFader},           Row{"destCompIndex", &T::destCompIndex},
        Row{"sendComponent", &T::sendComponent}, Row{"panComponent", &T::panComponent},
    };
};

template <>
struct Schema<orvo::SendList> {
    using T = orvo::SendList;
    static constexpr char kName[] = "SendList";
    static constexpr std::tuple kRows{
        Row{"slots", &T::slots},
    };
};

template <>
struct Schema<orvo::Fade> {
    using T = orvo::Fade;
    static constexpr char kName[] = "Fade";
    static constexpr std::tuple kRows{
        Row{"startPoint", &T::startPoint},
        Row{"endPoint", &T::endPoint},
        Row{"type", &T::type},
        Row{"shape", &T::shape},
        Row{"crossFadeLinkType", &T::crossFadeLinkType},
    };
};

template <>
struct Schema<orvo::ClipStretch> {
    using T = orvo::ClipStretch;
    static constexpr char kName[] = "ClipStretch";
    static constexpr std::tuple kRows{
        Row{"stretchMode", &T::stretchMode},
        Row{"stretchType", &T::stretchType},
        Row{"stretchRatio", &T::stretchRatio},
        Row{"pitchAdjustment", &T::pitchAdjustment},
        Row{"stretchQuality", &T::stretchQuality},
        Row{"transientSensitivity", &T::transientSensitivity},
        Row{"adaptiveWindowSize", &T::adaptiveWindowSize},
        Row{"preserveFormants", &T::preserveFormants},
    };
};

template <>
struct Schema<orvo::AudioClip> {
    using T = orvo::AudioClip;
    static constexpr char kName[] = "AudioClip";
    static constexpr std::tuple kRows{
        Row{"id", &T::id},
        Row{"fileId", &T::fileId},
        Row{"sourceInPoint", &T::sourceInPoint},
        Row{"duration", &T::duration},
        Row{"startPoint", &T::startPoint},
        Row{"hue", &T::hue},
        Row{"name", &T::name},
        Row{"looped", &T::looped},
        Row{"offline", &T::offline},
        Row{"selected", &T::selected},
        Row{"lockedInTime", &T::lockedInTime},
        Row{"zOrder", &T::zOrder},
        Row{"autoCrossfade", &T::autoCrossfade},
        Row{"crossFadeHeadClipId", &T::crossFadeHeadClipId},
        Row{"crossFadeTailClipId", &T::crossFadeTailClipId},
        Row{"fadeIn", &T::fadeIn},
        Row{"fadeOut", &T::fadeOut},
        Row{"stretch", &T::stretch},
        Row{"takes", &T::takes},
        Row{"gain", &T::gain},
        Row{"mute", &T::mute},
        Row{"pan", &T::pan},
        Row{"effectsRack", &T::effectsRack},
        Row{"editParameters", &T::editParameters},
        Row{"properties", &T::properties},
        Row{"channelSources", &T::channelSources},
    };
};

template <>
struct Schema<orvo::MidiClip> {
    using T = orvo::MidiClip;
    static constexpr char kName[] = "MidiClip";
    static constexpr std::tuple kRows{
        Row{"id", &T::id},
        Row{"sourceInPoint", &T::sourceInPoint},
        Row{"duration", &T::duration},
        Row{"startPoint", &T::startPoint},
        Row{"hue", &T::hue},
        Row{"name", &T::name},
        Row{"selected", &T::selected},
        Row{"lockedInTime", &T::lockedInTime},
        Row{"events", &T::events},
    };
};

template <>
struct Schema<orvo::InstrumentTrack> {
    using T = orvo::InstrumentTrack;
    static constexpr char kName[] = "InstrumentTrack";
    static constexpr std::tuple kRows{
        Row{"midiIn", &T::midiIn},
        Row{"midiAll", &T::midiAll},
    };
};

template <>
struct Schema<orvo::AudioTrack> {
    using T = orvo::AudioTrack;
    static constexpr char kName[] = "AudioTrack";
    static constexpr std::tuple kRows{
        Row{"id", &T::id},
        Row{"index", &T::index},
        Row{"kind", &T::kind},
        Row{"name", &T::name},
        Row{"hue", &T::hue},
        Row{"height", &T::height},
        Row{"selected", &T::selected},
        Row{"minimized", &T::minimized},
        Row{"visible", &T::visible},
        Row{"automationLaneOpen", &T::automationLaneOpen},
        Row{"phaseInverted", &T::phaseInverted},
        Row{"preRendered", &T::preRendered},
        Row{"preRenderedFile", &T::preRenderedFile},
        Row{"sumToMono", &T::sumToMono},
        Row{"audioChannelType", &T::audioChannelType},
        Row{"solo", &T::solo},
        Row{"recordArmed", &T::recordArmed},
        Row{"monitoring", &T::monitoring},
        Row{"soloSafe", &T::soloSafe},
        Row{"outputTrackId", &T::outputTrackId},
        Row{"inputId", &T::inputId},
        Row{"hardwareOutputId", &T::hardwareOutputId},
        Row{"automationMode", &T::automationMode},
        Row{"instrument", &T::instrument},
        Row{"fader", &T::fader},
        Row{"mute", &T::mute},
        Row{"pan", &T::pan},
        Row{"eq", &T::eq},
        Row{"effectsRack", &T::effectsRack},
        Row{"editParameters", &T::editParameters},
        Row{"sendList", &T::sendList},
        Row{"clips", &T::clips},
        Row{"midiClips", &T::midiClips},
        Row{"clipsOnly", &T::clipsOnly},
    };
};

template <>
struct Schema<orvo::VideoFormat> {
    using T = orvo::VideoFormat;
    static constexpr char kName[] = "VideoFormat";
    static constexpr std::tuple kRows{
        Row{"timeScale", &T::timeScale},
        Row{"sampleSize", &T::sampleSize},
        Row{"pixelType", &T::pixelType},
        Row{"width", &T::width},
        Row{"height", &T::height},
        Row{"parNumerator", &T::parNumerator},
        Row{"parDenominator", &T::parDenominator},
        Row{"fieldType", &T::fieldType},
    };
};

template <>
struct Schema<orvo::VideoClip> {
    using T = orvo::VideoClip;
    static constexpr char kName[] = "VideoClip";
    static constexpr std::tuple kRows{
        Row{"id", &T::id},
        Row{"fileId", &T::fileId},
        Row{"sourceInPoint", &T::sourceInPoint},
        Row{"duration", &T::duration},
        Row{"startPoint", &T::startPoint},
        Row{"hue", &T::hue},
        Row{"name", &T::name},
        Row{"offline", &T::offline},
        Row{"selected", &T::selected},
        Row{"lockedInTime", &T::lockedInTime},
        Row{"zOrder", &T::zOrder},
        Row{"format", &T::format},
    };
};

template <>
struct Schema<orvo::VideoTrack> {
    using T = orvo::VideoTrack;
    static constexpr char kName[] = "VideoTrack";
    static constexpr std::tuple kRows{
        Row{"id", &T::id},
        Row{"index", &T::index},
        Row{"name", &T::name},
        Row{"hue", &T::hue},
        Row{"height", &T::height},
        Row{"selected", &T::selected},
        Row{"minimized", &T::minimized},
        Row{"clips", &T::clips},
    };
};

template <>
struct Schema<orvo::TrackVisibility> {
    using T = orvo::TrackVisibility;
    static constexpr char kName[] = "TrackVisibility";
    static constexpr std::tuple kRows{
        Row{"trackId", &T::trackId},
        Row{"height", &T::height},
        Row{"minimized", &T::minimized},
    };
};

template <>
struct Schema<orvo::TrackVisibilityPreset> {
    using T = orvo::TrackVisibilityPreset;
    static constexpr char kName[] = "TrackVisibilityPreset";
    static constexpr std::tuple kRows{
        Row{"id", &T::id},
        Row{"name", &T::name},
        Row{"tracks", &T::tracks},
    };
};

template <>
struct Schema<orvo::ClipGroupItem> {
    using T = orvo::ClipGroupItem;
    static constexpr char kName[] = "ClipGroupItem";
    static constexpr std::tuple kRows{
        Row{"trackId", &T::trackId},
        Row{"clipId", &T::clipId},
    };
};

template <>
struct Schema<orvo::ClipGroup> {
    using T = orvo::ClipGroup;
    static constexpr char kName[] = "ClipGroup";
    static constexpr std::tuple kRows{
        Row{"id", &T::id},
        Row{"name", &T::name},
        Row{"hue", &T::hue},
        Row{"items", &T::items},
    };
};

template <>
struct Schema<orvo::GlobalTrackInfo> {
    using T = orvo::GlobalTrackInfo;
    static constexpr char kName[] = "GlobalTrackInfo";
    static constexpr std::tuple kRows{
        Row{"timeSigVisible", &T::timeSigVisible},
        Row{"keySigVisible", &T::keySigVisible},
        Row{"tempoVisible", &T::tempoVisible},
        Row{"tempoEvents", &T::tempoEvents},
        Row{"timeSignatureEvents", &T::timeSignatureEvents},
        Row{"keySignatureEvents", &T::keySignatureEvents},
    };
};

template <>
struct Schema<orvo::Metronome> {
    using T = orvo::Metronome;
    static constexpr char kName[] = "Metronome";
    static constexpr std::tuple kRows{
        Row{"enabled", &T::enabled},
        Row{"soundSet", &T::soundSet},
        Row{"pattern", &T::pattern},
        Row{"track", &T::track},
        Row{"globalTrackInfo", &T::globalTrackInfo},
    };
};

template <>
struct Schema<orvo::Selection> {
    using T = orvo::Selection;
    static constexpr char kName[] = "Selection";
    static constexpr std::tuple kRows{
        Row{"start", &T::start},
        Row{"duration", &T::duration},
    };
};

template <>
struct Schema<orvo::ViewState> {
    using T = orvo::ViewState;
    static constexpr char kName[] = "ViewState";
    static constexpr std::tuple kRows{
        Row{"horizontalViewStart", &T::horizontalViewStart},
        Row{"horizontalViewDuration", &T::horizontalViewDuration},
        Row{"trackControlsWidth", &T::trackControlsWidth},
        Row{"verticalScrollOffset", &T::verticalScrollOffset},
    };
};

template <>
struct Schema<orvo::TimeFormat> {
    using T = orvo::TimeFormat;
    static constexpr char kName[] = "TimeFormat";
    static constexpr std::tuple kRows{
        Row{"format", &T::format},
        Row{"frameRate", &T::frameRate},
        Row{"ntsc", &T::ntsc},
        Row{"dropFrame", &T::dropFrame},
        Row{"customFrameRate", &T::customFrameRate},
        Row{"linkedToDefaults", &T::linkedToDefaults},
    };
};

template <>
struct Schema<orvo::MusicalTime> {
    using T = orvo::MusicalTime;
    static constexpr char kName[] = "MusicalTime";
    static constexpr std::tuple kRows{
        Row{"beatsPerMinute", &T::beatsPerMinute},
        Row{"beatsPerBar", &T::beatsPerBar},
        Row{"noteLength", &T::noteLength},
        Row{"subdivisions", &T::subdivisions},
    };
};

template <>
struct Schema<orvo::MixingOptions> {
    using T = orvo::MixingOptions;
    static constexpr char kName[] = "MixingOptions";
    static constexpr std::tuple kRows{
        Row{"panLogarithmic", &T::panLogarithmic},
        Row{"panPower", &T::panPower},
        Row{"playOverlappingClips", &T::playOverlappingClips},
    };
};

template <>
struct Schema<orvo::Property> {
    using T = orvo::Property;
    static constexpr char kName[] = "Property";
    static constexpr std::tuple kRows{
        Row{"key", &T::key},
        Row{"value", &T::value},
    };
};

template <>
struct Schema<orvo::File> {
    using T = orvo::File;
    static constexpr char kName[] = "File";
    static constexpr std::tuple kRows{
        Row{"id", &T::id},
        Row{"path", &T::path},
        Row{"mediaHandler", &T::mediaHandler},
        Row{"recoveryId", &T::recoveryId},
        Row{"importerPrivateSettings", &T::importerPrivateSettings},
    };
};

template <>
struct Schema<orvo::AudioPort> {
    using T = orvo::AudioPort;
    static constexpr char kName[] = "AudioPort";
    static constexpr std::tuple kRows{
        Row{"id", &T::id},
        Row{"name", &T::name},
    };
};

template <>
struct Schema<orvo::AudioDevice> {
    using T = orvo::AudioDevice;
    static constexpr char kName[] = "AudioDevice";
    static constexpr std::tuple kRows{
        Row{"inputDeviceId", &T::inputDeviceId},
        Row{"outputDeviceId", &T::outputDeviceId},
        Row{"inputPorts", &T::inputPorts},
        Row{"outputPorts", &T::outputPorts},
    };
};

template <>
struct Schema<orvo::FormatVersion> {
    using T = orvo::FormatVersion;
    static constexpr char kName[] = "FormatVersion";
    static constexpr std::tuple kRows{
        Row{"major", &T::major},
        Row{"minor", &T::minor},
    };
};

template <>
struct Schema<orvo::Session> {
    using T = orvo::Session;
    static constexpr char kName[] = "Session";
    static constexpr std::tuple kRows{
        Row{"formatVersion", &T::formatVersion},
        Row{"sampleRate", &T::sampleRate},
        Row{"channelCount", &T::channelCount},
        Row{"duration", &T::duration},
        Row{"bitDepth", &T::bitDepth},
        Row{"formatDescription", &T::formatDescription},
        Row{"versionDependentValue", &T::versionDependentValue},
        Row{"videoTracks", &T::videoTracks},
        Row{"audioTracks", &T::audioTracks},
        Row{"trackVisibilityPresets", &T::trackVisibilityPresets},
        Row{"clipGroups", &T::clipGroups},
        Row{"metronome", &T::metronome},
        Row{"ctiPosition", &T::ctiPosition},
        Row{"smpteStart", &T::smpteStart},
        Row{"selection", &T::selection},
        Row{"viewState", &T::viewState},
        Row{"timeFormat", &T::timeFormat},
        Row{"musicalTime", &T::musicalTime},
        Row{"mixingOptions", &T::mixingOptions},
        Row{"properties", &T::properties},
        Row{"xmpMetadata", &T::xmpMetadata},
        Row{"files", &T::files},
        Row{"audioDevice", &T::audioDevice},
    };
};

}  // namespace refhost
