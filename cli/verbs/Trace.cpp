#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cli/files/ReadProgress.h"
#include "cli/files/Refusals.h"
#include "cli/files/SessionFile.h"
#include "cli/terminal/Messages.h"
#include "cli/terminal/ProgressBar.h"
#include "cli/terminal/StandardStreams.h"
#include "cli/terminal/Suggestions.h"
#include "cli/verbs/Verb.h"
#include "platform/kelappsupport/Features.h"
#include "reference_host/LogTarget.h"
#include "reference_host/LoggedMessage.h"
#include "reference_host/Plugin.h"
#include "reference_host/SessionNode.h"
#include "reference_host/Sessions.h"
#include "reference_host/TraceCollector.h"
#include "reference_host/recorder/CallJson.h"
#include "reference_host/recorder/FaultPlan.h"
#include "reference_host/recorder/Operations.h"
#include "reference_host/recorder/Recorder.h"

// orvo trace [--feature NAME=on|off] [--no-log-target] [--null INTERFACE.OPERATION]...
// [--references] FILE...

namespace cli {
namespace {

struct Feature {
    std::string name;
    bool on = false;
};

struct TraceOptions {
    std::vector<std::string> files;
    std::vector<std::string> features;  // as typed: NAME=on|off
    std::vector<std::string> nulls;     // as typed: INTERFACE.OPERATION
    bool noLogTarget = false;
    bool references = false;
};

// The command line

std::optional<Feature> ParseFeature(const std::string& text) {
    const std::size_t equals = text.rfind('=');
    const std::string value = equals == std::string::npos ? "" : text.substr(equals + 1);
    if (equals == 0 || (value != "on" && value != "off")) {
        return std::nullopt;
    }
    return Feature{text.substr(0, equals), value == "on"};
}

/// The operations that a read calls and that return objects: the valid names for --null.
std::vector<std::string> NullableOperations() {
    std::vector<std::string> names;
    for (const refhost::HostOperation& operation : refhost::HostOperations()) {
        if (operation.returnsObject && !operation.interfaceName.starts_with("IQuery")) {
            names.push_back(fmt::format("{}.{}", operation.interfaceName, operation.name));
        }
    }
    return names;
}

/// A CLI11 check: empty if the name is valid, otherwise an error message.
std::string CheckNullable(const std::string& name) {
    const std::vector<std::string> known = NullableOperations();
    if (std::find(known.begin(), known.end(), name) != known.end()) {
        return {};
    }
    const std::vector<std::string> near = NearMatches(name, known);
    if (near.empty()) {
        return fmt::format("no operation of a read called \"{}\" returns an object", name);
    }
    return fmt::format("no operation of a read called \"{}\" returns an object; did you mean {}?",
                       name, fmt::join(near, " or "));
}

std::string CheckFeature(const std::string& text) {
    return ParseFeature(text) ? "" : "\"" + text + "\" is not NAME=on or NAME=off";
}

// The work

std::vector<ProgressPhase> PhasesOf(const std::vector<std::string>& files) {
    std::vector<ProgressPhase> phases;
    for (const std::string& file : files) {
        phases.push_back({kReading, SizeOrOne(file)});
    }
    return phases;
}

refhost::FaultPlan MakeFaultPlan(const TraceOptions& options) {
    refhost::FaultPlan plan;
    for (const std::string& operation : options.nulls) {
        plan.ReturnNull(operation);
    }
    return plan;
}

/// A failed write ends the read and then the tool.
void PrintLine(const std::string& line) {
    Print(line + "\n");
}

/// Suppresses the plug-in's trace of a failed read, because `ExplainRefusal` reports it.
tses::SessionResult ReadQuietly(refhost::Plugin& plugin, const SessionFile& file,
                                tses::IEditSession& session) {
    std::vector<std::string> traced;
    const refhost::TraceCollector collector(traced);
    return plugin.Read(file.FullPath(), session);
}

std::string FormatResult(const SessionFile& file, tses::SessionResult result) {
    const std::string name =
        nlohmann::json(file.Name()).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    return fmt::format(R"({{"file": {}, "result": {}}})", name, static_cast<std::int32_t>(result));
}

std::vector<orvo::Message> ReasonsIn(const refhost::LogTarget& log, const SessionFile& file) {
    std::vector<orvo::Message> reasons;
    for (const std::u16string& logged : log.Messages()) {
        const refhost::LoggedMessage message = refhost::ParseLoggedMessage(logged, file.FullPath());
        reasons.push_back({.line = message.line,
                           .column = message.column,
                           .what = message.text,
                           .advice = message.advice});
    }
    if (reasons.empty()) {
        reasons.push_back({.what = refhost::kRefusedWithoutReason, .advice = refhost::kTryAgain});
    }
    return reasons;
}

tses::SessionResult TraceFile(refhost::Plugin& plugin, const TraceOptions& options,
                              const SessionFile& file) {
    const auto logTarget = refhost::Ref<refhost::LogTarget>::Adopt(new refhost::LogTarget());
    const auto session = refhost::SessionNode::Make();
    if (!options.noLogTarget) {
        session->SetLogTarget(logTarget);
    }
    refhost::Recorder recorder(
        {.sink =
             [](const refhost::CallRecord& call) { PrintLine(refhost::FormatCallAsJson(call)); },
         .interceptor = MakeFaultPlan(options),
         .recordReferences = options.references});
    plugin.Restart();  // a read that ended inside an unknown element would affect the next one
    const tses::SessionResult result = ReadQuietly(plugin, file, recorder.Wrap(session->Edit()));
    PrintLine(FormatResult(file, result));
    if (result != tses::SessionResult::Ok) {
        for (const Message& message : ExplainRefusal(file, ReasonsIn(*logTarget, file))) {
            Complain(message);
        }
    }
    return result;
}

ExitCode RunTrace(const TraceOptions& options) {
    refhost::UseFeatureDefaults();
    for (const std::string& text : options.features) {
        const Feature feature = ParseFeature(text).value();
        kelappsupport::SetFeatureEnabled(feature.name, feature.on);
    }
    refhost::Plugin plugin;
    ExitCode code = ExitCode::Good;
    std::optional<Progress> progress;
    if (!HasOutputTerminal()) {  // on a terminal, the calls themselves show the progress
        progress.emplace("sessions", PhasesOf(options.files));
    }
    for (const std::string& name : options.files) {
        const SessionFile file(name);
        std::optional<Progress::Phase> reading;
        if (progress) {
            reading.emplace(progress->Begin(kReading, file.Name()));
            reading->Watch(ShareRead(file.Path()));
        }
        if (TraceFile(plugin, options, file) != tses::SessionResult::Ok) {
            code = ExitCode::Failure;
        }
    }
    return code;
}

}  // namespace

void AddTrace(CLI::App& tool, Action& chosen) {
    auto options = std::make_shared<TraceOptions>();
    CLI::App* const verb = tool.add_subcommand(
        "trace", "Show every call to the host during a read, one JSON object per line.");
    verb->add_option("FILE", options->files, "session files; - for standard input")->required();
    verb->add_option("--feature", options->features,
                     "switch a feature of the host (Tembra.InstrumentTracks is on by default)")
        ->type_name("NAME=on|off")
        ->expected(1)
        ->take_all()
        ->check(CheckFeature, "");
    verb->add_option("--null", options->nulls, "make this operation of the host return null")
        ->type_name("INTERFACE.OPERATION")
        ->expected(1)
        ->take_all()
        ->check(CheckNullable, "");
    verb->add_flag("--no-log-target", options->noLogTarget,
                   "give the host no log target: drops the parser's messages");
    verb->add_flag("--references", options->references,
                   "also show reference counting (AddReference, Release)");
    verb->footer(
        "Examples:\n"
        "  orvo trace song.orvo\n"
        "  orvo trace --null IEditSession.GetFile song.orvo\n"
        "  orvo trace --feature Tembra.InstrumentTracks=off a.orvo b.orvo\n\n"
        "After the calls of each file comes {\"file\": NAME, \"result\": N} with the plug-in's "
        "result code.\n"
        "Exit status: 0 if all of them are 0, else 1.");
    verb->callback([options, &chosen] { chosen = [options] { return RunTrace(*options); }; });
}

}  // namespace cli
