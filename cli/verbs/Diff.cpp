#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <orvo/Diff.h>
#include <orvo/Session.h>
#include "cli/files/AnySession.h"
#include "cli/files/LeftToSystem.h"
#include "cli/files/PluginCheck.h"
#include "cli/files/ReadProgress.h"
#include "cli/files/Refusals.h"
#include "cli/files/SaveSession.h"
#include "cli/files/SessionFile.h"
#include "cli/terminal/Messages.h"
#include "cli/terminal/ProgressBar.h"
#include "cli/terminal/StandardStreams.h"
#include "cli/terminal/Stream.h"
#include "cli/terminal/Table.h"
#include "cli/verbs/Verb.h"

// orvo diff A B [--times FORM] [--stat | --json] [--from KIND]

namespace cli {
namespace {

using nlohmann::ordered_json;

struct DiffOptions {
    std::string before;
    std::string after;
    std::string from;  // the kind of a file whose name implies none
    orvo::ChangeOptions changes;
    bool stat = false;
    bool json = false;
};

const Words<orvo::ChangeTimes> kTimeForms = {
    {"samples", orvo::ChangeTimes::Samples},
    {"seconds", orvo::ChangeTimes::Seconds},
    {"timecode", orvo::ChangeTimes::Timecode},
    {"bars", orvo::ChangeTimes::Bars},
};

// Reading

/// A session, the name of its file for messages, and the folder from which its media are named.
struct ReadSide {
    std::string name;
    std::string folder;
    orvo::Session session;
};

std::string FolderOf(const std::string& name) {
    std::error_code error;
    if (FindStream(name, Direction::In)) {
        return std::filesystem::current_path(error).string();
    }
    return std::filesystem::absolute(name, error).lexically_normal().parent_path().string();
}

std::optional<ReadSide> Read(const std::string& name, Kind kind, Progress& progress) {
    std::optional<NamedSession> read = ReadToLookAt(name, kind, progress);
    if (!read) {
        return std::nullopt;
    }
    return ReadSide{std::move(read->name), FolderOf(name), std::move(read->session)};
}

/// Media that lie beside both sessions in the same way are the same media.
orvo::Session Beside(orvo::Session session, const std::string& folder, const ReadSide& other) {
    std::set<std::string> known;
    for (const orvo::File& file : other.session.files) {
        known.insert(file.path);
    }
    for (orvo::File& file : session.files) {
        if (file.path.starts_with(folder + '/') && !known.contains(file.path)) {
            const std::string there = other.folder + file.path.substr(folder.size());
            file.path = known.contains(there) ? there : file.path;
        }
    }
    return session;
}

std::vector<orvo::Change> FindChanges(const ReadSide& before, const ReadSide& after,
                                      const orvo::ChangeOptions& options) {
    if (before.folder == after.folder) {
        return orvo::FindChanges(before.session, after.session, options);
    }
    return orvo::FindChanges(Beside(before.session, before.folder, after), after.session, options);
}

// Showing

constexpr std::string_view kPlain = "\x1b[0m";

std::string_view ColourOf(orvo::ChangeKind kind) {
    switch (kind) {
        case orvo::ChangeKind::Added:
            return "\x1b[32m";
        case orvo::ChangeKind::Removed:
            return "\x1b[31m";
        case orvo::ChangeKind::Moved:
        case orvo::ChangeKind::Trimmed:
        case orvo::ChangeKind::Split:
            return "\x1b[36m";
        default:
            return "\x1b[33m";
    }
}

template <class Value>
std::string WordOf(const Value& value) {
    std::ostringstream out;
    out << value;
    return out.str();
}

void PrintSentences(const std::vector<orvo::Change>& changes) {
    const bool mayColour = MayColourOutput();
    for (const orvo::Change& change : changes) {
        const std::string sentence = Printable(change.sentence);
        Print(mayColour ? fmt::format("{}{}{}\n", ColourOf(change.kind), sentence, kPlain)
                        : sentence + '\n');
    }
}

/// How many things of each sort changed in which way.
void PrintStatistics(const std::vector<orvo::Change>& changes) {
    std::map<std::pair<orvo::ChangedThing, orvo::ChangeKind>, std::size_t> counts;
    for (const orvo::Change& change : changes) {
        counts[{change.thing, change.kind}] += change.count;
    }
    std::vector<std::vector<std::string>> rows;
    for (const auto& [what, count] : counts) {
        rows.push_back({WordOf(what.first), WordOf(what.second), std::to_string(count)});
    }
    Print(FormatTable(rows, {Align::Left, Align::Left, Align::Right}, ""));
}

std::string Dump(const ordered_json& value) {
    return value.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

ordered_json ToJson(const orvo::Change& change) {
    return {{"kind", WordOf(change.kind)}, {"thing", WordOf(change.thing)},
            {"count", change.count},       {"before", change.before},
            {"after", change.after},       {"sentence", change.sentence}};
}

/// Keys stand on lines of their own; so do the elements of lists.
void PrintJson(const ReadSide& before, const ReadSide& after,
               const std::vector<orvo::Change>& changes) {
    Print(fmt::format("{{\n\"before\": {},\n\"after\": {},\n\"same\": {},\n\"changes\": [",
                      Dump(before.name), Dump(after.name), changes.empty()));
    for (std::size_t i = 0; i < changes.size(); ++i) {
        Print((i == 0 ? "\n  " : ",\n  ") + Dump(ToJson(changes[i])));
    }
    Print(fmt::format("{}],\n\"patch\": {}\n}}\n", changes.empty() ? "" : "\n",
                      orvo::JsonPatch(before.session, after.session)));
}

void Show(const ReadSide& before, const ReadSide& after, const std::vector<orvo::Change>& changes,
          const DiffOptions& options) {
    if (options.json) {
        PrintJson(before, after, changes);
    } else if (options.stat) {
        PrintStatistics(changes);
    } else {
        PrintSentences(changes);
    }
}

// The whole

ExitCode RunDiff(const DiffOptions& options) {
    const Kind before = KindToLookAt(options.before, options.from);
    const Kind after = KindToLookAt(options.after, options.from);
    if (before == Kind::Orvo || after == Kind::Orvo) {
        RequirePlugin();
    }
    Progress progress(
        "sessions", {{kReading, SizeOrOne(options.before)}, {kReading, SizeOrOne(options.after)}});
    const std::optional<ReadSide>& one = LeaveToSystem(Read(options.before, before, progress));
    const std::optional<ReadSide>& other = LeaveToSystem(Read(options.after, after, progress));
    if (!one || !other) {
        return ExitCode::Trouble;
    }
    const std::vector<orvo::Change> changes = FindChanges(*one, *other, options.changes);
    Show(*one, *other, changes, options);
    return changes.empty() ? ExitCode::Good : ExitCode::Different;
}

}  // namespace

void AddDiff(CLI::App& tool, Action& chosen) {
    auto options = std::make_shared<DiffOptions>();
    CLI::App* const verb =
        tool.add_subcommand("diff", "Tell what changed between two sessions, in sentences.");
    verb->add_option("A", options->before, "the session before, or its JSON; - for standard input")
        ->required();
    verb->add_option("B", options->after, "the session after, or its JSON; - for standard input")
        ->required();
    AddChoice(*verb, "--times", kTimeForms, options->changes.times,
              "show times as samples, seconds, timecode or bars, not as the session does")
        ->type_name("FORM");
    AddKindOption(*verb, "--from", options->from,
                  "the kind, orvo or json, of a name that does not imply it; orvo if absent");
    verb->add_flag("--stat", options->stat, "only how many things changed, and in which way");
    verb->add_flag("--json", options->json, "the changes, and a JSON Patch, as one object")
        ->excludes("--stat");
    verb->footer(
        "Examples:\n"
        "  orvo diff old.orvo new.orvo\n"
        "  orvo diff --times samples old.orvo new.json\n"
        "  orvo diff --stat old.orvo new.orvo\n"
        "  git difftool --extcmd 'orvo diff' HEAD~1 song.orvo\n\n"
        "Exit status: 0 if nothing changed but ids, 1 if something did, 2 in trouble.");
    verb->callback([options, &chosen] {
        if (options->before == kStream && options->after == kStream) {
            throw CLI::ValidationError("only one of the sessions can be standard input");
        }
        chosen = Action([options] { return RunDiff(*options); }, ExitCode::Trouble);
    });
}

}  // namespace cli
