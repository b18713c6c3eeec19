#include "cli/SessionFile.h"

#include <stdexcept>
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

std::vector<Message> ExplainRefusal(const SessionFile& file,
                                    const std::vector<std::u16string>& parserMessages) {
    const toolkit::DocumentScan scan = toolkit::ScanDocument(file.Path(), 0);
    if (scan.problem) {
        return {ToMessage(file.Name(), *scan.problem)};
    }
    std::vector<Message> messages;
    for (const std::u16string& text : parserMessages) {
        messages.push_back({.subject = file.Name(), .what = kelcore::UTF16to8(text)});
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
