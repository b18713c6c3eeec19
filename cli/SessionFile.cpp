#include "cli/SessionFile.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/kelcore/File.h"
#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"
#include "toolkit/FileContent.h"

namespace cli {
namespace {

/// For writing, and closed at the end.
using OpenFile = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// What the stream brings goes into the file.
/// @throws std::runtime_error if the file does not take it
std::optional<toolkit::Problem> Copy(const Stream& stream, const StandInFile& file) {
    OpenFile target(std::fopen(file.Path().c_str(), "wbe"), std::fclose);
    if (target == nullptr) {
        file.FailToWrite(errno);
    }
    auto problem = ReadBlocks(stream, [&](std::string_view block) {
        if (std::fwrite(block.data(), 1, block.size(), target.get()) != block.size()) {
            file.FailToWrite(errno);
        }
    });
    if (std::fclose(target.release()) != 0) {
        file.FailToWrite(errno);
    }
    return problem;
}

/// Whether the name says that it is a folder. The plug-in passes over that, as over all of a path
/// that names nothing.
bool IsNamedAsFolder(const std::string& name) {
    return name.ends_with('/') || name.ends_with("/.");
}

}  // namespace

SessionFile::SessionFile(const std::string& name) : name_(name) {
    if (const auto stream = FindStream(name, Direction::In)) {
        Spool(*stream);
    } else if (IsNamedAsFolder(name)) {
        problem_ = toolkit::FindProblem(name);
    }
    if (!problem_ && !spooled_) {
        path_ = name;
        fullPath_ = FullPathOf(name);
    }
}

void SessionFile::Spool(const Stream& stream) {
    name_ = stream.name;
    try {
        auto file = std::make_shared<const StandInFile>(FullPathOfStreams());
        problem_ = Copy(stream, *file);
        if (!problem_) {
            path_ = file->Path();
            fullPath_ = file->PluginPath();
            spooled_ = std::move(file);
        }
    } catch (const std::runtime_error& failure) {
        problem_ = toolkit::Problem{{}, "cannot be read", failure.what()};
    }
}

namespace {

/// To the system, what ".." leads to depends on links in front of it; for the paths of media that
/// count from the session, the plug-in goes by the text alone.
std::filesystem::path WithoutStepsBack(const std::filesystem::path& name) {
    if (std::ranges::find(name, "..") == name.end()) {
        return name;
    }
    std::error_code error;
    const std::filesystem::path folder =
        std::filesystem::weakly_canonical(name.parent_path(), error);
    return error ? name : folder / name.filename();
}

}  // namespace

std::u16string FullPathOf(const std::string& name) {
    return kelcore::File(kelcore::PathFromBytes(WithoutStepsBack(name).string())).FullPath();
}

std::u16string FullPathOfStreams() {
    return FullPathOf("stream.orvo");
}

namespace {

constexpr std::string_view kRefused = "refused: ";

/// What the plug-in logged of a document, "XML ERROR: (line: 2, col: 7) [ /song.orvo] the text".
Message FromLog(const std::string& subject, const std::string& logged) {
    unsigned long long line = 0;
    unsigned long long column = 0;
    int end = 0;
    if (std::sscanf(logged.c_str(), "XML %*[A-Z ]: (line: %llu, col: %llu) %n", &line, &column,
                    &end) != 2 ||
        end == 0) {
        return {.subject = subject, .what = logged};
    }
    std::string text = logged.substr(static_cast<std::size_t>(end));
    const std::size_t file = text.starts_with('[') ? text.find("] ") : std::string::npos;
    if (file != std::string::npos) {
        text.erase(0, file + 2);
    }
    return {.subject = subject, .place = {line, column}, .what = std::move(text)};
}

/// The one thing in a well-formed session that a host cannot take.
std::vector<Message> TracksWithoutId(const SessionFile& file, const toolkit::DocumentScan& scan) {
    std::vector<Message> messages;
    for (const toolkit::NotCarried& track : scan.endTheRead) {
        messages.push_back({.subject = file.Name(),
                            .place = track.place,
                            .what = track.what,
                            .advice = "give it the attribute id with a number of its own"});
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
