#include <fmt/format.h>

#include <cstdio>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>

#include "cli/Messages.h"
#include "cli/ProgressBar.h"
#include "cli/SessionFile.h"
#include "cli/Table.h"
#include "cli/Verb.h"
#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"
#include "reference_host/Sessions.h"
#include "toolkit/SessionSummary.h"

// orvo info FILE... [--json]

namespace cli {
namespace {

using nlohmann::ordered_json;
using toolkit::SessionSummary;

struct Options {
    std::vector<std::string> files;
    bool json = false;
};

/// What one file gave: a summary, or why there is none.
struct Report {
    std::string name;
    std::optional<SessionSummary> summary;
    std::vector<Message> messages;
};

Report Inspect(refhost::Plugin& plugin, const std::string& name) {
    const SessionFile file(name);
    ProgressBar bar("reading " + file.Name());
    refhost::ReadOptions options;
    options.progress = [&](const refhost::Progress& progress) {
        bar.Update(progress.done, progress.total);
    };
    const refhost::ReadResult read = refhost::ReadSession(plugin, file.FullPath(), options);
    if (read.result != tses::SessionResult::Ok) {
        return {file.Name(), std::nullopt, ExplainRefusal(file, read.messages)};
    }
    return {file.Name(), toolkit::Summarise(read.session, toolkit::IsMediaFile), {}};
}

// For people

std::string Text(const std::u16string& text) {
    return Printable(kelcore::UTF16to8(text));
}

/// A path as it is shortest to name from the working directory.
std::string ShownPath(const std::u16string& path) {
    const std::filesystem::path full(kelcore::PathToBytes(path));
    const std::filesystem::path relative = full.lexically_relative(std::filesystem::current_path());
    const bool below = !relative.empty() && *relative.begin() != "..";
    return Printable((below ? relative : full).string());
}

std::string ShownDuration(const SessionSummary& summary) {
    const std::string samples =
        fmt::format("{} sample{}", summary.duration, summary.duration == 1 ? "" : "s");
    const auto time = toolkit::FormatTime(summary.duration, summary.sampleRate);
    return time ? fmt::format("{} ({})", *time, samples) : samples;
}

std::string ShownChannels(kelcore::int32 count) {
    const auto layout = toolkit::ChannelLayoutName(count);
    return layout ? fmt::format("{} ({})", count, *layout) : fmt::format("{}", count);
}

std::string ShownDevice(const std::u16string& id,
                        const std::vector<refhost::model::AudioPort>& ports) {
    std::string shown = id.empty() ? "none" : Text(id);
    const char* separator = ": ";
    for (const refhost::model::AudioPort& port : ports) {
        shown += fmt::format("{}{} {}", separator, port.id, Text(port.name));
        separator = ", ";
    }
    return shown;
}

std::string ShownMediaCount(const SessionSummary& summary) {
    const std::size_t count = summary.media.size();
    const std::size_t missing = summary.MissingCount();
    if (count == 0) {
        return "none";
    }
    return fmt::format("{} file{}, {}", count, count == 1 ? "" : "s",
                       missing == 0 ? "all found" : fmt::format("{} missing", missing));
}

std::string ShownMedia(const SessionSummary& summary) {
    std::vector<std::vector<std::string>> rows = {{"Id", "State", "Handler", "Path"}};
    for (const toolkit::MediaSummary& file : summary.media) {
        rows.push_back({std::to_string(file.id), file.found ? "found" : "missing",
                        Text(file.handlerName), ShownPath(file.path)});
    }
    return FormatTable(rows, {Align::Right, Align::Left, Align::Left, Align::Left}, "  ");
}

std::string Shown(const Report& report) {
    const SessionSummary& summary = *report.summary;
    const refhost::model::AudioDevice& device = summary.audioDevice;
    std::string text = Printable(report.name) + "\n";
    text += FormatTable({{"Format", Text(summary.format)},
                         {"Duration", ShownDuration(summary)},
                         {"Sample rate", fmt::format("{} Hz", summary.sampleRate)},
                         {"Channels", ShownChannels(summary.channelCount)},
                         {"Bit depth", fmt::format("{} bits", summary.bitDepth)},
                         {"Input", ShownDevice(device.inputDeviceId, device.inputPorts)},
                         {"Output", ShownDevice(device.outputDeviceId, device.outputPorts)},
                         {"Media", ShownMediaCount(summary)}},
                        {Align::Left, Align::Left}, "  ");
    if (!summary.media.empty()) {
        text += "\n" + ShownMedia(summary);
    }
    return text;
}

// For programs

ordered_json ToJson(const std::u16string& id, const std::vector<refhost::model::AudioPort>& ports) {
    ordered_json list = ordered_json::array();
    for (const refhost::model::AudioPort& port : ports) {
        list.push_back({{"id", port.id}, {"name", kelcore::UTF16to8(port.name)}});
    }
    return {{"device", kelcore::UTF16to8(id)}, {"ports", std::move(list)}};
}

ordered_json ToJson(const toolkit::MediaSummary& file) {
    return {{"id", file.id},
            {"path", kelcore::UTF16to8(file.path)},
            {"found", file.found},
            {"handler", kelcore::UTF16to8(file.handlerName)},
            {"handlerId", kelcore::UTF16to8(file.handlerId)}};
}

ordered_json ToJson(const Report& report) {
    ordered_json object = {{"file", report.name}};
    if (!report.summary) {
        ordered_json errors = ordered_json::array();
        for (const Message& message : report.messages) {
            errors.push_back({{"line", message.place.line},
                              {"column", message.place.column},
                              {"what", message.what},
                              {"advice", message.advice}});
        }
        object["errors"] = std::move(errors);
        return object;
    }
    const SessionSummary& summary = *report.summary;
    object["format"] = kelcore::UTF16to8(summary.format);
    object["sampleRate"] = summary.sampleRate;
    object["channelCount"] = summary.channelCount;
    object["bitDepth"] = summary.bitDepth;
    object["durationSamples"] = summary.duration;
    const auto time = toolkit::FormatTime(summary.duration, summary.sampleRate);
    object["duration"] = time ? ordered_json(*time) : ordered_json(nullptr);
    object["input"] = ToJson(summary.audioDevice.inputDeviceId, summary.audioDevice.inputPorts);
    object["output"] = ToJson(summary.audioDevice.outputDeviceId, summary.audioDevice.outputPorts);
    object["mediaMissing"] = summary.MissingCount();
    object["media"] = ordered_json::array();
    for (const toolkit::MediaSummary& file : summary.media) {
        object["media"].push_back(ToJson(file));
    }
    return object;
}

/// One line of JSON. What is no UTF-8 (an unpaired surrogate, a byte of a name) becomes U+FFFD.
std::string Dump(const ordered_json& value) {
    return value.dump(2, ' ', false, ordered_json::error_handler_t::replace) + "\n";
}

ExitCode RunInfo(const Options& options) {
    refhost::UseFeatureDefaults();
    refhost::Plugin plugin;
    ExitCode code = ExitCode::Good;
    ordered_json all = ordered_json::array();
    const char* separator = "";
    for (const std::string& name : options.files) {
        const Report report = Inspect(plugin, name);
        for (const Message& message : report.messages) {
            Complain(message);
        }
        if (!report.summary) {
            code = ExitCode::Failure;
        }
        if (options.json) {
            all.push_back(ToJson(report));
        } else if (report.summary) {
            fmt::print("{}{}", separator, Shown(report));
            separator = "\n";
        }
    }
    if (options.json) {
        fmt::print("{}", Dump(all));
    }
    return code;
}

}  // namespace

void AddInfo(CLI::App& tool, Action& chosen) {
    auto options = std::make_shared<Options>();
    CLI::App* const verb =
        tool.add_subcommand("info", "Show what is in a session: format, length, devices, media.");
    verb->add_option("FILE", options->files, "session files; - for standard input")->required();
    verb->add_flag("--json", options->json, "an array of JSON objects, one for each file");
    verb->footer(
        "Examples:\n"
        "  orvo info song.orvo\n"
        "  orvo info --json *.orvo | python3 -m json.tool\n\n"
        "Exit status: 0 if every file is a session, else 1. Missing media are no failure.");
    verb->callback([options, &chosen] { chosen = [options] { return RunInfo(*options); }; });
}

}  // namespace cli
