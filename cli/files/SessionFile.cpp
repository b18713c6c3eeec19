#include "cli/files/SessionFile.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "platform/kelcore/File.h"
#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"
#include "toolkit/FileContent.h"
#include "toolkit/FileNames.h"

namespace cli {
namespace {

/// Open for writing; closes itself.
using OpenFile = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// Copies the stream to the file.
/// @throws std::runtime_error  if writing the file fails
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

}  // namespace

SessionFile::SessionFile(const std::string& name)
    : SessionFile(name, FindStream(name, Direction::In)) {}

SessionFile::SessionFile(const std::string& name, const std::optional<Stream>& stream)
    : name_(name) {
    if (stream) {
        Spool(*stream, FullPathOfStreams());
    } else if (toolkit::IsNamedAsFolder(name)) {
        problem_ = toolkit::FindProblem(name);
    }
    if (!problem_ && !spooled_) {
        path_ = name;
        fullPath_ = FullPathOf(name);
    }
}

std::filesystem::path SessionFile::FullName() const {
    return kelcore::PathToBytes(fullPath_);
}

SessionFile SessionFile::At(const std::string& name, const std::string& place) {
    SessionFile file;
    file.name_ = name;
    file.problem_ = toolkit::FindProblem(name);
    if (!file.problem_) {
        const OpenFile source(std::fopen(name.c_str(), "rbe"), std::fclose);
        if (source == nullptr) {
            file.problem_ =
                toolkit::Problem{{}, "cannot be read", std::generic_category().message(errno)};
        } else {
            file.Spool({::fileno(source.get()), name}, FullPathOf(place));
        }
    }
    return file;
}

void SessionFile::Spool(const Stream& stream, const std::u16string& place) {
    name_ = stream.name;
    try {
        auto file = std::make_shared<const StandInFile>(place);
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

/// The system resolves ".." after following links; for media paths relative to the session, the
/// plug-in resolves it by name.
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

Message ToMessage(const std::string& subject, const toolkit::Problem& problem) {
    return {
        .subject = subject, .place = problem.place, .what = problem.what, .advice = problem.advice};
}

}  // namespace cli
