#include "cli/Refusals.h"

#include <algorithm>
#include <cstdio>
#include <string_view>
#include <utility>

#include "platform/kelcore/Strings.h"
#include "toolkit/CharacterPlaces.h"
#include "toolkit/FileKind.h"

namespace cli {
namespace {

constexpr std::string_view kRefused = "refused: ";

std::u16string_view WithoutLineEnd(std::u16string_view text) {
    return text.substr(0, text.find_last_not_of(u'\n') + 1);
}

/// Parses a line of the plug-in's log: "XML ERROR: (line: 2, col: 7) [ /song.orvo] the text". The
/// path may contain anything, including brackets.
Message FromLog(const SessionFile& file, std::u16string_view logged) {
    std::string text = kelcore::UTF16to8(WithoutLineEnd(logged));
    unsigned long long line = 0;
    unsigned long long column = 0;
    int end = 0;
    if (std::sscanf(text.c_str(), "XML %*[A-Z ]: (line: %llu, col: %llu) %n", &line, &column,
                    &end) != 2 ||
        end == 0) {
        return {.subject = file.Name(), .what = std::move(text)};
    }
    text.erase(0, static_cast<std::size_t>(end));
    const std::string origin = "[ " + kelcore::UTF16to8(file.FullPath()) + "] ";
    if (text.starts_with(origin)) {
        text.erase(0, origin.size());
    }
    return {.subject = file.Name(), .place = {line, column}, .what = std::move(text)};
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

}  // namespace

std::vector<Message> ExplainRefusal(const SessionFile& file,
                                    const std::vector<std::u16string>& parserMessages) {
    if (file.EarlyProblem()) {
        return {ToMessage(file.Name(), *file.EarlyProblem())};
    }
    if (const auto otherKind = toolkit::RecogniseOtherKind(file.Path())) {
        return {ToMessage(file.Name(), *otherKind)};
    }
    std::vector<Message> messages;
    for (const std::u16string& text : parserMessages) {
        messages.push_back(FromLog(file, text));
    }
    if (std::any_of(messages.begin(), messages.end(), IsOwnRefusal)) {
        return WithPlaces(std::move(messages), file);
    }
    const toolkit::DocumentScan scan = toolkit::ScanDocument(file.Path());
    if (scan.problem) {
        return {ToMessage(file.Name(), *scan.problem)};
    }
    if (!messages.empty()) {
        return WithPlaces(std::move(messages), file);
    }
    messages = TracksWithoutId(file, scan);
    if (messages.empty()) {
        messages.push_back({.subject = file.Name(),
                            .what = "the plug-in refused the file",
                            .advice = "try again; if it happens again, report it with the file"});
    }
    return messages;
}

}  // namespace cli
