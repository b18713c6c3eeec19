#include <fmt/format.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <orvo/Merge.h>
#include <orvo/Session.h>
#include "cli/files/JsonFile.h"
#include "cli/files/Kind.h"
#include "cli/files/LeftToSystem.h"
#include "cli/files/Losses.h"
#include "cli/files/OrvoFile.h"
#include "cli/files/Output.h"
#include "cli/files/PluginCheck.h"
#include "cli/files/ReadProgress.h"
#include "cli/files/Refusals.h"
#include "cli/files/SaveSession.h"
#include "cli/files/SessionFile.h"
#include "cli/terminal/Messages.h"
#include "cli/terminal/ProgressBar.h"
#include "cli/verbs/Verb.h"

// orvo merge BASE OURS THEIRS -o OUT [--ours | --theirs] [--at NAME] [--kind KIND] [--lossy]
// [--all]

namespace cli {
namespace {

struct MergeOptions {
    std::string base;
    std::string ours;
    std::string theirs;
    std::string out;
    std::string at;
    std::string kind;  // of names that imply none
    bool useOurs = false;
    bool useTheirs = false;
    LossRule rule;
};

Kind KindOf(const std::string& name, const MergeOptions& options) {
    if (const auto implied = FindKind("", name)) {
        return *implied;
    }
    return FindKind(options.kind, name).value_or(Kind::Orvo);
}

// Reading

SessionFile FileOf(const std::string& name, const MergeOptions& options) {
    return options.at.empty() ? SessionFile(name) : SessionFile::At(name, options.at);
}

std::optional<ReadInput> ReadOrvo(const SessionFile& file, Progress& progress) {
    const Progress::Phase reading = progress.Begin(kReading, file.Name());
    reading.Watch(ShareRead(file.Path()));
    orvo::ReadResult read = orvo::ReadSession(file.FullName());
    if (!read) {
        for (const Message& message : ExplainRefusal(file, read.messages)) {
            Complain(message);
        }
        return std::nullopt;
    }
    return ReadInput{std::move(read.session), 0};
}

/// What only the base has is in neither side, so nothing is lost with it.
std::optional<ReadInput> ReadBase(const MergeOptions& options, Progress& progress) {
    if (KindOf(options.base, options) == Kind::Json) {
        return ReadJson(Input(options.base), progress);
    }
    return ReadOrvo(FileOf(options.base, options), progress);
}

std::optional<ReadInput> ReadSide(const std::string& name, const MergeOptions& options,
                                  const Output& out, Progress& progress) {
    if (KindOf(name, options) == Kind::Json) {
        return ReadJson(Input(name), progress);
    }
    const SessionFile file = FileOf(name, options);
    const bool toJson = KindOf(options.out, options) == Kind::Json;
    const toolkit::Conversion conversion = {
        .target = toJson ? toolkit::Target::Json : toolkit::Target::SessionFile,
        .from = file.FullPath(),
        .to = out.FullPath()};
    std::optional<ReadInput> input = ReadOrvo(file, progress);
    // Not beside the reads: the XML library starts and stops without a lock.
    const bool mayConvert =
        input &&
        MayConvert(file, toolkit::ScanDocument(file.Path(), conversion, options.rule.Limit()),
                   options.rule);
    return mayConvert ? std::move(input) : std::nullopt;
}

// Conflicts

std::string Joined(const std::vector<std::string>& sentences) {
    return sentences.empty() ? "nothing of that kind"
                             : fmt::format("{}", fmt::join(sentences, ", "));
}

void NameConflicts(const std::string& subject, const std::vector<orvo::MergeConflict>& conflicts) {
    for (const orvo::MergeConflict& conflict : conflicts) {
        Complain({.subject = subject,
                  .what = "conflict",
                  .advice = fmt::format("ours: {}; theirs: {}", Joined(conflict.ours),
                                        Joined(conflict.theirs))});
    }
}

ExitCode RefuseMerge(const std::string& subject, std::size_t count) {
    Complain({.subject = subject,
              .what = fmt::format("not merged: {} conflict{}", count, count == 1 ? "" : "s"),
              .advice = "nothing was written; --ours or --theirs decides"});
    return ExitCode::Different;
}

// The whole

orvo::MergeDecision DecisionOf(const MergeOptions& options) {
    return options.useOurs     ? orvo::MergeDecision::Ours
           : options.useTheirs ? orvo::MergeDecision::Theirs
                               : orvo::MergeDecision::None;
}

ExitCode SaveMerged(const orvo::Session& session, const Output& out, const MergeOptions& options,
                    Progress& progress) {
    const ExitCode code = KindOf(options.out, options) == Kind::Json
                              ? SaveJson(session, {}, out, progress, 0)
                              : SaveSession(session, out, options.out, options.rule, progress);
    return code == ExitCode::Good ? code : ExitCode::Trouble;
}

ExitCode RunMerge(const MergeOptions& options) {
    const Output out = options.at.empty() ? Output(options.out) : Output(options.out, options.at);
    std::vector<ProgressPhase> phases;
    bool needsPlugin = KindOf(options.out, options) == Kind::Orvo;
    for (const std::string& name : {options.base, options.ours, options.theirs}) {
        phases.push_back({kReading, 1});
        needsPlugin = needsPlugin || KindOf(name, options) == Kind::Orvo;
    }
    const auto saving = PhasesOfSaving(KindOf(options.out, options));
    phases.insert(phases.end(), saving.begin(), saving.end());
    if (needsPlugin) {
        RequirePlugin();
    }
    Progress progress(out.Name(), phases);
    const auto& base = LeaveToSystem(ReadBase(options, progress));
    const auto& ours = LeaveToSystem(ReadSide(options.ours, options, out, progress));
    const auto& theirs = LeaveToSystem(ReadSide(options.theirs, options, out, progress));
    if (!base || !ours || !theirs) {
        return ExitCode::Trouble;
    }
    const orvo::MergeDecision decision = DecisionOf(options);
    const orvo::MergeResult& merged =
        LeaveToSystem(orvo::MergeSessions(base->session, ours->session, theirs->session, decision));
    const std::string& subject = options.at.empty() ? out.Name() : options.at;
    NameConflicts(subject, merged.conflicts);
    if (!merged.conflicts.empty() && decision == orvo::MergeDecision::None) {
        return RefuseMerge(subject, merged.conflicts.size());
    }
    if (merged.keptEditorState) {
        Complain({.subject = subject,
                  .what = "both sides moved the cursor, the selection or the view",
                  .advice = "it stays as in the base"});
    }
    return SaveMerged(merged.session, out, options, progress);
}

}  // namespace

void AddMerge(CLI::App& tool, Action& chosen) {
    auto options = std::make_shared<MergeOptions>();
    CLI::App* const verb =
        tool.add_subcommand("merge", "Merge two sessions that were made from a third one.");
    verb->add_option("BASE", options->base, "the session from which both were made, or its JSON")
        ->required();
    verb->add_option("OURS", options->ours, "one session, or its JSON")->required();
    verb->add_option("THEIRS", options->theirs, "the other session, or its JSON")->required();
    verb->add_option("-o,--output", options->out, "the merged session; may be one of the others")
        ->required()
        ->type_name("OUT")
        ->check(FileName());
    CLI::Option* const ours =
        verb->add_flag("--ours", options->useOurs, "in a conflict, the change of OURS counts");
    verb->add_flag("--theirs", options->useTheirs, "in a conflict, the change of THEIRS counts")
        ->excludes(ours);
    verb->add_option(
            "--at", options->at,
            "the place of all four, to which their relative paths refer, whatever their names")
        ->type_name("NAME")
        ->check(FileName());
    AddKindOption(*verb, "--kind", options->kind,
                  "the kind, orvo or json, of names that do not imply it; orvo if absent");
    verb->add_flag("--lossy", options->rule.lossy, "merge despite losses, and list them");
    verb->add_flag("--all", options->rule.all, "list all losses, not only the first");
    verb->footer(
        "Examples:\n"
        "  orvo merge base.orvo mine.orvo yours.orvo -o song.orvo\n"
        "  orvo merge --theirs base.orvo mine.orvo yours.orvo -o song.orvo\n\n"
        "Exit status: 0 if OUT was written, 1 for a conflict, 2 in trouble.\n"
        "Without --ours or --theirs nothing is written if there is a conflict.");
    verb->callback([options, &chosen] {
        chosen = Action([options] { return RunMerge(*options); }, ExitCode::Trouble);
    });
}

}  // namespace cli
