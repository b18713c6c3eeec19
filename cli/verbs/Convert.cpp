#include <future>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <orvo/Json.h>
#include <orvo/Session.h>
#include "cli/RemovalAtSignal.h"
#include "cli/files/Kind.h"
#include "cli/files/LeftToSystem.h"
#include "cli/files/Losses.h"
#include "cli/files/Output.h"
#include "cli/files/PluginCheck.h"
#include "cli/files/ReadProgress.h"
#include "cli/files/Refusals.h"
#include "cli/files/SaveSession.h"
#include "cli/files/SessionFile.h"
#include "cli/terminal/Messages.h"
#include "cli/terminal/ProgressBar.h"
#include "cli/terminal/Stream.h"
#include "cli/verbs/Verb.h"
#include "toolkit/FileContent.h"
#include "toolkit/FileKind.h"
#include "toolkit/MediaPaths.h"

// orvo convert IN OUT [--from KIND] [--to KIND] [--lossy] [--all] [--full]

namespace cli {
namespace {

using orvo::Session;

struct ConvertOptions {
    std::string in;
    std::string out;
    std::string from;  // as typed; if empty, the name decides
    std::string to;
    LossRule rule;
    bool full = false;  // JSON with every key
};

/// IN, and its stream if the name denotes one.
struct Input {
    explicit Input(const std::string& inputName)
        : name(inputName), stream(FindStream(inputName, Direction::In)) {}

    /// The name for messages.
    const std::string& Subject() const { return stream ? stream->name : name; }

    /// A path whose folder is the base of relative paths in the file.
    std::u16string Location() const { return stream ? FullPathOfStreams() : FullPathOf(name); }

    std::string name;
    std::optional<Stream> stream;
};

Kind ResolveKind(const std::string& stated, const std::string& name, const char* option) {
    if (const auto kind = FindKind(stated, name)) {
        return *kind;
    }
    const std::string what = name == kStream ? "the kind of a standard stream is unknown"
                                             : "\"" + name + "\" does not end in .orvo or .json";
    throw CLI::ValidationError(what + "; say " + option + " orvo or " + option + " json");
}

/// The read refuses a file named like a folder with a message of its own.
std::string WithoutSlash(const std::string& name) {
    return name.ends_with('/') && name.size() > 1 ? name.substr(0, name.size() - 1) : name;
}

// Reading

/// Reports why there is no session.
std::nullopt_t Refuse(const Message& message) {
    Complain(message);
    return std::nullopt;
}

/// Reports losses, or why they are unknown, and returns whether to convert.
bool MayConvert(const SessionFile& file, const toolkit::DocumentScan& scan, const LossRule& rule) {
    if (scan.problem) {
        Complain(ToMessage(file.Name(), *scan.problem));
        RefuseConversion(file.Name());
        return false;
    }
    NameLosses(file.Name(), scan.notCarried, scan.notCarriedCount);
    if (scan.notCarriedCount != 0 && !rule.lossy) {
        RefuseLosses(file.Name());
        return false;
    }
    return true;
}

/// Scans the file in parallel with the plug-in's read, so that both take as long as one. If the
/// read fails, the scan stops soon after: the plug-in refused the file anyway.
class ScanBesideRead {
public:
    ScanBesideRead(const std::string& path, const toolkit::Conversion& conversion,
                   std::size_t limit)
        : path_(path), identity_(toolkit::IdentityOf(path)), scan_(Start(conversion, limit)) {}
    ~ScanBesideRead() { stop_.request_stop(); }
    ScanBesideRead(const ScanBesideRead&) = delete;
    ScanBesideRead& operator=(const ScanBesideRead&) = delete;

    /// Waits for the scan. Call it once, after the read. If the file has been replaced by now, the
    /// two may have seen different files, which is a problem.
    toolkit::DocumentScan Result() {
        toolkit::DocumentScan scan = scan_.get();
        if (!scan.problem && toolkit::IdentityOf(path_) != identity_) {
            scan.problem = {{}, "was changed while it was read", "try again"};
        }
        return scan;
    }

private:
    std::future<toolkit::DocumentScan> Start(const toolkit::Conversion& conversion,
                                             std::size_t limit) const {
        const WithoutSignals inherited;
        return std::async(toolkit::ScanFileBesideRead, path_, conversion, limit, stop_.get_token());
    }

    std::string path_;
    std::optional<toolkit::FileIdentity> identity_;
    std::stop_source stop_;
    std::future<toolkit::DocumentScan> scan_;  // waits in its destructor
};

/// A session and the number of bytes that it was read from.
struct ReadInput {
    Session session;
    kelcore::uint64 size = 0;
};

std::optional<ReadInput> ReadOrvo(const SessionFile& file, const toolkit::Conversion& conversion,
                                  const LossRule& rule, Progress& progress) {
    const Progress::Phase reading = progress.Begin(kReading);
    reading.Watch(ShareRead(file.Path()));
    std::optional<ScanBesideRead> scan(std::in_place, file.Path(), conversion, rule.Limit());
    orvo::ReadResult read = orvo::ReadSession(file.FullName());
    if (!read) {
        scan.reset();
        for (const Message& message : ExplainRefusal(file, read.messages)) {
            Complain(message);
        }
        return std::nullopt;
    }
    if (!MayConvert(file, scan->Result(), rule)) {
        return std::nullopt;
    }
    return ReadInput{std::move(read.session), static_cast<kelcore::uint64>(SizeOrOne(file.Path()))};
}

std::optional<toolkit::Problem> FindProblemOfStream(const std::optional<Stream>& stream) {
    return stream ? FindProblem(*stream, Direction::In) : std::nullopt;
}

/// Says what the file is instead of JSON, if that can be recognised, or where the JSON is
/// malformed.
Message Explain(const orvo::Message& reason, const std::string& subject, std::string_view begin) {
    const auto otherKind =
        reason.line != 0 ? toolkit::RecogniseOtherKindThanJson(begin) : std::nullopt;
    return otherKind ? ToMessage(subject, *otherKind)
                     : Message{.subject = subject,
                               .place = {reason.line, reason.column},
                               .what = reason.what};
}

/// Parses the session in the blocks. Reports a failed read rather than the malformed JSON that
/// results from it.
std::optional<ReadInput> ReadJsonBlocks(toolkit::FileBlocks& blocks, const std::string& subject,
                                        const Progress::Phase& reading) {
    ReadInput input;
    std::string begin;
    const auto next = [&] {
        constexpr std::size_t kTelling = 64;
        const std::string_view block = blocks.Next();
        begin += block.substr(0, kTelling - begin.size());
        return block;
    };
    orvo::ReadResult read = orvo::FromJson(next, [&](kelcore::uint64 bytes) {
        input.size = bytes;
        reading.Update(bytes, blocks.Size());
    });
    if (const auto& problem = blocks.Failure()) {
        return Refuse(ToMessage(subject, *problem));
    }
    if (!read) {
        return Refuse(Explain(read.messages.front(), subject, begin));
    }
    input.session = std::move(read.session);
    return input;
}

std::optional<ReadInput> ReadJson(const Input& in, Progress& progress) {
    const std::string& subject = in.Subject();
    if (const auto problem = FindProblemOfStream(in.stream)) {
        return Refuse(ToMessage(subject, *problem));
    }
    const Progress::Phase reading = progress.Begin(kReading);
    toolkit::FileBlocks blocks =
        in.stream ? toolkit::FileBlocks(in.stream->descriptor) : toolkit::FileBlocks(in.name);
    std::optional<ReadInput> input = ReadJsonBlocks(blocks, subject, reading);
    if (!input) {
        return std::nullopt;
    }
    if (const auto problem = toolkit::ResolveMediaPaths(input->session, in.Location())) {
        return Refuse(ToMessage(subject, *problem));
    }
    return input;
}

std::optional<ReadInput> ReadOrvo(const Input& in, Kind to, const Output& out, const LossRule& rule,
                                  Progress& progress) {
    const SessionFile file(in.name, in.stream);
    const toolkit::Conversion conversion = {
        .target = to == Kind::Json ? toolkit::Target::Json : toolkit::Target::SessionFile,
        .from = file.FullPath(),
        .to = out.FullPath()};
    return ReadOrvo(file, conversion, rule, progress);
}

// The whole

std::vector<ProgressPhase> PhasesOf(Kind from, Kind to) {
    constexpr double kWeightOfJson = 1.5;
    std::vector<ProgressPhase> phases = {{kReading, from == Kind::Json ? kWeightOfJson : 1}};
    const std::vector<ProgressPhase> saving = PhasesOfSaving(to);
    phases.insert(phases.end(), saving.begin(), saving.end());
    return phases;
}

/// An estimate for the progress bar: with every key, the JSON of a large session is about twice as
/// long as its file.
kelcore::uint64 ExpectedSizeOfJson(const ReadInput& input, Kind from, bool isFull) {
    return from == Kind::Orvo && isFull ? 2 * input.size : input.size;
}

ExitCode RunConvert(const ConvertOptions& options, Kind from, Kind to) {
    const Output out(options.out);
    const Input in(options.in);
    Progress progress(in.Subject(), PhasesOf(from, to));
    if (from == Kind::Orvo || to == Kind::Orvo) {
        RequirePlugin();
    }
    const std::optional<ReadInput>& input =
        LeaveToSystem(from == Kind::Json ? ReadJson(in, progress)
                                         : ReadOrvo(in, to, out, options.rule, progress));
    if (!input) {
        return ExitCode::Failure;
    }
    return to == Kind::Orvo ? SaveSession(input->session, out, in.Subject(), options.rule, progress)
                            : SaveJson(input->session, {.full = options.full}, out, progress,
                                       ExpectedSizeOfJson(*input, from, options.full));
}

}  // namespace

void AddConvert(CLI::App& tool, Action& chosen) {
    auto options = std::make_shared<ConvertOptions>();
    CLI::App* const verb =
        tool.add_subcommand("convert", "Convert a session file to another kind, or rewrite it.");
    verb->add_option("IN", options->in, "the input; - for standard input")
        ->required()
        ->check([](std::string name) { return name.empty() ? FileName()(name) : std::string(); },
                "");
    verb->add_option("OUT", options->out, "the output; - for standard output")
        ->required()
        ->check(FileName());
    AddKindOption(*verb, "--from", options->from,
                  "its kind, orvo or json, if the name does not imply it");
    AddKindOption(*verb, "--to", options->to,
                  "its kind, orvo or json, if the name does not imply it");
    verb->add_flag("--lossy", options->rule.lossy, "convert despite losses, and list them");
    verb->add_flag("--all", options->rule.all, "list all losses, not only the first");
    verb->add_flag("--full", options->full, "write every key of JSON, also those at their default");
    verb->footer(
        "Examples:\n"
        "  orvo convert song.orvo song.json\n"
        "  orvo convert song.json song.orvo\n"
        "  orvo convert --from orvo --to json - - <song.orvo\n"
        "  orvo convert song.orvo >(gzip >song.json.gz) --to json\n\n"
        "If something would be lost, the session is refused and nothing is written.\n"
        "OUT is replaced only when the new file is complete. Names of open descriptors, such as\n"
        "/dev/stdout or /dev/fd/3, are streams. Relative paths in a session from or to a stream\n"
        "count from the working directory.");
    verb->callback([options, &chosen] {
        const Kind from = ResolveKind(options->from, WithoutSlash(options->in), "--from");
        const Kind to = ResolveKind(options->to, options->out, "--to");
        if (options->full && to != Kind::Json) {
            throw CLI::ValidationError(
                "--full is about JSON, and OUT is a session file; leave it out");
        }
        chosen = [options, from, to] { return RunConvert(*options, from, to); };
    });
}

}  // namespace cli
