#include <filesystem>
#include <nlohmann/json.hpp>
#include <system_error>

#include <orvo/Session.h>
#include "cli/files/PluginCheck.h"
#include "cli/files/ReadProgress.h"
#include "cli/files/Refusals.h"
#include "cli/files/SessionFile.h"
#include "cli/terminal/Messages.h"
#include "cli/terminal/ProgressBar.h"
#include "cli/terminal/StandardStreams.h"
#include "cli/verbs/InfoReport.h"
#include "cli/verbs/Verb.h"
#include "toolkit/SessionFolder.h"
#include "toolkit/scan/StoredPaths.h"

// orvo info FILE... [--tracks] [--effects] [--clips] [--missing] [--recursive] [--json | --ndjson]

namespace cli {
namespace {

using nlohmann::ordered_json;

struct InfoOptions {
    std::vector<std::string> files;
    InfoDetail detail;
    bool missing = false;
    bool recursive = false;
    bool json = false;
    bool lines = false;  // one JSON object per line
};

// Which files

bool IsFolder(const std::string& name) {
    std::error_code error;
    return name != kStream && std::filesystem::is_directory(name, error);
}

struct Named {
    std::vector<std::string> files;
    bool allKnown = true;
};

void AddFolder(const std::string& folder, Named& named) {
    const toolkit::FolderContent content = toolkit::FindSessions(folder);
    for (const toolkit::UnreadFolder& unread : content.unread) {
        Complain(ToMessage(unread.path, unread.problem));
    }
    if (content.sessions.empty() && content.unread.empty()) {
        Complain({.subject = folder,
                  .what = "this folder contains no session files",
                  .advice = "their names end in .orvo"});
    }
    named.allKnown = named.allKnown && content.unread.empty() && !content.sessions.empty();
    named.files.insert(named.files.end(), content.sessions.begin(), content.sessions.end());
}

Named FindFiles(const InfoOptions& options) {
    Named named;
    for (const std::string& name : options.files) {
        if (options.recursive && IsFolder(name)) {
            AddFolder(name, named);
        } else {
            named.files.push_back(name);
        }
    }
    return named;
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

InfoReport Inspect(const std::string& name, Progress& progress) {
    if (IsFolder(name)) {
        return {name,
                std::nullopt,
                {{.subject = name,
                  .what = "this is a folder",
                  .advice = "name a session file in it, or add --recursive"}}};
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

/// Replaces everything that is not UTF-8 (an unpaired surrogate, a byte of a name) by U+FFFD.
std::string Dump(const ordered_json& value, int indent) {
    return value.dump(indent, ' ', false, ordered_json::error_handler_t::replace);
}

/// Indents an element of an array that is printed element by element, so that the output looks like
/// the whole array printed at once.
std::string Indented(const std::string& text) {
    std::string indented = "  ";
    for (const char character : text) {
        indented += character;
        indented += character == '\n' ? "  " : "";
    }
    return indented;
}

/// Prints the reports one by one.
class Printer {
public:
    explicit Printer(const InfoOptions& options) : options_(options) {}

    void Add(const InfoReport& report) {
        if (options_.json || options_.lines) {
            AddJson(options_.missing ? MissingToJson(report) : InfoToJson(report));
        } else if (report.content) {
            AddText(options_.missing ? ShowMissing(report) : ShowInfo(report, options_.detail));
        }
        FlushOutput();
    }

    void End() const {
        if (options_.json) {
            Print(isFirst_ ? "[]\n" : "\n]\n");
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
        if (object.is_null()) {
            return;
        }
        if (options_.lines) {
            Print(Dump(object, -1) + "\n");
        } else {
            constexpr int kIndent = 2;
            Print((isFirst_ ? "[\n" : ",\n") + Indented(Dump(object, kIndent)));
        }
        isFirst_ = false;
    }

    const InfoOptions& options_;
    bool isFirst_ = true;
};

ExitCode RunInfo(const InfoOptions& options) {
    RequirePlugin();
    const Named named = FindFiles(options);
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
    verb->add_option("FILE", options->files, "session files; - for standard input")->required();
    verb->add_flag("--recursive", options->recursive,
                   "FILE may be a folder: all *.orvo files in it and below");
    verb->add_flag("--tracks", options->detail.tracks, "routing and switches of each track");
    verb->add_flag("--effects", options->detail.effects, "the effects of each track");
    verb->add_flag("--clips", options->detail.clips, "the clips of each track on the timeline");
    CLI::Option* const missing = verb->add_flag(
        "--missing", options->missing, "only missing media, and only sessions that miss some");
    for (const char* const detail : {"--tracks", "--effects", "--clips"}) {
        missing->excludes(detail);
    }
    verb->add_flag("--json", options->json, "everything as a JSON array, one object for each file");
    verb->add_flag("--ndjson", options->lines, "the same objects, one per line, without the array")
        ->excludes("--json");
    verb->footer(
        "Examples:\n"
        "  orvo info song.orvo\n"
        "  orvo info --clips song.orvo\n"
        "  orvo info --missing --recursive /archive\n"
        "  orvo info --json *.orvo | python3 -m json.tool\n\n"
        "Exit status: 0 if every file is a session, else 1. Missing media are not a failure.");
    verb->callback([options, &chosen] { chosen = [options] { return RunInfo(*options); }; });
}

}  // namespace cli
