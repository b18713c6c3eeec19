#include <orvo/Relink.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "cli/files/ChangedFiles.h"
#include "cli/files/NamedFiles.h"
#include "cli/files/Output.h"
#include "cli/files/PluginCheck.h"
#include "cli/files/ReadProgress.h"
#include "cli/files/Refusals.h"
#include "cli/files/SessionFile.h"
#include "cli/terminal/JsonList.h"
#include "cli/terminal/Messages.h"
#include "cli/terminal/ProgressBar.h"
#include "cli/terminal/StandardStreams.h"
#include "cli/terminal/Stream.h"
#include "cli/verbs/RelinkReport.h"
#include "cli/verbs/Verb.h"
#include "platform/kelcore/Paths.h"

// orvo relink FILE... [--search DIR]... [--map FROM=TO]... [--match WHAT] [--recursive]
//             (--in-place [--backup] | -o OUT | --dry-run) [--json | --ndjson]

namespace cli {
namespace {

struct RelinkVerbOptions {
    std::vector<std::string> files;
    std::vector<std::string> folders;
    std::vector<std::string> mappings;  // FROM=TO
    orvo::MediaMatch match = orvo::MediaMatch::Name;
    std::string out;
    bool recursive = false;
    bool dryRun = false;
    bool inPlace = false;
    bool backup = false;
    bool json = false;
    bool lines = false;  // one JSON object per line
};

const Words<orvo::MediaMatch> kMatches = {
    {"name", orvo::MediaMatch::Name},
    {"name+length", orvo::MediaMatch::NameAndLength},
    {"hash", orvo::MediaMatch::Hash},
};

constexpr const char* kSearching = "searching";
constexpr const char* kRelinking = "relinking";

/// No value if the text has no "=" or nothing on one side of it.
std::optional<orvo::PathMapping> ToMapping(const std::string& text) {
    const std::size_t equals = text.find('=');
    if (equals == 0 || equals == text.npos || equals + 1 == text.size()) {
        return std::nullopt;
    }
    return orvo::PathMapping{text.substr(0, equals), text.substr(equals + 1)};
}

CLI::Validator Mapping() {
    return {[](const std::string& text) -> std::string {
                return ToMapping(text)
                           ? ""
                           : "\"" + text + "\" is not FROM=TO, such as D:\\Jobs=/mnt/jobs";
            },
            ""};
}

orvo::RelinkOptions OptionsOf(const RelinkVerbOptions& options) {
    orvo::RelinkOptions result{.match = options.match};
    for (const std::string& mapping : options.mappings) {
        result.mappings.push_back(*ToMapping(mapping));
    }
    return result;
}

// One session

/// What the library says of a file, for people.
Message FromLibrary(const std::string& subject, const orvo::Message& message) {
    return {.subject = subject, .what = message.what, .advice = message.advice};
}

bool Save(const orvo::Edit& edit, const Output& target, const RelinkVerbOptions& options,
          RelinkReport& report) {
    SavedFile saved = SaveChanged(target, options.backup,
                                  [&edit](const std::string& path) { return edit.Save(path); });
    report.backup = std::move(saved.backup);
    report.messages.insert(report.messages.end(), saved.messages.begin(), saved.messages.end());
    return saved.ok;
}

/// Opens a session that does not change but is saved under another name.
std::optional<orvo::Edit> OpenUnchanged(const SessionFile& file, RelinkReport& report) {
    orvo::EditResult opened = orvo::OpenEdit(file.FullName());
    for (const orvo::Message& message : opened.messages) {
        report.messages.push_back(FromLibrary(file.Name(), message));
    }
    return std::move(opened.edit);
}

RelinkReport Relink(orvo::Relinker& relinker, const std::string& name,
                    const std::string& targetName, const RelinkVerbOptions& options) {
    RelinkReport report{.name = name};
    if (const auto stream = FindStream(name, Direction::In)) {
        report.messages.push_back({.subject = stream->name,
                                   .what = "a stream cannot be relinked",
                                   .advice = "name a session file"});
        return report;
    }
    if (IsFolder(name)) {
        report.messages.push_back({.subject = name,
                                   .what = "this is a folder",
                                   .advice = "name a session file in it, or add --recursive"});
        return report;
    }
    const SessionFile file(name);
    const Output target(targetName);
    const std::string targetPath = kelcore::PathToBytes(target.FullPath());
    orvo::RelinkResult result = relinker.Relink(file.FullName(), targetPath);
    if (!result) {
        report.messages = ExplainRefusal(file, result.messages);
        return report;
    }
    report.media = std::move(result.media);
    report.changes = result.edit.has_value();
    if (options.dryRun || (!report.changes && options.out.empty())) {
        return report;
    }
    if (!result.edit) {
        result.edit = OpenUnchanged(file, report);
    }
    if (result.edit && Save(*result.edit, target, options, report)) {
        report.saved = targetName;
    } else {
        report.changes = false;
    }
    return report;
}

// All sessions

std::vector<ProgressPhase> PhasesOf(const std::vector<std::string>& files,
                                    const std::vector<std::string>& folders) {
    std::vector<ProgressPhase> phases;
    double all = 0;
    for (const std::string& file : files) {
        phases.push_back({kRelinking, SizeOrOne(file)});
        all += phases.back().weight;
    }
    for (std::size_t i = 0; i < folders.size(); ++i) {
        phases.insert(phases.begin(), {kSearching, all / static_cast<double>(folders.size())});
    }
    return phases;
}

/// Reports what could not be read, and returns whether all named folders were.
bool Search(orvo::Relinker& relinker, const std::vector<std::string>& folders, Progress& progress) {
    bool allRead = true;
    for (const std::string& folder : folders) {
        const Progress::Phase searching = progress.Begin(kSearching, folder);
        const auto result = relinker.Search(folder);
        for (const orvo::Message& message : result.messages) {
            Complain(FromLibrary(message.file, message));
        }
        allRead = allRead && result;
    }
    return allRead;
}

/// Prints reports one by one, and what became of all.
class Printer {
public:
    explicit Printer(const RelinkVerbOptions& options)
        : options_(options), json_(options.lines ? JsonList::Form::Lines : JsonList::Form::Array) {}

    void Add(const RelinkReport& report) {
        for (const Message& message : report.messages) {
            Complain(message);
        }
        summary_.Add(report);
        if (IsJson()) {
            json_.Add(ToJson(report));
        } else {
            const std::string text = ToText(report);
            Print(text.empty() || isFirst_ ? text : "\n" + text);
            isFirst_ = isFirst_ && text.empty();
        }
        FlushOutput();
    }

    void End() {
        if (IsJson()) {
            json_.End();
        } else {
            Print((isFirst_ ? "" : "\n") + summary_.Text(options_.dryRun));
        }
    }

private:
    bool IsJson() const { return options_.json || options_.lines; }

    const RelinkVerbOptions& options_;
    JsonList json_;
    RelinkSummary summary_;
    bool isFirst_ = true;
};

ExitCode RunRelink(const RelinkVerbOptions& options) {
    RequirePlugin();
    const NamedFiles named = FindFiles(options.files, options.recursive);
    const auto targets = FindTargets(named.files, options.out);
    if (!targets) {
        return ExitCode::Failure;
    }
    Progress progress("sessions", PhasesOf(named.files, options.folders));
    orvo::Relinker relinker(OptionsOf(options));
    if (!Search(relinker, options.folders, progress)) {
        return ExitCode::Failure;
    }
    ExitCode code = named.allKnown ? ExitCode::Good : ExitCode::Failure;
    Printer printer(options);
    for (std::size_t i = 0; i < named.files.size(); ++i) {
        const Progress::Phase relinking = progress.Begin(kRelinking, named.files[i]);
        const RelinkReport report = Relink(relinker, named.files[i], (*targets)[i], options);
        printer.Add(report);
        code = report.IsGood() ? code : ExitCode::Failure;
    }
    printer.End();
    return code;
}

void AddOptions(CLI::App& verb, RelinkVerbOptions& options) {
    verb.add_option("FILE", options.files, "session files")->required();
    verb.add_option("--search", options.folders, "look in DIR and all folders below it")
        ->type_name("DIR")
        ->allow_extra_args(false);
    verb.add_option("--map", options.mappings,
                    "paths that begin with FROM begin with TO now; FROM may be D:\\Jobs")
        ->type_name("FROM=TO")
        ->allow_extra_args(false)
        ->check(Mapping());
    AddChoice(verb, "--match", kMatches, options.match,
              "what a file in DIR must have: name (default), name+length or hash")
        ->type_name("WHAT");
    verb.add_flag("--recursive,-r", options.recursive,
                  "FILE may be a folder: all *.orvo files in it and below");
    CLI::Option* const dryRun =
        verb.add_flag("--dry-run", options.dryRun, "only say what would be found");
    CLI::Option* const inPlace =
        verb.add_flag("--in-place", options.inPlace, "change the files")->excludes(dryRun);
    verb.add_flag("--backup", options.backup, "keep each old file as FILE.bak")->needs(inPlace);
    verb.add_option("-o,--output", options.out,
                    "save the session to OUT; with several FILEs, in the folder OUT")
        ->type_name("OUT")
        ->excludes(inPlace)
        ->excludes(dryRun);
    CLI::Option* const json =
        verb.add_flag("--json", options.json, "a JSON array with an object for each file");
    verb.add_flag("--ndjson", options.lines, "the same objects, one per line")->excludes(json);
}

/// @throws CLI::ValidationError
void RequireWhatItNeeds(const RelinkVerbOptions& options) {
    if (options.folders.empty() && options.mappings.empty()) {
        throw CLI::ValidationError("say where to look: --search DIR or --map FROM=TO");
    }
    if (!options.dryRun && !options.inPlace && options.out.empty()) {
        throw CLI::ValidationError("say where to save: --in-place or -o OUT; or say --dry-run");
    }
}

}  // namespace

void AddRelink(CLI::App& tool, Action& chosen) {
    auto options = std::make_shared<RelinkVerbOptions>();
    CLI::App* const verb =
        tool.add_subcommand("relink", "Find missing media, and write where they are.");
    AddOptions(*verb, *options);
    verb->footer(
        "Examples:\n"
        "  orvo relink song.orvo --search /media --dry-run\n"
        "  orvo relink song.orvo --map 'D:\\Jobs=/mnt/jobs' -o linked.orvo\n"
        "  orvo relink -r /archive --search /media --in-place --backup\n"
        "  orvo relink *.orvo --search /media --match name+length --in-place\n\n"
        "Only the paths in a session change; sessions that need no change stay untouched.\n\n"
        "Exit status: 0 if all media of all sessions are there or were found, else 1.");
    verb->callback([options, &chosen] {
        RequireWhatItNeeds(*options);
        chosen = [options] { return RunRelink(*options); };
    });
}

}  // namespace cli
