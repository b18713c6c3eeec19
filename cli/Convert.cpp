#include <fmt/format.h>

#include <cstdio>
#include <filesystem>
#include <future>
#include <map>
#include <optional>
#include <stop_token>
#include <string>

#include "cli/Messages.h"
#include "cli/ProgressBar.h"
#include "cli/SaveSession.h"
#include "cli/SessionFile.h"
#include "cli/StandardStreams.h"
#include "cli/Verb.h"
#include "platform/kelcore/File.h"
#include "platform/kelcore/Paths.h"
#include "reference_host/Sessions.h"
#include "reference_host/json/SessionJson.h"
#include "toolkit/FileContent.h"
#include "toolkit/MediaPaths.h"

// orvo convert IN OUT [--from KIND] [--to KIND]

namespace cli {
namespace {

using refhost::model::Session;

enum class Kind { Orvo, Json };

const std::map<std::string, Kind> kKinds = {{"orvo", Kind::Orvo}, {"json", Kind::Json}};

struct Options {
    std::string in;
    std::string out;
    std::string from;  // as written; empty: as its name says
    std::string to;
    bool lossy = false;
};

// The command line

std::optional<Kind> KindByExtension(const std::string& name) {
    const std::string extension = std::filesystem::path(name).extension().string();
    const auto kind = extension.empty() ? kKinds.end() : kKinds.find(extension.substr(1));
    return kind != kKinds.end() ? std::optional(kind->second) : std::nullopt;
}

/// As CLI11 wants a check: empty if the text is a kind, else what is wrong with it.
std::string CheckKind(const std::string& text) {
    return kKinds.contains(text) ? "" : "\"" + text + "\" is no kind; say orvo or json";
}

Kind ResolveKind(const std::string& stated, const std::string& name, const char* option) {
    if (!stated.empty()) {
        return kKinds.at(stated);
    }
    if (const auto kind = KindByExtension(name)) {
        return *kind;
    }
    const std::string what = name == kStream ? "the kind of a standard stream is not known"
                                             : "\"" + name + "\" does not end in .orvo or .json";
    throw CLI::ValidationError(what + "; say " + option + " orvo or " + option + " json");
}

/// From where relative paths count in a file of that name. A stream is in the working directory.
std::u16string LocationOf(const std::string& name) {
    return FullPathOf(name == kStream ? "stream" : name);
}

// Reading

/// Says why there is no session.
std::nullopt_t Refuse(const Message& message) {
    Complain(message);
    return std::nullopt;
}

/// Names what would be lost, or why that cannot be said. True if nothing would.
bool CarriesEverything(const SessionFile& file, const toolkit::DocumentScan& scan) {
    if (scan.problem) {
        Complain(ToMessage(file.Name(), *scan.problem));
        return false;
    }
    for (const toolkit::NotCarried& loss : scan.notCarried) {
        Complain({.subject = file.Name(),
                  .place = loss.place,
                  .what = "cannot be carried over",
                  .advice = loss.what});
    }
    if (scan.notCarriedCount > scan.notCarried.size()) {
        Complain({.subject = file.Name(),
                  .what = fmt::format("and {} more that cannot be carried over",
                                      scan.notCarriedCount - scan.notCarried.size())});
    }
    return scan.notCarriedCount == 0;
}

/// A scan beside the plug-in's read of the same file, so that both together take the time of one.
/// It ends soon after the read if that fails: what the plug-in refuses is not parsed to its end.
class ScanBesideRead {
public:
    ScanBesideRead(const std::string& path, const toolkit::Conversion& conversion)
        : path_(path),
          identity_(toolkit::IdentityOf(path)),
          scan_(std::async(toolkit::ScanDocument, path, conversion, toolkit::kNotCarriedLimit,
                           stop_.get_token())) {}
    ~ScanBesideRead() { stop_.request_stop(); }
    ScanBesideRead(const ScanBesideRead&) = delete;
    ScanBesideRead& operator=(const ScanBesideRead&) = delete;

    /// Waits for its end; to be called once, after the read. A file that is another one by now may
    /// have been so to one of the two already, which is a problem.
    toolkit::DocumentScan Result() {
        toolkit::DocumentScan scan = scan_.get();
        if (!scan.problem && toolkit::IdentityOf(path_) != identity_) {
            scan.problem = {{}, "was changed while it was read", "try again"};
        }
        return scan;
    }

private:
    std::string path_;
    std::optional<toolkit::FileIdentity> identity_;
    std::stop_source stop_;
    std::future<toolkit::DocumentScan> scan_;  // waits in its destructor
};

toolkit::Conversion ConversionOf(const SessionFile& file, const Options& options, Kind to) {
    return {.target = to == Kind::Json ? toolkit::Target::Json : toolkit::Target::SessionFile,
            .from = file.FullPath(),
            .to = LocationOf(options.out)};
}

std::optional<Session> ReadOrvo(refhost::Plugin& plugin, const Options& options, Kind to) {
    const SessionFile file(options.in);
    ProgressBar bar("reading " + file.Name());
    refhost::ReadOptions reading;
    reading.progress = [&](const refhost::Progress& progress) {
        bar.Update(progress.done, progress.total);
    };
    std::optional<ScanBesideRead> scan;
    scan.emplace(file.Path(), ConversionOf(file, options, to));
    refhost::ReadResult read = refhost::ReadSession(plugin, file.FullPath(), reading);
    if (read.result != tses::SessionResult::Ok) {
        scan.reset();
        for (const Message& message : ExplainRefusal(file, read.messages)) {
            Complain(message);
        }
        return std::nullopt;
    }
    if (!CarriesEverything(file, scan->Result()) && !options.lossy) {
        return Refuse({.subject = file.Name(),
                       .what = "not converted",
                       .advice = "nothing was written, because of what is named above; --lossy "
                                 "converts all the same"});
    }
    return std::move(read.session);
}

toolkit::Place PlaceOf(const refhost::JsonError& failure) {
    const auto& place = failure.Place();
    return place ? toolkit::Place{place->line, place->column} : toolkit::Place{};
}

std::optional<Session> ReadJson(const std::string& name) {
    const bool stream = name == kStream;
    const std::string subject = stream ? "standard input" : name;
    const auto content = stream ? ReadStandardInput() : toolkit::ReadFileContent(name);
    if (const auto* const problem = std::get_if<toolkit::Problem>(&content)) {
        return Refuse(ToMessage(subject, *problem));
    }
    try {
        Session session = refhost::FromJson(std::get<std::string>(content));
        if (const auto problem = toolkit::ResolveMediaPaths(session, LocationOf(name))) {
            return Refuse(ToMessage(subject, *problem));
        }
        return session;
    } catch (const refhost::JsonError& failure) {
        return Refuse({.subject = subject, .place = PlaceOf(failure), .what = failure.what()});
    }
}

// Writing

std::vector<std::string> SaveText(const std::string& text, const std::string& path) {
    kelcore::File file(kelcore::PathFromBytes(path));
    try {
        file.Create();
        kelcore::OPlatformByteStream stream(file);
        stream.WriteBlock(text.data(), text.size());
        stream.Close();
        return {};
    } catch (const kelcore::file_exception& failure) {
        return {failure.MessageFor(file.FullPath())};
    }
}

ExitCode WriteJson(const Session& session, const std::string& name) {
    const std::string text = refhost::ToJson(session);
    if (name == kStream) {
        return WriteToStream(text);
    }
    const auto reasons = SaveText(text, name);
    return reasons.empty() ? ExitCode::Good : FailToSave(name, reasons);
}

ExitCode RunConvert(const Options& options, Kind from, Kind to) {
    refhost::UseFeatureDefaults();
    std::optional<refhost::Plugin> plugin;
    if (from == Kind::Orvo || to == Kind::Orvo) {
        plugin.emplace();
    }
    std::optional<Session> session =
        from == Kind::Orvo ? ReadOrvo(*plugin, options, to) : ReadJson(options.in);
    if (!session) {
        return ExitCode::Failure;
    }
    return to == Kind::Orvo ? SaveSession(*plugin, std::move(*session), options.out, Losses::Told)
                            : WriteJson(*session, options.out);
}

}  // namespace

void AddConvert(CLI::App& tool, Action& chosen) {
    auto options = std::make_shared<Options>();
    CLI::App* const verb = tool.add_subcommand(
        "convert", "Turn a session file into another kind, or into a fresh one.");
    verb->add_option("IN", options->in, "what to read; - for standard input")->required();
    verb->add_option("OUT", options->out, "what to write; - for standard output")
        ->required()
        ->check(FileName());
    for (const auto& [name, kind] :
         {std::pair("--from", &options->from), std::pair("--to", &options->to)}) {
        verb->add_option(name, *kind, "its kind, orvo or json, if its name does not tell")
            ->type_name("KIND")
            ->check(CheckKind, "");
    }
    verb->add_flag("--lossy", options->lossy,
                   "convert also what cannot be carried over whole; what is lost is named");
    verb->footer(
        "Examples:\n"
        "  orvo convert song.orvo song.json\n"
        "  orvo convert song.json song.orvo\n"
        "  orvo convert --from orvo --to json - - <song.orvo\n\n"
        "A session that holds something that would be lost is refused, and nothing is written.\n"
        "OUT is replaced only once the new file is whole. Relative paths in a session from or to "
        "a\n"
        "standard stream count from the working directory.");
    verb->callback([options, &chosen] {
        const Kind from = ResolveKind(options->from, options->in, "--from");
        const Kind to = ResolveKind(options->to, options->out, "--to");
        chosen = [options, from, to] { return RunConvert(*options, from, to); };
    });
}

}  // namespace cli
