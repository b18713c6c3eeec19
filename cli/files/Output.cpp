#include "cli/files/Output.h"

#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "cli/RemovalAtSignal.h"
#include "cli/files/SessionFile.h"
#include "cli/terminal/Messages.h"
#include "platform/kelcore/File.h"
#include "platform/kelcore/Paths.h"

namespace cli {
namespace {

namespace fs = std::filesystem;

std::string RefusalOf(const std::string& name, const std::optional<Stream>& stream) {
    if (stream) {
        const auto problem = FindProblem(*stream, Direction::Out);
        return problem ? stream->name + ": " + problem->what + ": " + problem->advice : "";
    }
    return IsStreamOfAnotherProcess(name)
               ? name + ": is an open file of another process: name the file itself"
               : "";
}

/// The file that a save replaces, after following links. It need not exist.
fs::path BehindLinks(fs::path path) {
    constexpr int kMostLinks = 40;
    std::error_code error;
    for (int links = 0; links < kMostLinks && fs::is_symlink(path, error); ++links) {
        path = path.parent_path() / fs::read_symlink(path, error);
    }
    const fs::path folder = fs::canonical(path.has_parent_path() ? path.parent_path() : ".", error);
    return error ? path : folder / path.filename();
}

/// Replaces a file and removes the temporary one if a signal ends the program.
class Replacement {
public:
    explicit Replacement(kelcore::File& file) {
        const WithoutSignals withoutSignals;
        file.Create();
        stream_.emplace(file);
        removal_.emplace(stream_->TemporaryPath());
    }

    kelcore::OPlatformByteStream& Stream() { return *stream_; }

private:
    std::optional<RemovalAtSignal> removal_;  // outlives the stream
    std::optional<kelcore::OPlatformByteStream> stream_;
};

}  // namespace

Output::Output(const std::string& name) : name_(name), stream_(FindStream(name, Direction::Out)) {
    const std::string refusal = RefusalOf(name, stream_);
    if (!refusal.empty()) {
        throw std::runtime_error(refusal);
    }
}

Output::Output(const std::string& name, const std::string& place) : Output(name) {
    place_ = place;
}

const std::string& Output::Name() const {
    return stream_ ? stream_->name : name_;
}

void Output::RequireOther(const std::string& session) const {
    std::error_code error;
    if (!stream_ &&
        (fs::equivalent(name_, session, error) || BehindLinks(name_) == BehindLinks(session))) {
        throw std::runtime_error(name_ +
                                 ": the session is there, and a file of another kind would "
                                 "replace it: choose another name");
    }
}

std::u16string Output::FullPath() const {
    if (!place_.empty()) {
        return FullPathOf(BehindLinks(place_).string());
    }
    return stream_ ? FullPathOfStreams() : FullPathOf(BehindLinks(name_).string());
}

ExitCode Output::Save(const std::function<void(const Sink&)>& produce) const {
    return stream_ ? SaveToStream(produce) : SaveToFile(produce);
}

ExitCode Output::SaveToFile(const std::function<void(const Sink&)>& produce) const {
    kelcore::File file(kelcore::PathFromBytes(name_));
    try {
        Replacement replacement(file);
        kelcore::OPlatformByteStream& stream = replacement.Stream();
        produce([&](std::string_view block) { stream.WriteBlock(block.data(), block.size()); });
        stream.Close();
    } catch (const kelcore::file_exception& failure) {
        return FailToSave(*this, {failure.MessageFor(file.FullPath())});
    }
    return ExitCode::Good;
}

ExitCode Output::SaveToStream(const std::function<void(const Sink&)>& produce) const {
    try {
        produce([&](std::string_view block) { WriteBlock(*stream_, block); });
    } catch (const StreamError& failure) {
        Complain(
            {.subject = Name(), .what = "cannot be written", .advice = failure.code().message()});
        return ExitCode::Failure;
    }
    return ExitCode::Good;
}

ExitCode FailToSave(const Output& out, const std::vector<std::string>& reasons) {
    for (const std::string& reason : reasons) {
        Complain({.subject = out.Name(), .what = "was not saved", .advice = reason});
    }
    return ExitCode::Failure;
}

}  // namespace cli
