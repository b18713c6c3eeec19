#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <utility>

#include <orvo/Session.h>
#include "cli/files/NamedFiles.h"
#include "cli/files/PluginCheck.h"
#include "cli/files/ReadProgress.h"
#include "cli/files/Refusals.h"
#include "cli/files/SessionFile.h"
#include "cli/terminal/JsonList.h"
#include "cli/terminal/Messages.h"
#include "cli/terminal/ProgressBar.h"
#include "cli/terminal/StandardStreams.h"
#include "cli/verbs/InfoReport.h"
#include "cli/verbs/InfoTables.h"
#include "cli/verbs/Verb.h"
#include "toolkit/media/MediaFile.h"
#include "toolkit/scan/StoredPaths.h"

// orvo info FILE... [--tracks] [--effects] [--clips] [--missing] [--recursive] [--json | --ndjson]
// orvo info FILE... --format FORM (--tracks | --clips | --media | ...) [--recursive]
// orvo info --columns

namespace cli {
namespace {

using nlohmann::ordered_json;

struct InfoOptions {
    std::vector<std::string> files;
    std::set<orvo::TableKind> parts;
    bool missing = false;
    bool recursive = false;
    bool json = false;
    bool lines = false;  // one JSON object per line
    std::optional<TableForm> form;
    bool columns = false;
};

/// What a session consists of, and the option that shows it.
struct Part {
    const char* option;
    const char* help;
    orvo::TableKind table;
    bool isOnlyATable = false;
};

constexpr Part kParts[] = {
    {"--tracks", "routing and switches of each track", orvo::TableKind::Tracks},
    {"--clips", "the clips of each track on the timeline", orvo::TableKind::Clips},
    {"--media", "with --format: the media files", orvo::TableKind::Media, true},
    {"--effects", "the effects of each track", orvo::TableKind::Effects},
    {"--sends", "with --format: the sends", orvo::TableKind::Sends, true},
    {"--automation", "with --format: the keyframes", orvo::TableKind::Automation, true},
};

const Words<TableForm> kForms = {{"csv", TableForm::Csv},
                                 {"tsv", TableForm::Tsv},
                                 {"json", TableForm::Json},
                                 {"ndjson", TableForm::Ndjson}};

/// @throws CLI::ValidationError  if options do not go together
void RequireOneTable(const InfoOptions& options) {
    if (options.form && options.parts.size() != 1) {
        std::string names;
        for (const Part& part : kParts) {
            names += std::string(names.empty() ? "" : ", ") + part.option;
        }
        throw CLI::ValidationError("--format shows one table: add one of " + names);
    }
    for (const Part& part : kParts) {
        if (!options.form && part.isOnlyATable && options.parts.contains(part.table)) {
            throw CLI::ValidationError(
                std::string(part.option) +
                " is shown as a table only: add --format csv, or another form");
        }
    }
}

ExitCode ShowColumns() {
    for (const Part& part : kParts) {
        Print((&part == kParts ? "" : "\n") + ColumnsText(part.option, part.table));
    }
    return ExitCode::Good;
}

// What is in them

constexpr const char* kLookingForPaths = "looking for paths in";
constexpr const char* kShowing = "showing";

std::vector<ProgressPhase> PhasesOf(const std::vector<std::string>& files) {
    std::vector<ProgressPhase> phases;
    for (const std::string& file : files) {
        const double size = SizeOrOne(file);
        phases.push_back({kReading, size * 2});
        phases.push_back({kLookingForPaths, size});
        phases.push_back({kShowing, size});
    }
    return phases;
}

InfoContent Summarise(const orvo::Session& session) {
    InfoContent content;
    content.session = toolkit::Summarise(session, toolkit::IsMediaFile);
    content.tracks = toolkit::SummariseTracks(session);
    content.clips = toolkit::SummariseClips(session, content.session.media);
    content.groups = toolkit::SummariseGroups(session);
    return content;
}

orvo::ReadResult Read(const SessionFile& file, Progress& progress) {
    const Progress::Phase reading = progress.Begin(kReading, file.Name());
    reading.Watch(ShareRead(file.Path()));
    return orvo::ReadSession(file.FullName());
}

/// Reads the file a second time, so call it only if media are missing.
std::map<kelcore::uint32, toolkit::StoredPaths> FindPaths(const SessionFile& file,
                                                          Progress& progress) {
    const Progress::Phase looking = progress.Begin(kLookingForPaths, file.Name());
    looking.Watch(ShareRead(file.Path()));
    return toolkit::FindStoredPaths(file.Path());
}

Message ThisIsAFolder(const std::string& name) {
    return {.subject = name,
            .what = "this is a folder",
            .advice = "name a session file in it, or add --recursive"};
}

InfoReport Inspect(const std::string& name, Progress& progress) {
    if (IsFolder(name)) {
        return {name, std::nullopt, {ThisIsAFolder(name)}};
    }
    const SessionFile file(name);
    const orvo::ReadResult read = Read(file, progress);
    if (!read) {
        return {file.Name(), std::nullopt, ExplainRefusal(file, read.messages)};
    }
    InfoReport report{file.Name(), Summarise(read.session), {}};
    if (report.content->session.MissingCount() != 0) {
        report.content->session.AddStoredPaths(FindPaths(file, progress));
    }
    return report;
}

// How it is shown

/// Prints the reports one by one.
class Printer {
public:
    explicit Printer(const InfoOptions& options)
        : options_(options),
          detail_{.tracks = options.parts.contains(orvo::TableKind::Tracks),
                  .effects = options.parts.contains(orvo::TableKind::Effects),
                  .clips = options.parts.contains(orvo::TableKind::Clips)},
          json_(options.lines ? JsonList::Form::Lines : JsonList::Form::Array) {}

    void Add(const InfoReport& report) {
        if (options_.json || options_.lines) {
            AddJson(options_.missing ? MissingToJson(report) : InfoToJson(report));
        } else if (report.content) {
            AddText(options_.missing ? ShowMissing(report) : ShowInfo(report, detail_));
        }
        FlushOutput();
    }

    void End() {
        if (options_.json) {
            json_.End();
        }
    }

private:
    void AddText(const std::string& text) {
        if (!text.empty()) {
            Print((isFirst_ ? "" : "\n") + text);
            isFirst_ = false;
        }
    }

    void AddJson(const ordered_json& object) {
        if (!object.is_null()) {
            json_.Add(object);
        }
    }

    const InfoOptions& options_;
    InfoDetail detail_;
    JsonList json_;
    bool isFirst_ = true;
};

/// Whether the file could be read; reports why not.
bool AddToTable(const std::string& name, TablePrinter& printer, Progress& progress) {
    if (IsFolder(name)) {
        Complain(ThisIsAFolder(name));
        return false;
    }
    const SessionFile file(name);
    const orvo::ReadResult read = Read(file, progress);
    if (read) {
        printer.Add(file.Name(), read.session);
        return true;
    }
    for (const Message& message : ExplainRefusal(file, read.messages)) {
        Complain(message);
    }
    return false;
}

ExitCode RunInfoTable(const InfoOptions& options) {
    RequirePlugin();
    const NamedFiles named = FindFiles(options.files, options.recursive);
    ExitCode code = named.allKnown ? ExitCode::Good : ExitCode::Failure;
    Progress progress("sessions", PhasesOf(named.files));
    TablePrinter printer(*options.parts.begin(), *options.form);
    for (const std::string& name : named.files) {
        code = AddToTable(name, printer, progress) ? code : ExitCode::Failure;
    }
    printer.End();
    return code;
}

ExitCode RunInfo(const InfoOptions& options) {
    if (options.columns) {
        return ShowColumns();
    }
    if (options.form) {
        return RunInfoTable(options);
    }
    RequirePlugin();
    const NamedFiles named = FindFiles(options.files, options.recursive);
    ExitCode code = named.allKnown ? ExitCode::Good : ExitCode::Failure;
    Progress progress("sessions", PhasesOf(named.files));
    Printer printer(options);
    for (const std::string& name : named.files) {
        const InfoReport report = Inspect(name, progress);
        for (const Message& message : report.messages) {
            Complain(message);
        }
        if (!report.content) {
            code = ExitCode::Failure;
        }
        const Progress::Phase showing = progress.Begin(kShowing, report.name);
        printer.Add(report);
    }
    printer.End();
    return code;
}

}  // namespace

void AddInfo(CLI::App& tool, Action& chosen) {
    auto options = std::make_shared<InfoOptions>();
    CLI::App* const verb = tool.add_subcommand(
        "info", "Show what is in a session: format, length, devices, media, tracks, groups.");
    CLI::Option* const files =
        verb->add_option("FILE", options->files, "session files; - for standard input");
    verb->add_flag("-r,--recursive", options->recursive,
                   "FILE may be a folder: all *.orvo files in it and below");
    CLI::Option* const missing = verb->add_flag(
        "--missing", options->missing, "only missing media, and only sessions that miss some");
    for (const Part& part : kParts) {
        verb->add_flag_function(
                part.option,
                [options, table = part.table](std::int64_t) { options->parts.insert(table); },
                part.help)
            ->excludes(missing);
    }
    verb->add_flag("--json", options->json, "everything as a JSON array, one object for each file");
    verb->add_flag("--ndjson", options->lines, "the same objects, one per line, without the array")
        ->excludes("--json");
    AddChoice(*verb, "--format", kForms, options->form,
              "one table for spreadsheets and scripts, as csv, tsv, json or ndjson")
        ->type_name("FORM")
        ->excludes("--json")
        ->excludes("--ndjson")
        ->excludes(missing);
    verb->add_flag("--columns", options->columns, "what the columns of the tables mean")
        ->excludes(files);
    verb->footer(
        "Examples:\n"
        "  orvo info song.orvo\n"
        "  orvo info --format csv --clips *.orvo >clips.csv\n"
        "  orvo info --clips song.orvo\n"
        "  orvo info --missing --recursive /archive\n"
        "  orvo info --json *.orvo | python3 -m json.tool\n\n"
        "Exit status: 0 if every file is a session, else 1. Missing media are not a failure.");
    verb->callback([options, files, &chosen] {
        if (files->count() == 0 && !options->columns) {
            throw CLI::RequiredError("FILE");
        }
        RequireOneTable(*options);
        chosen = [options] { return RunInfo(*options); };
    });
}

}  // namespace cli
