#include "cli/SaveSession.h"

#include <fstream>
#include <memory>
#include <set>
#include <stdexcept>
#include <utility>
#include <vector>

#include "cli/ListLimits.h"
#include "cli/Messages.h"
#include "cli/ReadProgress.h"
#include "cli/SessionFile.h"
#include "cli/StandInFile.h"
#include "format/document/Document.h"
#include "platform/kelcore/ClientVersion.h"
#include "platform/kelcore/Strings.h"
#include "reference_host/Sessions.h"
#include "reference_host/json/Differences.h"
#include "reference_host/json/SessionJson.h"
#include "toolkit/Conversion.h"

namespace cli {
namespace {

using orvo::Session;

constexpr const char* kWriting = "writing";
constexpr const char* kChecking = "checking";
constexpr const char* kSaving = "saving";

/// Returns null and reports the reason if that fails.
std::unique_ptr<const StandInFile> MakeStandIn(const Output& out) {
    try {
        return std::make_unique<const StandInFile>(out.FullPath());
    } catch (const std::runtime_error& failure) {
        FailToSave(out, {failure.what()});
        return nullptr;
    }
}

refhost::WriteResult Write(refhost::Plugin& plugin, Session session, const StandInFile& file,
                           const Output& out, Progress& progress) {
    // The plug-in asks for the tracks in the first half of the time and does not report its
    // progress in the second.
    const Progress::Phase writing = progress.Begin(kWriting, out.Name());
    refhost::WriteOptions options;
    options.trackProgress = [&writing](kelcore::uint32 done, kelcore::uint32 total) {
        writing.Update(done, kelcore::uint64{2} * total);
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

refhost::ReadResult ReadAgain(refhost::Plugin& plugin, const StandInFile& file, const Output& out,
                              Progress& progress) {
    const Progress::Phase checking = progress.Begin(kChecking, out.Name());
    checking.Watch(ShareRead(file.Path()));
    plugin.Restart();  // a read that ended inside an unknown element would affect this one
    return refhost::ReadSession(plugin, file.PluginPath());
}

/// Copies the temporary file to `out`.
ExitCode Deliver(const StandInFile& file, const Output& out, Progress& progress) {
    const Progress::Phase saving = progress.Begin(kSaving, out.Name());
    saving.Watch(ShareRead(file.Path()));
    return out.Save([&](const Output::Sink& sink) {
        std::ifstream source(file.Path(), std::ios::binary);
        std::vector<char> block(1 << 20);
        while (source) {
            source.read(block.data(), static_cast<std::streamsize>(block.size()));
            sink({block.data(), static_cast<std::size_t>(source.gcount())});
        }
        if (!source.eof()) {
            throw std::runtime_error(out.Name() +
                                     ": was not saved: the temporary file cannot be read back");
        }
    });
}

/// Whether the original is a session of the first version, which ends at a different position. Only
/// its description still contains that version: it equals the saved one except for the version.
bool IsOfFirstVersion(const Session& session, const Session& saved) {
    std::string description = saved.formatDescription;
    const std::string version = kelcore::GetClientVersion();
    const std::size_t place = description.find(version);
    return place != description.npos &&
           session.formatDescription ==
               description.replace(place, version.size(),
                                   kelcore::UTF16to8(tses::kFirstVersion));
}

/// Compares the saved session with the original, except for facts about the writer and the position
/// that every file computes. Lists each difference and returns whether there is none.
bool HoldsEverything(refhost::WriteResult written, const Session& saved, const std::string& source,
                     const LossRule& rule) {
    if (!IsOfFirstVersion(written.session, saved)) {
        written.session.versionDependentValue = saved.versionDependentValue;
    }
    written.session.formatVersion = saved.formatVersion;
    written.session.formatDescription = saved.formatDescription;
    refhost::Differences differences =
        refhost::FindDifferences(written.session, saved, rule.Limit());
    if (differences.count == 0) {
        // Characters that the plug-in replaced usually show up as a difference too; list them once.
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

std::vector<ProgressPhase> PhasesOfSaving(Kind kind) {
    return kind == Kind::Json
               ? std::vector<ProgressPhase>{{kWriting, 1.5}}
               : std::vector<ProgressPhase>{{kWriting, 2}, {kChecking, 1}, {kSaving, 0.25}};
}

ExitCode SaveWholeSession(refhost::Plugin& plugin, Session session, const Output& out,
                          Progress& progress) {
    const auto file = MakeStandIn(out);
    if (!file) {
        return ExitCode::Failure;
    }
    const refhost::WriteResult written = Write(plugin, std::move(session), *file, out, progress);
    return written.result == tses::SessionResult::Ok ? Deliver(*file, out, progress)
                                                     : FailToSave(out, written.messages);
}

ExitCode SaveSession(refhost::Plugin& plugin, Session session, const Output& out,
                     const std::string& source, const LossRule& rule, Progress& progress) {
    const auto file = MakeStandIn(out);
    if (!file) {
        return ExitCode::Failure;
    }
    refhost::WriteResult written = Write(plugin, std::move(session), *file, out, progress);
    if (written.result != tses::SessionResult::Ok) {
        FailToSave(out, written.messages);
        if (const auto problem = FindListBeyondLimits(written.session)) {
            Complain(ToMessage(source, *problem));
        }
        return ExitCode::Failure;
    }
    const refhost::ReadResult saved = ReadAgain(plugin, *file, out, progress);
    if (saved.result != tses::SessionResult::Ok) {
        return FailToSave(out, {"the plug-in cannot read back what it wrote"});
    }
    if (!HoldsEverything(std::move(written), saved.session, source, rule) && !rule.lossy) {
        RefuseLosses(source);
        return ExitCode::Failure;
    }
    return Deliver(*file, out, progress);
}

ExitCode SaveJson(const Session& session, const Output& out, Progress& progress,
                  kelcore::uint64 expectedSize) {
    const Progress::Phase writing = progress.Begin(kWriting, out.Name());
    return out.Save([&](const Output::Sink& sink) {
        refhost::ToJson(session, sink,
                        [&](kelcore::uint64 bytes) { writing.Update(bytes, expectedSize); });
    });
}

}  // namespace cli
