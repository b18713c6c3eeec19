#include <nlohmann/json.hpp>

#include "cli/InfoReport.h"
#include "cli/Messages.h"
#include "cli/ProgressBar.h"
#include "cli/SessionFile.h"
#include "cli/StandardStreams.h"
#include "cli/Verb.h"
#include "reference_host/Sessions.h"

// orvo info FILE... [--tracks] [--effects] [--clips] [--json]

namespace cli {
namespace {

using nlohmann::ordered_json;

struct Options {
    std::vector<std::string> files;
    InfoDetail detail;
    bool json = false;
};

InfoContent Summarise(const refhost::model::Session& session) {
    InfoContent content;
    content.session = toolkit::Summarise(session, toolkit::IsMediaFile);
    content.tracks = toolkit::SummariseTracks(session);
    content.clips = toolkit::SummariseClips(session, content.session.media);
    content.groups = toolkit::SummariseGroups(session);
    return content;
}

InfoReport Inspect(refhost::Plugin& plugin, const std::string& name) {
    const SessionFile file(name);
    ProgressBar bar("reading " + file.Name());
    refhost::ReadOptions options;
    options.progress = [&](const refhost::Progress& progress) {
        bar.Update(progress.done, progress.total);
    };
    plugin.Restart();  // a read that ended inside an unknown element would tell in the next one
    const refhost::ReadResult read = refhost::ReadSession(plugin, file.FullPath(), options);
    if (read.result != tses::SessionResult::Ok) {
        return {file.Name(), std::nullopt, ExplainRefusal(file, read.messages)};
    }
    return {file.Name(), Summarise(read.session), {}};
}

/// What is no UTF-8 (an unpaired surrogate, a byte of a name) becomes U+FFFD.
std::string Dump(const ordered_json& value) {
    return value.dump(2, ' ', false, ordered_json::error_handler_t::replace) + "\n";
}

ExitCode RunInfo(const Options& options) {
    refhost::UseFeatureDefaults();
    refhost::Plugin plugin;
    ExitCode code = ExitCode::Good;
    ordered_json all = ordered_json::array();
    const char* separator = "";
    for (const std::string& name : options.files) {
        const InfoReport report = Inspect(plugin, name);
        for (const Message& message : report.messages) {
            Complain(message);
        }
        if (!report.content) {
            code = ExitCode::Failure;
        }
        if (options.json) {
            all.push_back(InfoToJson(report));
        } else if (report.content) {
            Print(separator + ShowInfo(report, options.detail));
            separator = "\n";
        }
    }
    if (options.json) {
        Print(Dump(all));
    }
    return code;
}

}  // namespace

void AddInfo(CLI::App& tool, Action& chosen) {
    auto options = std::make_shared<Options>();
    CLI::App* const verb = tool.add_subcommand(
        "info", "Show what is in a session: format, length, devices, media, tracks, groups.");
    verb->add_option("FILE", options->files, "session files; - for standard input")->required();
    verb->add_flag("--tracks", options->detail.tracks, "routing and switches of each track");
    verb->add_flag("--effects", options->detail.effects, "the effects of each track");
    verb->add_flag("--clips", options->detail.clips, "the clips of each track on the timeline");
    verb->add_flag("--json", options->json,
                   "everything, as an array of JSON objects, one for each file");
    verb->footer(
        "Examples:\n"
        "  orvo info song.orvo\n"
        "  orvo info --clips song.orvo\n"
        "  orvo info --json *.orvo | python3 -m json.tool\n\n"
        "Exit status: 0 if every file is a session, else 1. Missing media are no failure.");
    verb->callback([options, &chosen] { chosen = [options] { return RunInfo(*options); }; });
}

}  // namespace cli
