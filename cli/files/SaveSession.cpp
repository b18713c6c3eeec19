#include "cli/files/SaveSession.h"

#include <fstream>
#include <future>
#include <memory>
#include <set>
#include <sstream>
#include <stdexcept>
#include <utility>
#include <vector>

#include <orvo/Differences.h>
#include "cli/RemovalAtSignal.h"
#include "cli/files/LeftToSystem.h"
#include "cli/files/ReadProgress.h"
#include "cli/files/SessionFile.h"
#include "cli/files/StandInFile.h"
#include "cli/terminal/Messages.h"
#include "format/document/Document.h"
#include "platform/kelcore/ClientVersion.h"
#include "platform/kelcore/Strings.h"
#include "toolkit/Conversion.h"

namespace cli {
namespace {

using orvo::Session;

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

orvo::WriteResult Write(const Session& session, const StandInFile& file, const Output& out,
                        Progress& progress) {
    constexpr double kSteps = 10'000;
    const Progress::Phase writing = progress.Begin(kWriting, out.Name());
    orvo::WriteResult written =
        orvo::WriteSession(session, file.FullName(), {.progress = [&writing](double share) {
                               writing.Update(static_cast<kelcore::uint64>(share * kSteps),
                                              static_cast<kelcore::uint64>(kSteps));
                               return true;
                           }});
    for (orvo::Message& message : written.messages) {
        message.what = file.Explain(std::move(message.what));
    }
    return written;
}

orvo::ReadResult ReadAgain(const StandInFile& file, const Output& out, Progress& progress) {
    const Progress::Phase checking = progress.Begin(kChecking, out.Name());
    checking.Watch(ShareRead(file.Path()));
    return orvo::ReadSession(file.FullName());
}

/// Returns whether the temporary file could be read to its end.
bool Copy(const StandInFile& file, const Output::Sink& sink) {
    std::ifstream source(file.Path(), std::ios::binary);
    std::vector<char> block(1 << 20);
    while (source) {
        source.read(block.data(), static_cast<std::streamsize>(block.size()));
        sink({block.data(), static_cast<std::size_t>(source.gcount())});
    }
    return source.eof();
}

void RequireCopied(bool isCopied, const Output& out) {
    if (!isCopied) {
        throw std::runtime_error(out.Name() +
                                 ": was not saved: the temporary file cannot be read back");
    }
}

/// Copies the temporary file to `out`.
ExitCode Deliver(const StandInFile& file, const Output& out, Progress& progress) {
    const Progress::Phase saving = progress.Begin(kSaving, out.Name());
    saving.Watch(ShareRead(file.Path()));
    return out.Save([&](const Output::Sink& sink) { RequireCopied(Copy(file, sink), out); });
}

/// Whether the original is a session of the first version, which ends at a different position. Only
/// its description still contains that version: it equals the saved one except for the version.
bool IsOfFirstVersion(const Session& session, const Session& saved) {
    std::string description = saved.formatDescription;
    const std::string version = kelcore::GetClientVersion();
    const std::size_t place = description.find(version);
    return place != description.npos &&
           session.formatDescription ==
               description.replace(place, version.size(), kelcore::UTF16to8(tses::kFirstVersion));
}

/// Takes over the facts about the writer, and the position that every file computes.
void TakeWhatTheWriterMakes(const Session& session, Session& saved) {
    if (!IsOfFirstVersion(session, saved)) {
        saved.versionDependentValue = session.versionDependentValue;
    }
    saved.formatVersion = session.formatVersion;
    saved.formatDescription = session.formatDescription;
}

/// Thrown in the middle of a replacement, which then does not happen.
struct Refused {};

/// Reads the temporary file back, and copies it to `out` if that is good. A file can be copied
/// meanwhile, because it gets its name at the end; what has been written to a stream stays there.
template <class IsGood>
ExitCode DeliverIf(const IsGood& isGood, const StandInFile& file, const Output& out,
                   Progress& progress) {
    if (out.IsStream()) {
        return isGood(LeaveToSystem(ReadAgain(file, out, progress))) ? Deliver(file, out, progress)
                                                                     : ExitCode::Failure;
    }
    std::future<orvo::ReadResult> again = [&] {
        const WithoutSignals inherited;
        return std::async(std::launch::async, [&] { return ReadAgain(file, out, progress); });
    }();
    try {
        return out.Save([&](const Output::Sink& sink) {
            const bool isCopied = Copy(file, sink);
            if (!isGood(LeaveToSystem(again.get()))) {
                throw Refused();
            }
            RequireCopied(isCopied, out);
        });
    } catch (const Refused&) {
        return ExitCode::Failure;
    }
}

std::vector<std::string> LinesOf(const orvo::Differences& differences) {
    std::vector<std::string> lines;
    for (const orvo::Difference& difference : differences.list) {
        std::ostringstream line;
        line << difference;
        lines.push_back(line.str());
    }
    return lines;
}

/// What is said of the file. The rest is said of the session.
std::vector<std::string> Reasons(const orvo::WriteResult& written) {
    std::vector<std::string> reasons;
    for (const orvo::Message& message : written.messages) {
        if (!message.file.empty()) {
            reasons.push_back(message.what);
        }
    }
    return reasons;
}

void ComplainOfSession(const std::string& source, const orvo::WriteResult& written) {
    for (const orvo::Message& message : written.messages) {
        if (message.file.empty()) {
            Complain({.subject = source, .what = message.what, .advice = message.advice});
        }
    }
}

std::vector<std::string> DistinctReasons(const orvo::WriteResult& written) {
    const std::vector<std::string> reasons = Reasons(written);
    const std::set distinct(reasons.begin(), reasons.end());
    return {distinct.begin(), distinct.end()};
}

/// Compares the saved session with the original, except for facts about the writer and the position
/// that every file computes. Lists each difference and returns whether there is none.
bool HoldsEverything(const Session& session, const orvo::WriteResult& written, Session& saved,
                     const std::string& source, const LossRule& rule) {
    TakeWhatTheWriterMakes(session, saved);
    orvo::Differences differences = orvo::FindDifferences(session, saved, rule.Limit());
    std::vector<std::string> lines = LinesOf(differences);
    if (differences.count == 0) {
        // Characters that the plug-in replaced usually show up as a difference too; list them once.
        lines = DistinctReasons(written);
        differences.count = lines.size();
    }
    std::vector<toolkit::NotCarried> losses;
    for (std::string& line : lines) {
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

ExitCode SaveWholeSession(const Session& session, const Output& out, Progress& progress) {
    const auto file = MakeStandIn(out);
    if (!file) {
        return ExitCode::Failure;
    }
    const orvo::WriteResult written = Write(session, *file, out, progress);
    return written ? Deliver(*file, out, progress) : FailToSave(out, Reasons(written));
}

ExitCode SaveSession(const Session& session, const Output& out, const std::string& source,
                     const LossRule& rule, Progress& progress) {
    const auto file = MakeStandIn(out);
    if (!file) {
        return ExitCode::Failure;
    }
    const orvo::WriteResult written = Write(session, *file, out, progress);
    if (!written) {
        FailToSave(out, Reasons(written));
        ComplainOfSession(source, written);
        return ExitCode::Failure;
    }
    const auto isGood = [&](orvo::ReadResult& saved) {
        if (!saved) {
            FailToSave(out, {"the plug-in cannot read back what it wrote"});
            return false;
        }
        if (!HoldsEverything(session, written, saved.session, source, rule) && !rule.lossy) {
            RefuseLosses(source);
            return false;
        }
        return true;
    };
    return DeliverIf(isGood, *file, out, progress);
}

ExitCode SaveJson(const Session& session, orvo::JsonOptions options, const Output& out,
                  Progress& progress, kelcore::uint64 expectedSize) {
    const Progress::Phase writing = progress.Begin(kWriting, out.Name());
    options.progress = [&](kelcore::uint64 bytes) { writing.Update(bytes, expectedSize); };
    return out.Save([&](const Output::Sink& sink) { orvo::ToJson(session, sink, options); });
}

}  // namespace cli
