#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <orvo/Json.h>
#include <orvo/Session.h>
#include "cli/files/JsonFile.h"
#include "cli/files/Kind.h"
#include "cli/files/LeftToSystem.h"
#include "cli/files/Losses.h"
#include "cli/files/OrvoFile.h"
#include "cli/files/Output.h"
#include "cli/files/PluginCheck.h"
#include "cli/files/SaveSession.h"
#include "cli/files/SessionFile.h"
#include "cli/terminal/Messages.h"
#include "cli/terminal/ProgressBar.h"
#include "cli/terminal/Stream.h"
#include "cli/verbs/Verb.h"

// orvo convert IN OUT [--from KIND] [--to KIND] [--lossy] [--all] [--full]

namespace cli {
namespace {

struct ConvertOptions {
    std::string in;
    std::string out;
    std::string from;  // as typed; if empty, the name decides
    std::string to;
    LossRule rule;
    bool full = false;  // JSON with every key
};

Kind ResolveKind(const std::string& stated, const std::string& name, const char* option) {
    if (const auto kind = FindKind(stated, name)) {
        return *kind;
    }
    const std::string what = name == kStream ? "the kind of a standard stream is unknown"
                                             : "\"" + name + "\" does not end in .orvo or .json";
    throw CLI::ValidationError(what + "; say " + option + " orvo or " + option + " json");
}

/// The read refuses a file named like a folder with a message of its own.
std::string WithoutSlash(const std::string& name) {
    return name.ends_with('/') && name.size() > 1 ? name.substr(0, name.size() - 1) : name;
}

// Reading

std::optional<ReadInput> ReadOrvo(const Input& in, Kind to, const Output& out, const LossRule& rule,
                                  Progress& progress) {
    const SessionFile file(in.name, in.stream);
    const toolkit::Conversion conversion = {
        .target = to == Kind::Json ? toolkit::Target::Json : toolkit::Target::SessionFile,
        .from = file.FullPath(),
        .to = out.FullPath()};
    return ReadOrvo(file, conversion, rule, progress);
}

// The whole

std::vector<ProgressPhase> PhasesOf(Kind from, Kind to) {
    constexpr double kWeightOfJson = 1.5;
    std::vector<ProgressPhase> phases = {{kReading, from == Kind::Json ? kWeightOfJson : 1}};
    const std::vector<ProgressPhase> saving = PhasesOfSaving(to);
    phases.insert(phases.end(), saving.begin(), saving.end());
    return phases;
}

/// An estimate for the progress bar: with every key, the JSON of a large session is about twice as
/// long as its file.
kelcore::uint64 ExpectedSizeOfJson(const ReadInput& input, Kind from, bool isFull) {
    return from == Kind::Orvo && isFull ? 2 * input.size : input.size;
}

ExitCode RunConvert(const ConvertOptions& options, Kind from, Kind to) {
    const Output out(options.out);
    const Input in(options.in);
    Progress progress(in.Subject(), PhasesOf(from, to));
    if (from == Kind::Orvo || to == Kind::Orvo) {
        RequirePlugin();
    }
    const std::optional<ReadInput>& input =
        LeaveToSystem(from == Kind::Json ? ReadJson(in, progress)
                                         : ReadOrvo(in, to, out, options.rule, progress));
    if (!input) {
        return ExitCode::Failure;
    }
    return to == Kind::Orvo ? SaveSession(input->session, out, in.Subject(), options.rule, progress)
                            : SaveJson(input->session, {.full = options.full}, out, progress,
                                       ExpectedSizeOfJson(*input, from, options.full));
}

}  // namespace

void AddConvert(CLI::App& tool, Action& chosen) {
    auto options = std::make_shared<ConvertOptions>();
    CLI::App* const verb =
        tool.add_subcommand("convert", "Convert a session file to another kind, or rewrite it.");
    verb->add_option("IN", options->in, "the input; - for standard input")
        ->required()
        ->check([](std::string name) { return name.empty() ? FileName()(name) : std::string(); },
                "");
    verb->add_option("OUT", options->out, "the output; - for standard output")
        ->required()
        ->check(FileName());
    AddKindOption(*verb, "--from", options->from,
                  "its kind, orvo or json, if the name does not imply it");
    AddKindOption(*verb, "--to", options->to,
                  "its kind, orvo or json, if the name does not imply it");
    verb->add_flag("--lossy", options->rule.lossy, "convert despite losses, and list them");
    verb->add_flag("--all", options->rule.all, "list all losses, not only the first");
    verb->add_flag("--full", options->full, "write every key of JSON, also those at their default");
    verb->footer(
        "Examples:\n"
        "  orvo convert song.orvo song.json\n"
        "  orvo convert song.json song.orvo\n"
        "  orvo convert --from orvo --to json - - <song.orvo\n"
        "  orvo convert song.orvo >(gzip >song.json.gz) --to json\n\n"
        "If something would be lost, the session is refused and nothing is written.\n"
        "OUT is replaced only when the new file is complete. Names of open descriptors, such as\n"
        "/dev/stdout or /dev/fd/3, are streams. Relative paths in a session from or to a stream\n"
        "count from the working directory.");
    verb->callback([options, &chosen] {
        const Kind from = ResolveKind(options->from, WithoutSlash(options->in), "--from");
        const Kind to = ResolveKind(options->to, options->out, "--to");
        if (options->full && to != Kind::Json) {
            throw CLI::ValidationError(
                "--full is about JSON, and OUT is a session file; leave it out");
        }
        chosen = [options, from, to] { return RunConvert(*options, from, to); };
    });
}

}  // namespace cli
