#include <nlohmann/json.hpp>
#include <sstream>
#include <type_traits>

#include <orvo/Times.h>
#include "cli/verbs/InfoReport.h"
#include "platform/kelcore/Strings.h"

// `orvo info --json`.

namespace cli {
namespace {

using nlohmann::ordered_json;

ordered_json ToJson(const orvo::AudioPort& port);
ordered_json ToJson(const orvo::Property& property);
ordered_json ToJson(const orvo::VideoFormat& format);
ordered_json ToJson(const toolkit::MediaSummary& file);
ordered_json ToJson(const toolkit::SendSummary& send);
ordered_json ToJson(const toolkit::EffectSummary& effect);
ordered_json ToJson(const toolkit::TrackSummary& track);
ordered_json ToJson(const toolkit::ClipSummary& clip);
ordered_json ToJson(const toolkit::GroupSummary& group);
ordered_json ToJson(const Message& message);

/// Converts each element of a list to an object.
template <class List>
ordered_json ToArray(const List& list) {
    ordered_json array = ordered_json::array();
    for (const auto& element : list) {
        array.push_back(ToJson(element));
    }
    return array;
}

/// The word, or the number if it has none.
ordered_json ToJson(orvo::ChannelType type) {
    std::ostringstream word;
    word << type;
    const auto number = static_cast<std::underlying_type_t<orvo::ChannelType>>(type);
    return word.str() == std::to_string(number) ? ordered_json(number) : ordered_json(word.str());
}

ordered_json ToJson(const orvo::AudioPort& port) {
    return {{"id", port.id}, {"name", port.name}};
}

ordered_json ToJson(const orvo::Property& property) {
    return {{"key", property.key}, {"value", property.value}};
}

ordered_json ToJson(const orvo::VideoFormat& format) {
    return {{"width", format.width},
            {"height", format.height},
            {"timeScale", format.timeScale},
            {"sampleSize", format.sampleSize},
            {"pixelAspect", {format.parNumerator, format.parDenominator}}};
}

template <class Value>
ordered_json OrNull(const std::optional<Value>& value) {
    return value ? ordered_json(*value) : ordered_json(nullptr);
}

ordered_json ToJson(const toolkit::MediaSummary& file) {
    const auto& stored = file.stored;
    return {{"id", file.id},
            {"path", file.path},
            {"found", file.found},
            {"absolutePath",
             stored ? ordered_json(kelcore::UTF16to8(stored->absolute)) : ordered_json(nullptr)},
            {"relativePath",
             stored ? ordered_json(kelcore::UTF16to8(stored->relative)) : ordered_json(nullptr)},
            {"handler", file.handlerName},
            {"handlerId", file.handlerId}};
}

ordered_json ToJson(const toolkit::SendSummary& send) {
    return {{"destination", send.destination},
            {"component", OrNull(send.component)},
            {"preFader", send.preFader},
            {"lanes", send.automation.lanes},
            {"keyframes", send.automation.keyframes}};
}

ordered_json ToJson(const toolkit::EffectSummary& effect) {
    return {{"slot", effect.slotIndex},
            {"name", effect.name},
            {"bypassed", effect.bypassed},
            {"sideChainChannels", effect.sideChainChannels},
            {"preset", effect.preset},
            {"presetBytes", effect.presetBytes},
            {"parameters", effect.parameters},
            {"lanes", effect.automation.lanes},
            {"keyframes", effect.automation.keyframes}};
}

ordered_json ToJson(const toolkit::TrackSummary& track) {
    return {{"kind", toolkit::KindName(track.kind)},
            {"id", track.id},
            {"name", track.name},
            {"audioChannelType", ToJson(track.audioChannelType)},
            {"input", track.input},
            {"midiInput", track.midiInput},
            {"output", track.output},
            {"muted", track.muted},
            {"solo", track.solo},
            {"soloSafe", track.soloSafe},
            {"recordArmed", track.recordArmed},
            {"monitoring", track.monitoring},
            {"phaseInverted", track.phaseInverted},
            {"summedToMono", track.sumToMono},
            {"preRendered", track.preRendered},
            {"visible", track.visible},
            {"clips", track.clips},
            {"lanes", track.automation.lanes},
            {"keyframes", track.automation.keyframes},
            {"sends", ToArray(track.sends)},
            {"effects", ToArray(track.effects)},
            {"pictures", ToArray(track.pictures)}};
}

ordered_json ToJson(const toolkit::ClipSummary& clip) {
    return {{"track", clip.trackId},
            {"id", clip.id},
            {"name", clip.name},
            {"startSamples", clip.start},
            {"durationSamples", clip.duration},
            {"media", OrNull(clip.fileId)},
            {"sourceInSamples", OrNull(clip.sourceInPoint)},
            {"group", clip.group},
            {"notes", clip.marks}};
}

ordered_json ToJson(const toolkit::GroupSummary& group) {
    return {{"id", group.id},
            {"name", group.name},
            {"clips", group.members},
            {"clipsMissing", group.dangling}};
}

ordered_json ToJson(const Message& message) {
    return {{"line", message.place.line},
            {"column", message.place.column},
            {"what", message.what},
            {"advice", message.advice}};
}

ordered_json Device(const std::string& id, const std::vector<orvo::AudioPort>& ports) {
    return {{"device", id}, {"ports", ToArray(ports)}};
}

void AddSession(const toolkit::SessionSummary& summary, ordered_json& object) {
    object["format"] = summary.format;
    object["sampleRate"] = summary.sampleRate;
    object["audioChannelType"] = ToJson(summary.audioChannelType);
    object["bitDepth"] = summary.bitDepth;
    object["durationSamples"] = summary.duration;
    object["duration"] = OrNull(orvo::FormatTime(summary.duration, summary.sampleRate));
    object["input"] = Device(summary.audioDevice.inputDeviceId, summary.audioDevice.inputPorts);
    object["output"] = Device(summary.audioDevice.outputDeviceId, summary.audioDevice.outputPorts);
    object["beatsPerMinute"] = summary.beatsPerMinute;
    object["beatsPerBar"] = summary.beatsPerBar;
    object["noteLength"] = summary.noteLength;
    object["timeFormat"] = toolkit::TimeFormatName(summary.timeFormat);
    object["smpteStartSamples"] = summary.smpteStart;
    object["smpteStart"] = OrNull(summary.FormatSmpteStart());
    object["tempoChanges"] = summary.tempoChanges;
    object["timeSignatureChanges"] = summary.timeSignatureChanges;
    object["keySignatureChanges"] = summary.keySignatureChanges;
    object["metronomeOn"] = summary.metronomeOn;
    object["metronomeBeats"] = summary.metronomeBeats;
    object["properties"] = ToArray(summary.properties);
    object["xmpLength"] = summary.xmpLength;
    object["clipsOffline"] = summary.clipsOffline;
    object["mediaMissing"] = summary.MissingCount();
    object["media"] = ToArray(summary.media);
}

}  // namespace

ordered_json InfoToJson(const InfoReport& report) {
    ordered_json object = {{"file", report.name}};
    if (!report.content) {
        object["errors"] = ToArray(report.messages);
        return object;
    }
    AddSession(report.content->session, object);
    object["tracks"] = ToArray(report.content->tracks);
    object["clips"] = ToArray(report.content->clips);
    object["groups"] = ToArray(report.content->groups);
    return object;
}

ordered_json MissingToJson(const InfoReport& report) {
    if (!report.content) {
        return InfoToJson(report);
    }
    const toolkit::SessionSummary& summary = report.content->session;
    const std::size_t count = summary.MissingCount();
    if (count == 0) {
        return nullptr;
    }
    return {
        {"file", report.name}, {"mediaMissing", count}, {"media", ToArray(summary.MissingMedia())}};
}

}  // namespace cli
