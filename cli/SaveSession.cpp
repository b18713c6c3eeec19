#include "cli/SaveSession.h"

#include <fstream>
#include <memory>
#include <set>
#include <stdexcept>
#include <utility>
#include <vector>

#include "cli/Messages.h"
#include "cli/ProgressBar.h"
#include "cli/StandInFile.h"
#include "reference_host/Sessions.h"
#include "reference_host/json/Differences.h"
#include "reference_host/json/SessionJson.h"

namespace cli {
namespace {

using refhost::model::Session;

/// Says why if it cannot be made.
std::unique_ptr<const StandInFile> MakeStandIn(const Output& out) {
    try {
        return std::make_unique<const StandInFile>(out.FullPath());
    } catch (const std::runtime_error& failure) {
        FailToSave(out, {failure.what()});
        return nullptr;
    }
}

refhost::WriteResult Write(refhost::Plugin& plugin, Session session, const StandInFile& file,
                           const Output& out) {
    Progress progress(out.Name(), {{"writing"}});
    const Progress::Phase writing = progress.Begin("writing");
    refhost::WriteOptions options;
    options.progress = [&writing](const refhost::Progress& report) {
        writing.Update(report.done, report.total);
    };
    refhost::WriteResult written =
        refhost::WriteSession(plugin, file.PluginPath(), std::move(session), options);
    if (written.result != tses::SessionResult::Ok && written.messages.empty()) {
        written.messages = {"the plug-in refused to write it"};
    }
    for (std::string& message : written.messages) {
        message = file.Explain(std::move(message));
    }
    return written;
}

/// The file becomes what was asked for.
ExitCode Deliver(const StandInFile& file, const Output& out) {
    return out.Save([&](const Output::Sink& sink) {
        std::ifstream source(file.Path(), std::ios::binary);
        std::vector<char> block(1 << 20);
        while (source) {
            source.read(block.data(), static_cast<std::streamsize>(block.size()));
            sink({block.data(), static_cast<std::size_t>(source.gcount())});
        }
        if (!source.eof()) {
            throw std::runtime_error(out.Name() +
                                     ": was not saved: the temporary file cannot be "
                                     "read again");
        }
    });
}

/// Compares what was saved with what was to be: what a file says of its writer is not part of the
/// session. Names what is otherwise; true if nothing is.
bool HoldsEverything(refhost::WriteResult written, const Session& saved, const std::string& source,
                     const LossRule& rule) {
    written.session.formatVersion = saved.formatVersion;
    written.session.formatDescription = saved.formatDescription;
    written.session.versionDependentValue = saved.versionDependentValue;
    refhost::Differences differences =
        refhost::FindDifferences(written.session, saved, rule.Limit());
    if (differences.count == 0) {
        // What the plug-in said that it replaced mostly shows as a difference: it is named once.
        const std::set remarks(written.messages.begin(), written.messages.end());
        differences = {.lines = {remarks.begin(), remarks.end()}, .count = remarks.size()};
    }
    std::vector<toolkit::NotCarried> losses;
    for (std::string& line : differences.lines) {
        losses.push_back({.place = {}, .what = std::move(line)});
    }
    NameLosses(source, losses, differences.count);
    return losses.empty();
}

}  // namespace

ExitCode SaveWholeSession(refhost::Plugin& plugin, Session session, const Output& out) {
    const auto file = MakeStandIn(out);
    if (!file) {
        return ExitCode::Failure;
    }
    const refhost::WriteResult written = Write(plugin, std::move(session), *file, out);
    return written.result == tses::SessionResult::Ok ? Deliver(*file, out)
                                                     : FailToSave(out, written.messages);
}

ExitCode SaveSession(refhost::Plugin& plugin, Session session, const Output& out,
                     const std::string& source, const LossRule& rule) {
    const auto file = MakeStandIn(out);
    if (!file) {
        return ExitCode::Failure;
    }
    refhost::WriteResult written = Write(plugin, std::move(session), *file, out);
    if (written.result != tses::SessionResult::Ok) {
        return FailToSave(out, written.messages);
    }
    plugin.Restart();  // a read that ended inside an unknown element would tell in this one
    const refhost::ReadResult saved = refhost::ReadSession(plugin, file->PluginPath());
    if (saved.result != tses::SessionResult::Ok) {
        return FailToSave(out, {"what the plug-in wrote cannot be read again"});
    }
    if (!HoldsEverything(std::move(written), saved.session, source, rule) && !rule.lossy) {
        RefuseLosses(source);
        return ExitCode::Failure;
    }
    return Deliver(*file, out);
}

ExitCode SaveJson(const Session& session, const Output& out) {
    const std::string text = refhost::ToJson(session);
    return out.Save([&](const Output::Sink& sink) { sink(text); });
}

}  // namespace cli
