#include "cli/files/Interchange.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>
#include <vector>

#include "cli/RemovalAtSignal.h"
#include "cli/files/ReadProgress.h"
#include "cli/files/SaveSession.h"
#include "cli/files/SessionFile.h"
#include "cli/files/TemporaryFolder.h"
#include "cli/terminal/Messages.h"

namespace cli {
namespace {

namespace fs = std::filesystem;

/// Whether a signal waits that would end the tool.
bool IsInterrupted() {
    sigset_t waiting;
    sigpending(&waiting);
    return sigismember(&waiting, SIGINT) == 1 || sigismember(&waiting, SIGTERM) == 1 ||
           sigismember(&waiting, SIGHUP) == 1;
}

/// Shows the progress. While it is used, signals are blocked, and one that waits cancels the
/// conversion, which then leaves nothing behind; after that the signal ends the tool.
orvo::ProgressFunction ShowOrCancel(const Progress::Phase& phase) {
    constexpr kelcore::uint64 kSteps = 10'000;
    return [&phase](double share) {
        phase.Update(static_cast<kelcore::uint64>(share * static_cast<double>(kSteps)), kSteps);
        return !IsInterrupted();
    };
}

/// @param path  of the file or folder, which messages call by the name of `subject`
void Complain(const std::vector<orvo::Message>& messages, const fs::path& path,
              const std::string& subject) {
    for (const orvo::Message& message : messages) {
        const bool isOther = !message.file.empty() && message.file != path.string();
        cli::Complain({.subject = isOther ? message.file : subject,
                       .place = {message.line, message.column},
                       .what = message.what,
                       .advice = message.advice});
    }
}

/// Adds up the facts of reading and writing.
void Add(orvo::InterchangeReport& report, orvo::InterchangeReport&& other) {
    std::ranges::move(other.facts, std::back_inserter(report.facts));
    for (std::size_t i = 0; i < report.counts.size(); ++i) {
        report.counts[i] += other.counts[i];
    }
    for (const auto& [what, count] : other.lostByNature) {
        report.lostByNature[what] += count;
    }
}

/// "song media" beside "song.orvo".
fs::path MediaFolderBeside(const Output& out) {
    const fs::path name = out.IsStream() ? fs::path() : fs::path(out.Name());
    return name.empty() ? name : name.parent_path() / (name.stem().string() + " media");
}

orvo::ExportOptions OptionsOf(const InterchangeRule& rule) {
    return {.conventions = rule.conventions,
            .embedMedia = rule.embedMedia,
            .frameRate = rule.frameRate,
            .dropFrame = rule.dropFrame,
            .strict = rule.strict};
}

orvo::ExportResult Export(const orvo::Session& session, orvo::InterchangeKind kind,
                          const fs::path& target, orvo::ExportOptions options,
                          const Progress::Phase& phase) {
    const WithoutSignals withoutSignals;
    options.progress = ShowOrCancel(phase);
    return orvo::ExportSession(session, kind, target, options);
}

ExitCode Copy(const fs::path& file, const Output& out) {
    return out.Save([&](const Output::Sink& sink) {
        std::ifstream source(file, std::ios::binary);
        std::vector<char> block(1 << 20);
        while (source) {
            source.read(block.data(), static_cast<std::streamsize>(block.size()));
            sink({block.data(), static_cast<std::size_t>(source.gcount())});
        }
    });
}

/// A stream gets the one file that was written into a temporary folder.
ExitCode SaveToStream(const orvo::ExportResult& result, const Output& out) {
    if (result.files.size() != 1) {
        cli::Complain({.subject = out.Name(),
                       .what = "was not written, because the result is several files",
                       .advice = "name a file"});
        return ExitCode::Failure;
    }
    return Copy(result.files.front(), out);
}

}  // namespace

std::optional<ReadInput> ReadInterchange(const Input& in, orvo::InterchangeKind kind,
                                         const InterchangeRule& rule, const Output& out,
                                         Progress& progress, orvo::InterchangeReport& report) {
    const SessionFile file(in.name, in.stream);
    if (const auto& problem = file.EarlyProblem()) {
        cli::Complain(ToMessage(file.Name(), *problem));
        return std::nullopt;
    }
    const Progress::Phase reading = progress.Begin(kReading);
    const WithoutSignals withoutSignals;
    orvo::ImportResult result = orvo::ImportSession(file.Path(), kind,
                                                    {.conventions = rule.conventions,
                                                     .mediaFolder = MediaFolderBeside(out),
                                                     .progress = ShowOrCancel(reading)});
    Complain(result.messages, file.Path(), in.Subject());
    Add(report, std::move(result.report));
    if (!result) {
        return std::nullopt;
    }
    return ReadInput{std::move(result.session),
                     static_cast<kelcore::uint64>(SizeOrOne(file.Path()))};
}

ExitCode SaveInterchange(const orvo::Session& session, orvo::InterchangeKind kind,
                         const InterchangeRule& rule, const Output& out, Progress& progress,
                         orvo::InterchangeReport& report) {
    const Progress::Phase writing = progress.Begin(kWriting, out.Name());
    std::optional<TemporaryFolder> folder;
    if (out.IsStream()) {
        folder.emplace();
    }
    const fs::path target = folder ? fs::path(folder->Path()) / "out" : fs::path(out.Name());
    orvo::ExportResult result = Export(session, kind, target, OptionsOf(rule), writing);
    Complain(result.messages, target, out.Name());
    Add(report, std::move(result.report));
    if (!result) {
        return ExitCode::Failure;
    }
    return folder ? SaveToStream(result, out) : ExitCode::Good;
}

}  // namespace cli
