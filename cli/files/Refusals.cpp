#include "cli/files/Refusals.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "toolkit/CharacterPlaces.h"
#include "toolkit/FileKind.h"

namespace cli {
namespace {

constexpr std::string_view kRefused = "refused: ";

Message FromLibrary(const SessionFile& file, const orvo::Message& reason) {
    return {.subject = file.Name(),
            .place = {reason.line, reason.column},
            .what = reason.what,
            .advice = reason.advice};
}

/// Converts places to the lines and columns that people count.
std::vector<Message> WithPlaces(std::vector<Message> messages, const SessionFile& file) {
    for (Message& message : messages) {
        message.place = toolkit::InCharactersOfFile(file.Path(), message.place);
    }
    return messages;
}

/// Lists the only error in a well-formed session that ends the read.
std::vector<Message> TracksWithoutId(const SessionFile& file, const toolkit::DocumentScan& scan) {
    std::vector<Message> messages;
    for (const toolkit::NotCarried& track : scan.endTheRead) {
        messages.push_back({.subject = file.Name(),
                            .place = track.place,
                            .what = track.what,
                            .advice = "give it an id attribute with a unique number"});
    }
    return messages;
}

bool IsOwnRefusal(const Message& message) {
    return message.what.starts_with(kRefused);
}

bool HasPlace(const orvo::Message& reason) {
    return reason.line != 0;
}

}  // namespace

std::vector<Message> ExplainRefusal(const SessionFile& file,
                                    const std::vector<orvo::Message>& reasons) {
    if (file.EarlyProblem()) {
        return {ToMessage(file.Name(), *file.EarlyProblem())};
    }
    if (const auto otherKind = toolkit::RecogniseOtherKind(file.Path())) {
        return {ToMessage(file.Name(), *otherKind)};
    }
    std::vector<Message> messages;
    for (const orvo::Message& reason : reasons) {
        messages.push_back(FromLibrary(file, reason));
    }
    if (std::ranges::any_of(messages, IsOwnRefusal)) {
        return WithPlaces(std::move(messages), file);
    }
    const toolkit::DocumentScan scan = toolkit::ScanDocument(file.Path());
    if (scan.problem) {
        return {ToMessage(file.Name(), *scan.problem)};
    }
    if (std::ranges::any_of(reasons, HasPlace)) {
        return WithPlaces(std::move(messages), file);
    }
    std::vector<Message> tracks = TracksWithoutId(file, scan);
    return tracks.empty() ? messages : tracks;
}

}  // namespace cli
