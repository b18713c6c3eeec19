#include <fmt/format.h>

#include <algorithm>
#include <type_traits>

#include <orvo/Times.h>
#include "cli/files/ShownPath.h"
#include "cli/terminal/Table.h"
#include "cli/verbs/InfoReport.h"
#include "format/Ids.h"
#include "platform/kelcore/Strings.h"

// `orvo info` for people.

namespace cli {
namespace {

using toolkit::AutomationCount;
using toolkit::ClipSummary;
using toolkit::EffectSummary;
using toolkit::GroupSummary;
using toolkit::SendSummary;
using toolkit::SessionSummary;
using toolkit::TrackSummary;

using Rows = std::vector<std::vector<std::string>>;

std::string Plural(std::size_t count, const char* one) {
    return fmt::format("{} {}{}", count, one, count == 1 ? "" : "s");
}

/// Shows zero as an empty cell.
std::string Unless0(std::size_t count) {
    return count == 0 ? "" : std::to_string(count);
}

// The session

constexpr std::size_t kLongestShownValue = 72;

/// A time, if known, followed by its samples.
std::string WithSamples(const std::optional<std::string>& time, kelcore::int64 count) {
    const std::string samples = fmt::format("{} sample{}", count, count == 1 ? "" : "s");
    return time ? fmt::format("{} ({})", *time, samples) : samples;
}

std::string ShownDuration(const SessionSummary& summary) {
    return WithSamples(orvo::FormatTime(summary.duration, summary.sampleRate), summary.duration);
}

std::string ShownChannels(orvo::ChannelType type) {
    const auto count = static_cast<std::underlying_type_t<orvo::ChannelType>>(type);
    const auto layout = toolkit::ChannelLayoutName(type);
    return layout ? fmt::format("{} ({})", count, *layout) : fmt::format("{}", count);
}

std::string ShownDevice(const std::string& id, const std::vector<orvo::AudioPort>& ports) {
    std::string shown = id.empty() ? "none" : Printable(id);
    const char* separator = ": ";
    for (const orvo::AudioPort& port : ports) {
        shown += fmt::format("{}{} {}", separator, port.id, Printable(port.name));
        separator = ", ";
    }
    return shown;
}

std::string ShownMediaCount(const SessionSummary& summary) {
    const std::size_t missing = summary.MissingCount();
    if (summary.media.empty()) {
        return "none";
    }
    return Plural(summary.media.size(), "file") + ", " +
           (missing == 0 ? "all found" : fmt::format("{} missing", missing));
}

std::string ShownTempo(const SessionSummary& summary) {
    return fmt::format("{} beats a minute, {}/{}", summary.beatsPerMinute, summary.beatsPerBar,
                       summary.noteLength);
}

std::string ShownMetronome(const SessionSummary& summary) {
    const std::string beats = Plural(summary.metronomeBeats, "beat");
    return fmt::format("{}, {} in the pattern", summary.metronomeOn ? "on" : "off", beats);
}

std::string ShownTimeline(const SessionSummary& summary) {
    std::vector<std::string> events;
    const auto add = [&events](bool there, const char* word) {
        if (there) {
            events.emplace_back(word);
        }
    };
    add(summary.tempoChanges, "tempo");
    add(summary.timeSignatureChanges, "time signature");
    add(summary.keySignatureChanges, "key signature");
    return fmt::format("{}", fmt::join(events, ", "));
}

/// Shows only the length of a value that does not fit on a line.
std::string ShownProperty(const orvo::Property& property) {
    const std::size_t length = kelcore::UTF8to16(property.value).size();
    return Printable(property.key) + ": " +
           (length <= kLongestShownValue ? Printable(property.value) : Plural(length, "character"));
}

/// Musical facts that only some sessions contain.
void AddMusic(const SessionSummary& summary, Rows& rows) {
    if (summary.beatsPerMinute > 0) {
        rows.push_back({"Tempo", ShownTempo(summary)});
    }
    const std::string timeline = ShownTimeline(summary);
    if (!timeline.empty()) {
        rows.push_back({"Events", timeline});
    }
    if (summary.metronomeOn || summary.metronomeBeats != 0) {
        rows.push_back({"Metronome", ShownMetronome(summary)});
    }
}

/// Other facts that only some sessions contain.
void AddNotes(const SessionSummary& summary, Rows& rows) {
    const std::string times = toolkit::TimeFormatName(summary.timeFormat);
    if (times != "decimal") {
        rows.push_back({"Times", times});
    }
    if (summary.smpteStart != 0) {
        rows.push_back({"Starts at", WithSamples(summary.FormatSmpteStart(), summary.smpteStart)});
    }
    const char* label = "Properties";
    for (const orvo::Property& property : summary.properties) {
        rows.push_back({label, ShownProperty(property)});
        label = "";
    }
    if (summary.xmpLength != 0) {
        rows.push_back({"XMP", Plural(summary.xmpLength, "character")});
    }
    if (summary.clipsOffline != 0) {
        rows.push_back({"Offline", Plural(summary.clipsOffline, "clip")});
    }
}

std::string ShownSession(const SessionSummary& summary) {
    const orvo::AudioDevice& device = summary.audioDevice;
    Rows rows = {{"Format", Printable(summary.format)},
                 {"Duration", ShownDuration(summary)},
                 {"Sample rate", fmt::format("{} Hz", summary.sampleRate)},
                 {"Channels", ShownChannels(summary.audioChannelType)},
                 {"Bit depth", fmt::format("{} bits", summary.bitDepth)},
                 {"Input", ShownDevice(device.inputDeviceId, device.inputPorts)},
                 {"Output", ShownDevice(device.outputDeviceId, device.outputPorts)}};
    AddMusic(summary, rows);
    AddNotes(summary, rows);
    rows.push_back({"Media", ShownMediaCount(summary)});
    return FormatTable(rows, {Align::Left, Align::Left}, "  ");
}

/// Shows the stored paths of missing media if they differ from the path in the table.
void AddStoredPaths(const toolkit::MediaSummary& file, Rows& rows) {
    if (!file.stored) {
        return;
    }
    const std::string absolute = kelcore::UTF16to8(file.stored->absolute);
    if (!absolute.empty() && absolute != file.path) {
        rows.push_back({"", "", "", "absolute: " + Printable(absolute)});
    }
    if (!file.stored->relative.empty()) {
        rows.push_back(
            {"", "", "", "relative: " + Printable(kelcore::UTF16to8(file.stored->relative))});
    }
}

std::string ShownMedia(const std::vector<toolkit::MediaSummary>& media) {
    Rows rows = {{"Id", "State", "Handler", "Path"}};
    for (const toolkit::MediaSummary& file : media) {
        rows.push_back({std::to_string(file.id), file.found ? "found" : "missing",
                        Printable(file.handlerName), ShownPath(file.path)});
        AddStoredPaths(file, rows);
    }
    return FormatTable(rows, {Align::Right, Align::Left, Align::Left, Align::Left}, "  ");
}

// Tracks

std::string ShownLayout(orvo::ChannelType type) {
    if (type == orvo::ChannelType::NotSaid) {
        return "";
    }
    const auto layout = toolkit::ChannelLayoutName(type);
    return layout ? *layout : std::to_string(static_cast<kelcore::uint32>(type));
}

/// Files store no id for the metronome's track; a reader assigns it the "no track" id.
std::string ShownId(const TrackSummary& track) {
    return track.id == tses::kNoId ? "" : std::to_string(track.id);
}

std::string ShownTracks(const std::vector<TrackSummary>& tracks) {
    Rows rows = {{"Track", "Id", "Name", "Channels", "Output", "Sends", "Effects", "Clips", "Lanes",
                  "Keyframes"}};
    for (const TrackSummary& track : tracks) {
        rows.push_back({toolkit::KindName(track.kind), ShownId(track), Printable(track.name),
                        ShownLayout(track.audioChannelType), Printable(track.output),
                        Unless0(track.sends.size()), Unless0(track.effects.size()),
                        Unless0(track.clips), Unless0(track.automation.lanes),
                        Unless0(track.automation.keyframes)});
    }
    return FormatTable(rows,
                       {Align::Left, Align::Right, Align::Left, Align::Left, Align::Left,
                        Align::Right, Align::Right, Align::Right, Align::Right, Align::Right},
                       "  ");
}

std::string ShownAutomation(const AutomationCount& count) {
    return count.lanes == 0
               ? ""
               : Plural(count.lanes, "lane") + ", " + Plural(count.keyframes, "keyframe");
}

std::string ShownSwitches(const TrackSummary& track) {
    std::string shown;
    const auto add = [&shown](bool on, const char* word) {
        if (on) {
            shown += (shown.empty() ? "" : ", ") + std::string(word);
        }
    };
    add(track.muted, "muted");
    add(track.solo, "solo");
    add(track.soloSafe, "solo safe");
    add(track.recordArmed, "armed");
    add(track.monitoring, "monitoring");
    add(track.phaseInverted, "phase inverted");
    add(track.sumToMono, "summed to mono");
    add(track.preRendered, "pre-rendered");
    add(!track.visible, "hidden");
    return shown.empty() ? "none" : shown;
}

std::string ShownSend(const SendSummary& send) {
    std::string shown = send.destination.empty() ? "nowhere" : Printable(send.destination);
    if (send.component) {
        shown += fmt::format(", component {}", *send.component);
    }
    shown += send.preFader ? " (pre-fader)" : " (post-fader)";
    const std::string automation = ShownAutomation(send.automation);
    return automation.empty() ? shown : shown + ", " + automation;
}

std::string TrackTitle(const TrackSummary& track) {
    const std::string id = ShownId(track);
    return fmt::format("  {}{}{}: {}\n", toolkit::KindName(track.kind), id.empty() ? "" : " ", id,
                       Printable(track.name));
}

std::string ShownPicture(const orvo::VideoFormat& format) {
    std::string shown = fmt::format("{} x {}", format.width, format.height);
    if (format.timeScale > 0 && format.sampleSize > 0) {
        const double rate =
            static_cast<double>(format.timeScale) / static_cast<double>(format.sampleSize);
        shown += fmt::format(", {:.6g} frames a second", rate);
    }
    if (format.parNumerator != 0 && format.parNumerator != format.parDenominator) {
        shown += fmt::format(", pixels {}:{}", format.parNumerator, format.parDenominator);
    }
    return shown;
}

Rows PictureRows(const TrackSummary& track) {
    Rows rows = {{"Clips", std::to_string(track.clips)}};
    for (const orvo::VideoFormat& format : track.pictures) {
        rows.push_back({"Picture", ShownPicture(format)});
    }
    return rows;
}

Rows SoundRows(const TrackSummary& track) {
    Rows rows = {{"Input", track.input.empty() ? "none" : Printable(track.input)},
                 {"Output", track.output.empty() ? "none" : Printable(track.output)},
                 {"Switches", ShownSwitches(track)}};
    if (!track.midiInput.empty()) {
        rows.insert(rows.begin() + 1, {"MIDI input", Printable(track.midiInput)});
    }
    for (const SendSummary& send : track.sends) {
        rows.push_back({"Send", ShownSend(send)});
    }
    const std::string automation = ShownAutomation(track.automation);
    rows.push_back({"Automation", automation.empty() ? "none" : automation});
    return rows;
}

std::string ShownRouting(const TrackSummary& track) {
    return FormatTable(track.kind ? SoundRows(track) : PictureRows(track),
                       {Align::Left, Align::Left}, "    ");
}

std::string ShownState(const EffectSummary& effect) {
    return std::string(effect.bypassed ? "bypassed" : "on") +
           (effect.sideChainChannels != 0 ? ", side chain" : "");
}

std::string ShownEffects(const TrackSummary& track) {
    Rows rows = {{"Slot", "Effect", "State", "Preset", "Parameters", "Automation"}};
    for (const EffectSummary& effect : track.effects) {
        rows.push_back({std::to_string(effect.slotIndex),
                        effect.name.empty() ? "(empty)" : Printable(effect.name),
                        ShownState(effect), Printable(effect.preset),
                        std::to_string(effect.parameters), ShownAutomation(effect.automation)});
    }
    return FormatTable(
        rows, {Align::Right, Align::Left, Align::Left, Align::Left, Align::Right, Align::Left},
        "    ");
}

/// The requested details of one track under a common title.
std::string ShownTrack(const TrackSummary& track, const InfoDetail& detail) {
    const bool effects = detail.effects && !track.effects.empty();
    if (!detail.tracks && !effects) {
        return "";
    }
    std::string text = "\n" + TrackTitle(track);
    if (detail.tracks) {
        text += ShownRouting(track);
    }
    if (detail.tracks && effects) {
        text += "\n";
    }
    return effects ? text + ShownEffects(track) : text;
}

// Clips

std::string ShownPosition(kelcore::int64 samples, kelcore::uint32 sampleRate) {
    const auto time = orvo::FormatTime(samples, sampleRate);
    return time ? *time : std::to_string(samples);
}

std::string ShownClips(const InfoContent& content) {
    const kelcore::uint32 rate = content.session.sampleRate;
    Rows rows = {
        {"Track", "Clip", "Name", "Start", "Length", "Media", "Source in", "Group", "Notes"}};
    for (const ClipSummary& clip : content.clips) {
        rows.push_back({Printable(clip.trackName), std::to_string(clip.id), Printable(clip.name),
                        ShownPosition(clip.start, rate), ShownPosition(clip.duration, rate),
                        clip.fileId ? std::to_string(*clip.fileId) : "",
                        clip.sourceInPoint ? ShownPosition(*clip.sourceInPoint, rate) : "",
                        Printable(clip.group), fmt::format("{}", fmt::join(clip.marks, ", "))});
    }
    return FormatTable(rows,
                       {Align::Left, Align::Right, Align::Left, Align::Right, Align::Right,
                        Align::Right, Align::Right, Align::Left, Align::Left},
                       "  ");
}

std::string ShownGroups(const std::vector<GroupSummary>& groups) {
    Rows rows = {{"Group", "Name", "Clips", "Notes"}};
    for (const GroupSummary& group : groups) {
        rows.push_back({std::to_string(group.id), Printable(group.name),
                        std::to_string(group.members),
                        group.dangling == 0 ? "" : Plural(group.dangling, "clip") + " missing"});
    }
    return FormatTable(rows, {Align::Right, Align::Left, Align::Right, Align::Left}, "  ");
}

std::string Title(const InfoReport& report) {
    return Printable(report.name) + "\n";
}

}  // namespace

std::string ShowMissing(const InfoReport& report) {
    const auto missing = report.content->session.MissingMedia();
    return missing.empty() ? "" : Title(report) + ShownMedia(missing);
}

std::string ShowInfo(const InfoReport& report, const InfoDetail& detail) {
    const InfoContent& content = *report.content;
    std::string text = Title(report) + ShownSession(content.session);
    if (!content.session.media.empty()) {
        text += "\n" + ShownMedia(content.session.media);
    }
    if (!content.tracks.empty()) {
        text += "\n" + ShownTracks(content.tracks);
    }
    for (const TrackSummary& track : content.tracks) {
        text += ShownTrack(track, detail);
    }
    if (detail.clips && !content.clips.empty()) {
        text += "\n" + ShownClips(content);
    }
    if (!content.groups.empty()) {
        text += "\n" + ShownGroups(content.groups);
    }
    return text;
}

}  // namespace cli
