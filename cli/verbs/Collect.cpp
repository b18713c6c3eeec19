#include <orvo/Collect.h>

#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "cli/RemovalAtSignal.h"
#include "cli/files/PluginCheck.h"
#include "cli/files/Refusals.h"
#include "cli/files/SessionFile.h"
#include "cli/terminal/JsonList.h"
#include "cli/terminal/Messages.h"
#include "cli/terminal/ProgressBar.h"
#include "cli/terminal/ShownSize.h"
#include "cli/terminal/StandardStreams.h"
#include "cli/terminal/Stream.h"
#include "cli/verbs/CollectReport.h"
#include "cli/verbs/Verb.h"

// orvo collect FILE DIR [--link] [--without-missing] [--dry-run] [--json]
// orvo collect --verify DIR [--json]

namespace cli {
namespace {

struct CollectVerbOptions {
    std::string file;
    std::string folder;
    std::string verify;
    bool link = false;
    bool withoutMissing = false;
    bool dryRun = false;
    bool json = false;
};

constexpr const char* kCollecting = "collecting";
constexpr const char* kVerifying = "verifying";
constexpr int kIndent = 2;

/// Passes on to a progress bar how much is done.
orvo::ProgressFunction ShowOn(const Progress::Phase& phase) {
    constexpr kelcore::uint64 kWhole = 100000;
    return [&phase](double share) {
        phase.Update(static_cast<kelcore::uint64>(share * static_cast<double>(kWhole)), kWhole);
        return true;
    };
}

/// The messages, with files in the folder named as the user names it.
std::vector<Message> FromLibrary(const std::vector<orvo::Message>& messages,
                                 const std::string& folder, const std::string& name) {
    std::vector<Message> result;
    for (const orvo::Message& message : messages) {
        std::string subject = message.file == folder ? name : message.file;
        if (message.file.starts_with(folder + '/')) {
            subject = std::filesystem::path(name) / message.file.substr(folder.size() + 1);
        }
        result.push_back(
            {.subject = std::move(subject), .what = message.what, .advice = message.advice});
    }
    return result;
}

/// Why not to begin.
std::vector<Message> FindObstacles(const orvo::CollectPlan& plan,
                                   const CollectVerbOptions& options) {
    std::vector<Message> obstacles;
    if (const std::size_t missing = plan.MissingCount(); missing != 0 && !options.withoutMissing) {
        obstacles.push_back({.subject = options.file,
                             .what = missing == 1
                                         ? "one media file is missing"
                                         : std::to_string(missing) + " media files are missing",
                             .advice = "find them with \"orvo relink\", or add --without-missing"});
    }
    if (plan.bytesFree && *plan.bytesFree < plan.bytesToCopy) {
        obstacles.push_back({.subject = options.folder,
                             .what = "has only " + ShownSize(*plan.bytesFree) + " of the " +
                                     ShownSize(plan.bytesToCopy) + " that the media need",
                             .advice = "choose another folder; on the file system of the media, "
                                       "--link needs no space"});
    }
    return obstacles;
}

ExitCode Report(const CollectVerbOptions& options, const orvo::CollectPlan& plan,
                const orvo::CollectResult& result, const std::vector<Message>& messages) {
    for (const Message& message : messages) {
        Complain(message);
    }
    if (options.json) {
        Print(DumpJson(ToJson(plan, result, options.file, options.folder, messages), kIndent) +
              "\n");
    } else {
        Print(ToText(result, options.folder));
    }
    return messages.empty() ? ExitCode::Good : ExitCode::Failure;
}

/// Why a session cannot be collected at all.
std::vector<Message> ExplainPlan(const SessionFile& file, const orvo::CollectPlan& plan,
                                 const std::string& folder) {
    const bool isAboutFolder =
        !plan.messages.empty() && (plan.messages.front().file == plan.folder ||
                                   plan.messages.front().file == plan.folder.parent_path());
    return isAboutFolder ? FromLibrary(plan.messages, plan.folder, folder)
                         : ExplainRefusal(file, plan.messages);
}

orvo::CollectResult CollectTo(const orvo::CollectPlan& plan, orvo::CollectOptions options,
                              const CollectVerbOptions& verb) {
    const RemovalAtSignal ofPart((plan.folder / orvo::kPartName).string());
    Progress progress(verb.file, {{kCollecting, 1}});
    const Progress::Phase collecting = progress.Begin(kCollecting);
    options.progress = ShowOn(collecting);
    return orvo::Collect(plan, options);
}

ExitCode RunCollect(const CollectVerbOptions& options) {
    RequirePlugin();
    if (const auto stream = FindStream(options.file, Direction::In)) {
        Complain({.subject = stream->name,
                  .what = "a stream cannot be collected",
                  .advice = "name a session file"});
        return ExitCode::Failure;
    }
    const SessionFile file(options.file);
    const orvo::CollectOptions how{.link = options.link};
    const orvo::CollectPlan plan = orvo::PlanCollection(file.FullName(), options.folder, how);
    if (!plan) {
        return Report(options, plan, {}, ExplainPlan(file, plan, options.folder));
    }
    if (!options.json) {
        Print(ToText(plan, options.file, options.folder));
        Print(options.dryRun ? ListMedia(plan) : "");
        FlushOutput();
    }
    for (const Message& remark : FromLibrary(plan.messages, plan.folder, options.folder)) {
        Complain(remark);
    }
    std::vector<Message> obstacles = FindObstacles(plan, options);
    if (options.dryRun || !obstacles.empty()) {
        return Report(options, plan, {}, obstacles);
    }
    const orvo::CollectResult result = CollectTo(plan, how, options);
    return Report(options, plan, result, FromLibrary(result.messages, plan.folder, options.folder));
}

ExitCode RunVerify(const CollectVerbOptions& options) {
    Progress progress(options.verify, {{kVerifying, 1}});
    const Progress::Phase verifying = progress.Begin(kVerifying);
    const orvo::VerifyResult result = orvo::VerifyCollection(options.verify, ShowOn(verifying));
    const std::vector<Message> messages =
        FromLibrary(result.messages, options.verify, options.verify);
    for (const Message& message : messages) {
        Complain(message);
    }
    Print(options.json ? DumpJson(ToJson(result, options.verify, messages), kIndent) + "\n"
                       : ToText(result, options.verify));
    return result ? ExitCode::Good : ExitCode::Failure;
}

}  // namespace

void AddCollect(CLI::App& tool, Action& chosen) {
    auto options = std::make_shared<CollectVerbOptions>();
    CLI::App* const verb = tool.add_subcommand(
        "collect", "Copy a session and its media into one folder, or verify such a folder.");
    CLI::Option* const file =
        verb->add_option("FILE", options->file, "a session file")->check(FileName());
    CLI::Option* const folder =
        verb->add_option("DIR", options->folder, "the folder; made if it is not there");
    CLI::Option* const link = verb->add_flag("--link", options->link,
                                             "make hard links where possible, which need no space");
    CLI::Option* const withoutMissing = verb->add_flag("--without-missing", options->withoutMissing,
                                                       "collect although media are missing");
    CLI::Option* const dryRun =
        verb->add_flag("--dry-run", options->dryRun, "only say what would be collected");
    CLI::Option* const verify =
        verb->add_option("--verify", options->verify, "compare DIR with its manifest")
            ->type_name("DIR");
    for (CLI::Option* const other : {file, folder, link, withoutMissing, dryRun}) {
        verify->excludes(other);
    }
    verb->add_flag("--json", options->json, "print a JSON object");
    verb->footer(
        "Examples:\n"
        "  orvo collect song.orvo /backup/song\n"
        "  orvo collect --dry-run song.orvo /backup/song\n"
        "  orvo collect --verify /backup/song\n\n"
        "Nothing is ever replaced. After an interruption, the same command goes on.\n\n"
        "Exit status: 0 if the folder is complete, or verified as it was collected; else 1.");
    verb->callback([options, verify, &chosen] {
        if (verify->count() != 0) {
            chosen = [options] { return RunVerify(*options); };
            return;
        }
        if (options->file.empty() || options->folder.empty()) {
            throw CLI::RequiredError(options->file.empty() ? "FILE" : "DIR");
        }
        chosen = [options] { return RunCollect(*options); };
    });
}

}  // namespace cli
