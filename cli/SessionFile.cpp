#include "cli/SessionFile.h"

#include <algorithm>
#include <regex>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "platform/kelcore/File.h"
#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"

namespace cli {
namespace {

constexpr const char* kStandardInput = "standard input";

std::shared_ptr<const TemporarySession> Spool() {
    const auto content = ReadStandardInput();
    if (const auto* const problem = std::get_if<toolkit::Problem>(&content)) {
        throw std::runtime_error(std::string(kStandardInput) + ": " + problem->what + ": " +
                                 problem->advice);
    }
    auto file = std::make_shared<TemporarySession>();
    file->Write(std::get<std::string>(content));
    return file;
}

}  // namespace

SessionFile::SessionFile(const std::string& name) : name_(name), path_(name) {
    if (name == kStream) {
        spooled_ = Spool();
        name_ = kStandardInput;
        path_ = spooled_->Path();
    }
}

std::u16string SessionFile::FullPath() const {
    return FullPathOf(path_);
}

std::u16string FullPathOf(const std::string& name) {
    return kelcore::File(kelcore::PathFromBytes(name)).FullPath();
}

namespace {

constexpr std::string_view kRefused = "refused: ";

/// What the plug-in logged of a document, "XML ERROR: (line: 2, col: 7) [ /song.orvo] the text".
Message FromLog(const std::string& subject, const std::string& logged) {
    static const std::regex form(R"(XML [A-Z ]+: \(line: (\d+), col: (\d+)\) (?:\[.*?\] )?([^]*))");
    std::smatch parts;
    if (!std::regex_match(logged, parts, form)) {
        return {.subject = subject, .what = logged};
    }
    return {.subject = subject,
            .place = {std::stoull(parts[1]), std::stoull(parts[2])},
            .what = parts[3]};
}

/// The one thing in a well-formed session that a host cannot take.
std::vector<Message> TracksWithoutId(const SessionFile& file, const toolkit::DocumentScan& scan) {
    std::vector<Message> messages;
    for (const toolkit::NotCarried& loss : scan.notCarried) {
        if (loss.what.ends_with("Track> without an id")) {
            messages.push_back({.subject = file.Name(),
                                .place = loss.place,
                                .what = loss.what,
                                .advice = "give it the attribute id with a number of its own"});
        }
    }
    return messages;
}

bool IsOwnRefusal(const Message& message) {
    return message.what.starts_with(kRefused);
}

}  // namespace

std::vector<Message> ExplainRefusal(const SessionFile& file,
                                    const std::vector<std::u16string>& parserMessages) {
    std::vector<Message> messages;
    for (const std::u16string& text : parserMessages) {
        messages.push_back(FromLog(file.Name(), kelcore::UTF16to8(text)));
    }
    // A document that the plug-in takes for an attack is not parsed a second time.
    if (std::any_of(messages.begin(), messages.end(), IsOwnRefusal)) {
        return messages;
    }
    const toolkit::DocumentScan scan = toolkit::ScanDocument(file.Path());
    if (scan.problem) {
        return {ToMessage(file.Name(), *scan.problem)};
    }
    if (messages.empty()) {
        messages = TracksWithoutId(file, scan);
    }
    if (messages.empty()) {
        messages.push_back({.subject = file.Name(),
                            .what = "the plug-in refused the file",
                            .advice = "try again; if it happens again, report it with the file"});
    }
    return messages;
}

Message ToMessage(const std::string& subject, const toolkit::Problem& problem) {
    return {
        .subject = subject, .place = problem.place, .what = problem.what, .advice = problem.advice};
}

}  // namespace cli
