#include <orvo/Check.h>

#include <fmt/format.h>

#include <memory>
#include <optional>
#include <utility>

#include "cli/Workers.h"
#include "cli/files/Kind.h"
#include "cli/files/NamedFiles.h"
#include "cli/files/PluginCheck.h"
#include "cli/files/ReadProgress.h"
#include "cli/files/SessionFile.h"
#include "cli/terminal/JsonList.h"
#include "cli/terminal/Messages.h"
#include "cli/terminal/ProgressBar.h"
#include "cli/terminal/StandardStreams.h"
#include "cli/terminal/Suggestions.h"
#include "cli/verbs/CheckReport.h"
#include "cli/verbs/Verb.h"

// orvo check FILE... [--recursive] [--jobs N] [--strict] [--no-media] [--json | --ndjson | --sarif]
// orvo check --explain CODE

namespace cli {
namespace {

using nlohmann::ordered_json;

struct CheckVerbOptions {
    std::vector<std::string> files;
    std::string from;
    std::string explain;
    std::size_t jobs = 1;
    bool recursive = false;
    bool strict = false;
    bool noMedia = false;
    bool json = false;
    bool lines = false;  // one JSON object per line
    bool sarif = false;
};

constexpr const char* kAllCodes = "all";
constexpr kelcore::uint64 kMostJobs = 256;

// What a worker does

orvo::CheckOptions OptionsFor(const std::string& name, const CheckVerbOptions& options) {
    return {.kind = FindKind(options.from, name) == Kind::Json ? orvo::CheckedKind::Json
                                                               : orvo::CheckedKind::SessionFile,
            .media = !options.noMedia};
}

CheckReport Check(const std::string& name, const CheckVerbOptions& options) {
    if (IsFolder(name)) {
        return Unreadable(name, "this is a folder: name a session file in it, or add --recursive");
    }
    const SessionFile file(name);
    if (const auto& problem = file.EarlyProblem()) {
        return Unreadable(file.Name(), problem->what + ": " + problem->advice);
    }
    return {file.Name(), orvo::CheckFile(file.FullName(), OptionsFor(name, options)).findings};
}

// What is printed

/// Prints reports one by one.
class Printer {
public:
    explicit Printer(const CheckVerbOptions& options)
        : options_(options), json_(options.lines ? JsonList::Form::Lines : JsonList::Form::Array) {
        if (options.sarif) {
            Print(SarifBegin(ORVO_VERSION));
        }
    }

    void Add(const CheckReport& report) {
        if (options_.json || options_.lines) {
            json_.Add(ToJson(report));
        } else if (options_.sarif) {
            AddSarif(report);
        } else {
            Print(ToText(report, MayColourOutput()));
        }
        FlushOutput();
    }

    void End() {
        if (options_.json) {
            json_.End();
        }
        if (options_.sarif) {
            Print(SarifEnd());
        }
    }

private:
    void AddSarif(const CheckReport& report) {
        for (const ordered_json& result : SarifResults(report)) {
            Print((isFirst_ ? "" : ",\n") + DumpJson(result));
            isFirst_ = false;
        }
    }

    const CheckVerbOptions& options_;
    JsonList json_;
    bool isFirst_ = true;
};

constexpr const char* kChecking = "checking";

std::vector<ProgressPhase> PhasesOf(const std::vector<std::string>& files) {
    std::vector<ProgressPhase> phases;
    for (const std::string& file : files) {
        phases.push_back({kChecking, SizeOrOne(file)});
    }
    return phases;
}

/// Whether there is nothing to complain of.
bool IsGood(const CheckReport& report, const CheckVerbOptions& options) {
    return !report.Has(orvo::Severity::Error) &&
           !(options.strict && report.Has(orvo::Severity::Warning));
}

ExitCode ExplainCode(const std::string& name) {
    if (name == kAllCodes) {
        for (const orvo::CheckCode& code : orvo::CheckCodes()) {
            Print((&code == orvo::CheckCodes().data() ? "" : "\n") + Explain(code));
        }
        return ExitCode::Good;
    }
    if (const orvo::CheckCode* const code = orvo::FindCheckCode(name)) {
        Print(Explain(*code));
        return ExitCode::Good;
    }
    std::vector<std::string> known;
    for (const orvo::CheckCode& code : orvo::CheckCodes()) {
        known.emplace_back(code.code);
    }
    const std::vector<std::string> near = NearMatches(name, known);
    Complain({.subject = name,
              .what = "there is no such code",
              .advice = near.empty() ? "orvo check --explain all shows all"
                                     : fmt::format("did you mean {}?", fmt::join(near, " or "))});
    return ExitCode::Failure;
}

ExitCode RunCheck(const CheckVerbOptions& options) {
    if (!options.explain.empty()) {
        return ExplainCode(options.explain);
    }
    RequirePlugin();
    const NamedFiles named = FindFiles(options.files, options.recursive);
    ExitCode code = named.allKnown ? ExitCode::Good : ExitCode::Failure;
    Progress progress("sessions", PhasesOf(named.files));
    Printer printer(options);
    const auto check = [&](std::size_t item) {
        return DumpJson(ToJson(Check(named.files[item], options)));
    };
    const auto print = [&](std::size_t item, const std::optional<std::string>& result) {
        const Progress::Phase phase = progress.Begin(kChecking, named.files[item]);
        const CheckReport report =
            result ? CheckReportFromJson(ordered_json::parse(*result))
                   : Unreadable(named.files[item], "checking it ended a process of this program");
        printer.Add(report);
        code = IsGood(report, options) ? code : ExitCode::Failure;
    };
    RunInWorkers(named.files.size(), options.jobs, check, print);
    printer.End();
    return code;
}

}  // namespace

void AddCheck(CLI::App& tool, Action& chosen) {
    auto options = std::make_shared<CheckVerbOptions>();
    CLI::App* const verb = tool.add_subcommand(
        "check", "Find what is wrong in sessions: what a read ignores, what does not fit.");
    CLI::Option* const files =
        verb->add_option("FILE", options->files, "session files or JSON; - for standard input");
    verb->add_flag("--recursive,-r", options->recursive,
                   "FILE may be a folder: all *.orvo files in it and below");
    verb->add_option("--jobs,-j", options->jobs, "check N files at a time")
        ->type_name("N")
        ->transform(WholeNumber(1, kMostJobs), "");
    verb->add_flag("--strict", options->strict, "warnings fail the check, too");
    verb->add_flag("--no-media", options->noMedia, "do not look for media files");
    AddKindOption(*verb, "--from", options->from,
                  "the kind of FILE, orvo or json, if the name does not imply it");
    CLI::Option* const json =
        verb->add_flag("--json", options->json, "a JSON array with an object for each file");
    CLI::Option* const lines =
        verb->add_flag("--ndjson", options->lines, "the same objects, one per line")
            ->excludes(json);
    verb->add_flag("--sarif", options->sarif, "a SARIF log, for code-review tools")
        ->excludes(json)
        ->excludes(lines);
    CLI::Option* const explain =
        verb->add_option("--explain", options->explain,
                         "say what a code means, or all of them, and what to do about it")
            ->type_name("CODE")
            ->excludes(files);
    verb->callback([options, files, explain, &chosen] {
        if (files->count() == 0 && explain->count() == 0) {
            throw CLI::RequiredError("FILE");
        }
        chosen = [options] { return RunCheck(*options); };
    });
    verb->footer(
        "Examples:\n"
        "  orvo check song.orvo\n"
        "  orvo check -r -j 4 /archive\n"
        "  orvo check --strict --no-media *.orvo\n"
        "  orvo check --explain missing-media\n\n"
        "Exit status: 0 if there is no error, and with --strict no warning; else 1.");
}

}  // namespace cli
