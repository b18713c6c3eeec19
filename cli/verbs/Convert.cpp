#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <orvo/Interchange.h>
#include <orvo/Json.h>
#include <orvo/Session.h>
#include "cli/files/Interchange.h"
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
#include "cli/terminal/StandardStreams.h"
#include "cli/terminal/Stream.h"
#include "cli/verbs/InterchangeReport.h"
#include "cli/verbs/Verb.h"
#include "toolkit/FileNames.h"

// orvo convert IN OUT [--from KIND] [--to KIND] [--lossy] [--all] [--full]
//     of files of other programs: [--strict] [--report FILE] [--json] [--embed] [--frame-rate RATE]
//     [--drop-frame] [--levels UNIT] [--fades-from ORIGIN] [--lanes-from ORIGIN] [--stretch
//     MEANING]

namespace cli {
namespace {

using orvo::InterchangeKind;

/// A kind that holds a whole session, or one of another program.
using AnyKind = std::variant<Kind, InterchangeKind>;

struct ConvertOptions {
    std::string in;
    std::string out;
    std::string from;  // as typed; if empty, the name decides
    std::string to;
    LossRule rule;
    bool full = false;  // JSON with every key

    InterchangeRule interchange;
    std::string report;  // empty: the facts are messages
    bool json = false;
};

// Kinds

const orvo::InterchangeKindFacts& FactsOf(InterchangeKind kind) {
    return *std::ranges::find(orvo::InterchangeKinds(), kind, &orvo::InterchangeKindFacts::kind);
}

std::optional<AnyKind> FindAnyKind(const std::string& stated, const std::string& name) {
    if (const auto kind = FindKind(stated, name)) {
        return *kind;
    }
    const std::string word = stated.empty() ? toolkit::ExtensionOf(name) : stated;
    for (const orvo::InterchangeKindFacts& facts : orvo::InterchangeKinds()) {
        if (facts.name == word) {
            return facts.kind;
        }
    }
    return std::nullopt;
}

bool IsWhole(const AnyKind& kind) {
    return std::holds_alternative<Kind>(kind);
}

bool CanRead(const AnyKind& kind) {
    return IsWhole(kind) || FactsOf(std::get<InterchangeKind>(kind)).canRead;
}

/// The words for kinds.
std::vector<std::string> KindWords(bool onlyReadable) {
    std::vector<std::string> words = {"orvo", "json"};
    for (const orvo::InterchangeKindFacts& facts : orvo::InterchangeKinds()) {
        if (facts.canRead || !onlyReadable) {
            words.emplace_back(facts.name);
        }
    }
    return words;
}

AnyKind ResolveKind(const std::string& stated, const std::string& name, const char* option) {
    if (const auto kind = FindAnyKind(stated, name)) {
        return *kind;
    }
    const std::string what = name == kStream ? "the kind of a standard stream is unknown"
                                             : "\"" + name + "\" does not end in a known kind";
    throw CLI::ValidationError(fmt::format("{}; say {} KIND, which is one of {}", what, option,
                                           fmt::join(KindWords(false), ", ")));
}

/// The read refuses a file named like a folder with a message of its own.
std::string WithoutSlash(const std::string& name) {
    return name.ends_with('/') && name.size() > 1 ? name.substr(0, name.size() - 1) : name;
}

// Reading

/// What a file of another program cannot hold is no reason to refuse losses before it.
LossRule LossRuleOf(const ConvertOptions& options, const AnyKind& from, const AnyKind& to) {
    LossRule rule = options.rule;
    rule.lossy |= !(IsWhole(from) && IsWhole(to)) && !options.interchange.strict;
    return rule;
}

std::optional<ReadInput> ReadOrvo(const Input& in, const AnyKind& to, const Output& out,
                                  const LossRule& rule, Progress& progress) {
    const SessionFile file(in.name, in.stream);
    const bool isSessionFile = to == AnyKind(Kind::Orvo);
    const toolkit::Conversion conversion = {
        .target = isSessionFile ? toolkit::Target::SessionFile : toolkit::Target::Json,
        .from = IsWhole(to) ? file.FullPath() : std::u16string(),
        .to = isSessionFile ? out.FullPath() : std::u16string()};
    return ReadOrvo(file, conversion, rule, progress);
}

// The whole

std::vector<ProgressPhase> PhasesOf(const AnyKind& from, const AnyKind& to) {
    constexpr double kWeightOfText = 1.5;
    std::vector<ProgressPhase> phases = {
        {kReading, from == AnyKind(Kind::Orvo) ? 1 : kWeightOfText}};
    const std::vector<ProgressPhase> saving =
        PhasesOfSaving(IsWhole(to) ? std::get<Kind>(to) : Kind::Json);
    phases.insert(phases.end(), saving.begin(), saving.end());
    return phases;
}

/// An estimate for the progress bar: with every key, the JSON of a large session is about twice as
/// long as its file.
kelcore::uint64 ExpectedSizeOfJson(const ReadInput& input, const AnyKind& from, bool isFull) {
    return from == AnyKind(Kind::Orvo) && isFull ? 2 * input.size : input.size;
}

/// A conversion and what it changes.
class Conversion {
public:
    Conversion(const ConvertOptions& options, const AnyKind& from, const AnyKind& to)
        : options_(options), from_(from), to_(to), in_(options.in), out_(options.out) {}

    ExitCode Run() {
        const ExitCode code = Convert();
        // A failure leaves nothing to report about, unless what would be lost is its reason.
        const bool isReported = code == ExitCode::Good || (isRead_ && options_.interchange.strict);
        if (!isReported || (IsWhole(from_) && IsWhole(to_))) {
            return code;
        }
        const ExitCode reported = Report();
        return code != ExitCode::Good ? code : reported;
    }

private:
    ExitCode Convert() {
        if (from_ != to_) {
            out_.RequireOther(options_.in);
        }
        RequireOtherReport();
        Progress progress(in_.Subject(), PhasesOf(from_, to_));
        if (from_ == AnyKind(Kind::Orvo) || to_ == AnyKind(Kind::Orvo)) {
            RequirePlugin();
        }
        const std::optional<ReadInput>& input = LeaveToSystem(Read(progress));
        isRead_ = input.has_value();
        return isRead_ ? Save(*input, progress) : ExitCode::Failure;
    }

    std::optional<ReadInput> Read(Progress& progress) {
        if (!IsWhole(from_)) {
            return ReadInterchange(in_, std::get<InterchangeKind>(from_), options_.interchange,
                                   out_, progress, report_);
        }
        return from_ == AnyKind(Kind::Json)
                   ? ReadJson(in_, progress)
                   : ReadOrvo(in_, to_, out_, LossRuleOf(options_, from_, to_), progress);
    }

    ExitCode Save(const ReadInput& input, Progress& progress) {
        if (options_.interchange.strict && !IsWhole(from_) && !report_.IsFaithful()) {
            Complain({.subject = in_.Subject(),
                      .what = "not converted",
                      .advice = "something is lost, and --strict forbids that"});
            return ExitCode::Failure;
        }
        if (!IsWhole(to_)) {
            return SaveInterchange(input.session, std::get<InterchangeKind>(to_),
                                   options_.interchange, out_, progress, report_);
        }
        return to_ == AnyKind(Kind::Orvo)
                   ? SaveSession(input.session, out_, in_.Subject(),
                                 LossRuleOf(options_, from_, to_), progress)
                   : SaveJson(input.session, {.full = options_.full}, out_, progress,
                              ExpectedSizeOfJson(input, from_, options_.full));
    }

    void RequireOtherReport() const {
        if (!options_.report.empty()) {
            const Output report(options_.report);
            report.RequireOther(options_.in);
            report.RequireOther(options_.out);
        }
    }

    ExitCode Report() const {
        ExitCode code = ExitCode::Good;
        const std::string text = options_.json ? ReportAsJson(report_) : ListFacts(report_);
        if (!options_.report.empty()) {
            code = Output(options_.report).Save([&](const Output::Sink& sink) { sink(text); });
        } else if (options_.json) {
            Print(text);
            FlushOutput();
        } else {
            ComplainOfFacts();
        }
        Complain({.subject = in_.Subject(), .what = Summarize(report_)});
        return code;
    }

    void ComplainOfFacts() const {
        std::size_t listed = 0;
        for (const orvo::InterchangeFact& fact : report_.facts) {
            if (listed++ == options_.rule.Limit()) {
                Complain({.subject = in_.Subject(),
                          .what = fmt::format("and {} more", report_.facts.size() + 1 - listed),
                          .advice = "--all lists all of them"});
                return;
            }
            std::ostringstream line;
            line << fact;
            Complain({.subject = in_.Subject(), .what = line.str()});
        }
    }

    const ConvertOptions& options_;
    AnyKind from_;
    AnyKind to_;
    Input in_;
    Output out_;
    orvo::InterchangeReport report_;
    bool isRead_ = false;
};

// Options

CLI::Validator KindWord(bool onlyReadable) {
    return OneOf(KindWords(onlyReadable));
}

void AddInterchangeOptions(CLI::App& verb, ConvertOptions& options) {
    InterchangeRule& rule = options.interchange;
    const Words<orvo::ClipOrigin> origins = {{"clip", orvo::ClipOrigin::ClipStart},
                                             {"source", orvo::ClipOrigin::Source},
                                             {"timeline", orvo::ClipOrigin::Timeline}};
    verb.add_flag("--strict", rule.strict, "convert only if nothing is lost");
    verb.add_option("--report", options.report, "write what changes to a file")
        ->type_name("FILE")
        ->check(FileName());
    verb.add_flag("--json", options.json, "the report as JSON, on standard output unless --report");
    verb.add_flag("--embed", rule.embedMedia, "make the media a part of a .dawproject");
    verb.add_option("--frame-rate", rule.frameRate, "frames a second: of an .edl, or to round to")
        ->type_name("RATE")
        ->check(CLI::Range(1.0, 1000.0));
    verb.add_flag("--drop-frame", rule.dropFrame, "drop-frame timecode in an .edl");
    AddChoice(verb, "--levels",
              Words<orvo::LevelUnit>{{"db", orvo::LevelUnit::Decibels},
                                     {"amplitude", orvo::LevelUnit::Amplitude}},
              rule.conventions.levels, "the unit of faders and gains; db if absent");
    AddChoice(verb, "--fades-from", origins, rule.conventions.fadePoints,
              "what the points of fades count from; clip if absent");
    AddChoice(verb, "--lanes-from", origins, rule.conventions.clipAutomation,
              "what the automation of clips counts from; clip if absent");
    AddChoice(
        verb, "--stretch",
        Words<orvo::StretchMeaning>{{"timeline-by-source", orvo::StretchMeaning::TimelineBySource},
                                    {"source-by-timeline", orvo::StretchMeaning::SourceByTimeline}},
        rule.conventions.stretchRatio,
        "what a stretch ratio divides; timeline-by-source if absent");
}

std::string DescribeKinds() {
    std::string text =
        "Kinds:\n"
        "  orvo        a session file\n"
        "  json        the whole session as JSON\n";
    for (const orvo::InterchangeKindFacts& facts : orvo::InterchangeKinds()) {
        text += fmt::format("  {:<11} {}{}\n", facts.name, facts.title,
                            facts.canRead ? "" : "; written only");
    }
    return text;
}

void CheckOptions(const ConvertOptions& options, const AnyKind& from, const AnyKind& to) {
    if (!CanRead(from)) {
        throw CLI::ValidationError(fmt::format("{} files are only written, not read",
                                               FactsOf(std::get<InterchangeKind>(from)).name));
    }
    if (options.full && to != AnyKind(Kind::Json)) {
        throw CLI::ValidationError(
            "--full is about JSON, and OUT is of another kind; leave it out");
    }
    if (IsWhole(from) && IsWhole(to) &&
        (options.json || options.interchange.strict || !options.report.empty())) {
        throw CLI::ValidationError(
            "--strict, --report and --json are about files of other programs; leave them out");
    }
    if (options.json && options.report.empty() && options.out == kStream) {
        throw CLI::ValidationError(
            "the report and OUT would both go to standard output; add --report");
    }
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
    verb->add_option("--from", options->from, "the kind of IN, if its name does not imply it")
        ->type_name("KIND")
        ->check(KindWord(true));
    verb->add_option("--to", options->to, "the kind of OUT, if its name does not imply it")
        ->type_name("KIND")
        ->check(KindWord(false));
    verb->add_flag("--lossy", options->rule.lossy, "convert despite losses, and list them");
    verb->add_flag("--all", options->rule.all, "list all losses, not only the first");
    verb->add_flag("--full", options->full, "write every key of JSON, also those at their default");
    AddInterchangeOptions(*verb, *options);
    verb->footer(
        DescribeKinds() +
        "\nExamples:\n"
        "  orvo convert song.orvo song.json\n"
        "  orvo convert song.json song.orvo\n"
        "  orvo convert song.orvo song.dawproject\n"
        "  orvo convert --from orvo --to json - - <song.orvo\n"
        "  orvo convert song.orvo >(gzip >song.json.gz) --to json\n\n"
        "Between .orvo and .json, a session of which something would be lost is refused and "
        "nothing\n"
        "is written. Files of other programs hold less: what is lost is reported.\n"
        "OUT is replaced only when the new file is complete. Names of open descriptors, such as\n"
        "/dev/stdout or /dev/fd/3, are streams. Relative paths in a session from or to a stream\n"
        "count from the working directory.");
    verb->callback([options, &chosen] {
        const AnyKind from = ResolveKind(options->from, WithoutSlash(options->in), "--from");
        const AnyKind to = ResolveKind(options->to, WithoutSlash(options->out), "--to");
        CheckOptions(*options, from, to);
        chosen = [options, from, to] { return Conversion(*options, from, to).Run(); };
    });
}

}  // namespace cli
