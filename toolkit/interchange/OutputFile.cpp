#include "toolkit/interchange/OutputFile.h"

#include <system_error>

#include "platform/kelcore/Paths.h"
#include "toolkit/interchange/Failure.h"

namespace toolkit::interchange {
namespace {

constexpr std::size_t kBlockSize = 1 << 18;

[[noreturn]] void Fail(const std::filesystem::path& path, const kelcore::file_exception& failure) {
    throw Failure(
        {.file = path.string(), .what = failure.MessageFor(kelcore::PathFromBytes(path.string()))});
}

kelcore::File Created(const std::filesystem::path& path) {
    kelcore::File file(kelcore::PathFromBytes(path.string()));
    try {
        file.Create();
    } catch (const kelcore::file_exception& failure) {
        Fail(path, failure);
    }
    return file;
}

}  // namespace

OutputFile::OutputFile(const std::filesystem::path& path)
    : path_(path), file_(Created(path)), stream_(file_) {
    block_.reserve(kBlockSize);
}

void OutputFile::Write(std::string_view text) {
    block_.append(text);
    if (block_.size() >= kBlockSize) {
        Flush();
    }
}

void OutputFile::Close() {
    Flush();
    try {
        stream_.Close();
    } catch (const kelcore::file_exception& failure) {
        Fail(path_, failure);
    }
}

void OutputFile::Flush() {
    try {
        stream_.WriteBlock(block_.data(), block_.size());
    } catch (const kelcore::file_exception& failure) {
        Fail(path_, failure);
    }
    block_.clear();
}

Outputs::~Outputs() {
    files_.clear();
    for (auto folder = madeFolders_.rbegin(); folder != madeFolders_.rend(); ++folder) {
        std::error_code ignored;
        std::filesystem::remove(*folder, ignored);
    }
}

OutputFile& Outputs::Add(const std::filesystem::path& path) {
    return *files_.emplace_back(std::make_unique<OutputFile>(path));
}

void Outputs::AddFolder(const std::filesystem::path& path) {
    std::error_code error;
    if (std::filesystem::create_directory(path, error)) {
        madeFolders_.push_back(path);
        return;
    }
    if (error || !std::filesystem::is_directory(path, error)) {
        throw Failure({.file = path.string(),
                       .what = "the folder cannot be made",
                       .advice = "check that the folder around it exists and may be written"});
    }
    if (!std::filesystem::is_empty(path, error) || error) {
        throw Failure({.file = path.string(),
                       .what = "the folder is not empty",
                       .advice = "choose another name; nothing in a folder is replaced"});
    }
}

std::vector<std::filesystem::path> Outputs::Commit() {
    std::vector<std::filesystem::path> paths;
    for (const auto& file : files_) {
        file->Close();
        paths.push_back(file->Path());
    }
    madeFolders_.clear();
    return paths;
}

}  // namespace toolkit::interchange
