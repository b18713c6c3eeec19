#include "cli/files/JsonFile.h"

#include <string_view>
#include <utility>

#include <orvo/Json.h>
#include "cli/files/SaveSession.h"
#include "cli/terminal/Messages.h"
#include "toolkit/FileContent.h"
#include "toolkit/FileKind.h"
#include "toolkit/MediaPaths.h"

namespace cli {
namespace {

/// Reports why there is no session.
std::nullopt_t Refuse(const Message& message) {
    Complain(message);
    return std::nullopt;
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

}  // namespace

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

}  // namespace cli
