#include <orvo/Redact.h>

#include <fmt/format.h>

#include <memory>
#include <nlohmann/json.hpp>

#include "cli/files/ChangedFiles.h"
#include "cli/files/NamedFiles.h"
#include "cli/files/Output.h"
#include "cli/files/PluginCheck.h"
#include "cli/files/ReadProgress.h"
#include "cli/files/Refusals.h"
#include "cli/files/SessionFile.h"
#include "cli/terminal/JsonList.h"
#include "cli/terminal/ProgressBar.h"
#include "cli/terminal/StandardStreams.h"
#include "cli/terminal/Stream.h"
#include "cli/verbs/Verb.h"

// orvo redact FILE... (-o OUT | --in-place [--backup]) [--recursive] [--keep WHAT]... [--key FILE]

namespace cli {
namespace {

using nlohmann::ordered_json;

struct RedactVerbOptions {
    std::vector<std::string> files;
    std::string out;
    std::string key;
    std::vector<std::string> keep;
    bool recursive = false;
    bool inPlace = false;
    bool backup = false;
};

/// What can be kept.
struct Keepable {
    const char* name;
    bool orvo::RedactOptions::*member;
};
constexpr Keepable kKeepables[] = {
    {"names", &orvo::RedactOptions::keepNames},     {"paths", &orvo::RedactOptions::keepPaths},
    {"texts", &orvo::RedactOptions::keepTexts},     {"states", &orvo::RedactOptions::keepStates},
    {"unknown", &orvo::RedactOptions::keepUnknown},
};

constexpr const char* kRedacting = "redacting";

std::vector<std::string> KeepableNames() {
    std::vector<std::string> names;
    for (const Keepable& keepable : kKeepables) {
        names.emplace_back(keepable.name);
    }
    return names;
}

orvo::RedactOptions OptionsOf(const RedactVerbOptions& options) {
    orvo::RedactOptions result;
    for (const Keepable& keepable : kKeepables) {
        if (std::ranges::find(options.keep, keepable.name) != options.keep.end()) {
            result.*keepable.member = true;
        }
    }
    return result;
}

/// Whether the file was saved. Prints what was done, or reports why not.
bool Redact(orvo::Redactor& redactor, const std::string& name, const std::string& targetName,
            const RedactVerbOptions& options) {
    if (const auto stream = FindStream(name, Direction::In)) {
        Complain({.subject = stream->name,
                  .what = "a stream cannot be redacted",
                  .advice = "name a session file"});
        return false;
    }
    if (IsFolder(name)) {
        Complain({.subject = name,
                  .what = "this is a folder",
                  .advice = "name a session file in it, or add --recursive"});
        return false;
    }
    const SessionFile file(name);
    orvo::RedactResult redacted;
    const SavedFile saved =
        SaveChanged(Output(targetName), options.backup, [&](const std::string& path) {
            redacted = redactor.Redact(file.FullName(), path);
            return orvo::WriteResult{
                redacted.ok, false,
                redacted.isRead ? redacted.messages : std::vector<orvo::Message>()};
        });
    for (const Message& message : redacted.isRead || !saved.messages.empty()
                                      ? saved.messages
                                      : ExplainRefusal(file, redacted.messages)) {
        Complain(message);
    }
    if (saved.ok) {
        Print(fmt::format(
            "{}: {} redacted in {}{}\n", Printable(name),
            redacted.changes == 1 ? "1 text" : std::to_string(redacted.changes) + " texts",
            Printable(targetName),
            saved.backup ? "; the old file is " + Printable(*saved.backup) : ""));
    }
    return saved.ok;
}

/// The key as a JSON object.
ExitCode SaveKey(const orvo::Redactor& redactor, const std::string& name) {
    ordered_json key = ordered_json::object();
    for (const auto& [pseudonym, text] : redactor.Key()) {
        key[pseudonym] = text;
    }
    constexpr int kIndent = 2;
    return Output(name).Save(
        [&](const Output::Sink& sink) { sink(DumpJson(key, kIndent) + "\n"); });
}

/// @throws std::runtime_error  if the key would replace a session
void RequireOtherKey(const std::string& key, const std::vector<std::string>& sessions,
                     const std::vector<std::string>& targets) {
    const Output output(key);
    for (const auto* names : {&sessions, &targets}) {
        for (const std::string& name : *names) {
            output.RequireOther(name);
        }
    }
}

std::vector<ProgressPhase> PhasesOf(const std::vector<std::string>& files) {
    std::vector<ProgressPhase> phases;
    for (const std::string& file : files) {
        phases.push_back({kRedacting, SizeOrOne(file)});
    }
    return phases;
}

ExitCode RunRedact(const RedactVerbOptions& options) {
    RequirePlugin();
    const NamedFiles named = FindFiles(options.files, options.recursive);
    const auto targets = FindTargets(named.files, options.out);
    if (!targets) {
        return ExitCode::Failure;
    }
    if (!options.key.empty()) {
        RequireOtherKey(options.key, named.files, *targets);
    }
    ExitCode code = named.allKnown ? ExitCode::Good : ExitCode::Failure;
    Progress progress("sessions", PhasesOf(named.files));
    orvo::Redactor redactor(OptionsOf(options));
    for (std::size_t i = 0; i < named.files.size(); ++i) {
        const Progress::Phase phase = progress.Begin(kRedacting, named.files[i]);
        code = Redact(redactor, named.files[i], (*targets)[i], options) ? code : ExitCode::Failure;
        FlushOutput();
    }
    if (!options.key.empty() && SaveKey(redactor, options.key) != ExitCode::Good) {
        return ExitCode::Failure;
    }
    return code;
}

}  // namespace

void AddRedact(CLI::App& tool, Action& chosen) {
    auto options = std::make_shared<RedactVerbOptions>();
    CLI::App* const verb = tool.add_subcommand(
        "redact", "Take names, paths and texts out of sessions, for a bug report.");
    verb->add_option("FILE", options->files, "session files")->required();
    CLI::Option* const inPlace = verb->add_flag("--in-place", options->inPlace, "change the files");
    verb->add_flag("--backup", options->backup, "keep each old file as FILE.bak")->needs(inPlace);
    verb->add_option("-o,--output", options->out,
                     "save the session to OUT; with several FILEs, in the folder OUT")
        ->type_name("OUT")
        ->excludes(inPlace);
    verb->add_flag("--recursive,-r", options->recursive,
                   "FILE may be a folder: all *.orvo files in it and below");
    verb->add_option("--keep", options->keep,
                     "leave names, paths, texts, states (of effects, and events) or unknown "
                     "(comments, and what a read ignores) as they are")
        ->type_name("WHAT")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->check(OneOf(KeepableNames()));
    verb->add_option("--key", options->key,
                     "save as JSON which name and path became which; keep it to yourself")
        ->type_name("FILE")
        ->check(FileName(), "");
    verb->footer(
        "Examples:\n"
        "  orvo redact song.orvo -o report.orvo\n"
        "  orvo redact song.orvo -o report.orvo --key key.json\n"
        "  orvo redact -r sessions --in-place --backup --keep states\n\n"
        "Numbers, names of effects and names of elements stay; so does every other byte.\n\n"
        "Exit status: 0 if all sessions were saved, else 1.");
    verb->callback([options, &chosen] {
        if (!options->inPlace && options->out.empty()) {
            throw CLI::ValidationError("say where to save: -o OUT or --in-place");
        }
        chosen = [options] { return RunRedact(*options); };
    });
}

}  // namespace cli
