#include "cli/SaveSession.h"

#include <fmt/format.h>

#include <cstdio>
#include <optional>
#include <set>
#include <utility>
#include <variant>

#include "cli/Messages.h"
#include "cli/ProgressBar.h"
#include "cli/SessionFile.h"
#include "cli/StandardStreams.h"
#include "reference_host/Sessions.h"
#include "reference_host/json/Differences.h"
#include "toolkit/FileContent.h"

namespace cli {
namespace {

using refhost::model::Session;

/// Names what is otherwise in the saved file, which is read for that. What a file says of its
/// writer is not part of the session.
ExitCode TellLosses(refhost::Plugin& plugin, Session session, const std::string& path,
                    const std::string& subject) {
    plugin.Restart();  // a read that ended inside an unknown element would tell in this one
    const refhost::ReadResult saved = refhost::ReadSession(plugin, FullPathOf(path));
    if (saved.result != tses::SessionResult::Ok) {
        Complain({.subject = subject,
                  .what = "what was saved cannot be read again",
                  .advice = "keep what it was made of"});
        return ExitCode::Failure;
    }
    session.formatVersion = saved.session.formatVersion;
    session.formatDescription = saved.session.formatDescription;
    session.versionDependentValue = saved.session.versionDependentValue;
    const refhost::Differences losses =
        refhost::FindDifferences(session, saved.session, toolkit::kNotCarriedLimit);
    for (const std::string& line : losses.lines) {
        Complain({.subject = subject, .what = "saved, but not as it was", .advice = line});
    }
    if (losses.count > losses.lines.size()) {
        Complain({.subject = subject,
                  .what = "saved, but not as it was",
                  .advice = fmt::format("and {} more", losses.count - losses.lines.size())});
    }
    return ExitCode::Good;
}

refhost::WriteResult Write(refhost::Plugin& plugin, Session session, const std::string& path,
                           const std::string& subject) {
    ProgressBar bar("writing " + subject);
    refhost::WriteOptions options;
    options.progress = [&](const refhost::Progress& progress) {
        bar.Update(progress.done, progress.total);
    };
    return refhost::WriteSession(plugin, FullPathOf(path), std::move(session), options);
}

ExitCode SaveToFile(refhost::Plugin& plugin, Session session, const std::string& path,
                    const std::string& subject, Losses losses) {
    std::optional<Session> copy = losses == Losses::Told ? std::optional(session) : std::nullopt;
    const refhost::WriteResult written = Write(plugin, std::move(session), path, subject);
    if (written.result != tses::SessionResult::Ok) {
        return FailToSave(subject, written.messages.empty()
                                       ? std::vector<std::string>{"the plug-in refused to write it"}
                                       : written.messages);
    }
    for (const std::string& remark : std::set(written.messages.begin(), written.messages.end())) {
        Complain({.subject = subject, .what = "saved", .advice = remark});
    }
    return copy ? TellLosses(plugin, *std::move(copy), path, subject) : ExitCode::Good;
}

}  // namespace

ExitCode FailToSave(const std::string& subject, const std::vector<std::string>& reasons) {
    for (const std::string& reason : reasons) {
        Complain({.subject = subject, .what = "was not saved", .advice = reason});
    }
    return ExitCode::Failure;
}

ExitCode WriteToStream(const std::string& content) {
    std::fwrite(content.data(), 1, content.size(), stdout);
    return ExitCode::Good;
}

ExitCode SaveSession(refhost::Plugin& plugin, Session session, const std::string& name,
                     Losses losses) {
    if (name != kStream) {
        return SaveToFile(plugin, std::move(session), name, name, losses);
    }
    std::string content;
    {
        const TemporarySession spooled;
        const ExitCode code =
            SaveToFile(plugin, std::move(session), spooled.Path(), "standard output", losses);
        if (code != ExitCode::Good) {
            return code;
        }
        content = std::get<std::string>(toolkit::ReadFileContent(spooled.Path()));
    }
    return WriteToStream(content);
}

}  // namespace cli
