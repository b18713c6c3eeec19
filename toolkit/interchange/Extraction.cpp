#include "toolkit/interchange/Extraction.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <system_error>

#include "toolkit/collect/PortableNames.h"
#include "toolkit/interchange/Failure.h"

namespace toolkit::interchange {
namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using NewFile = std::unique_ptr<std::FILE, CloseFile>;

[[noreturn]] void Fail(const std::filesystem::path& path) {
    throw Failure({.file = path.string(),
                   .what = fmt::format("cannot be written: {}", std::strerror(errno)),
                   .advice = "nothing was read; check the folder of the media"});
}

/// Creates a file under the name, or under one like it that is free.
NewFile Create(const std::filesystem::path& folder, const std::string& name,
               std::filesystem::path& path) {
    constexpr int kMostTries = 10'000;
    UniqueNames names;
    for (int tries = 0; tries < kMostTries; ++tries) {
        path = folder / names.Take(name);
        // "x" never replaces a file.
        if (std::FILE* const file = std::fopen(path.c_str(), "wbx")) {
            return NewFile(file);
        }
        if (errno != EEXIST) {
            break;
        }
    }
    Fail(path);
}

}  // namespace

Extraction::~Extraction() {
    if (isKept_) {
        return;
    }
    std::error_code ignored;
    for (const std::filesystem::path& path : written_) {
        std::filesystem::remove(path, ignored);
    }
    if (madeFolder_) {
        std::filesystem::remove(job_.options.mediaFolder, ignored);
    }
}

std::string Extraction::Extract(const std::string& entry) {
    constexpr double kShareBefore = 0.9;
    MakeFolder();
    std::filesystem::path path;
    const std::string name = PortableName(std::filesystem::path(entry).filename().string());
    const NewFile file = Create(job_.options.mediaFolder, name, path);
    written_.push_back(path);
    zip_.Read(entry, [&](std::string_view block) {
        job_.Progress(kShareBefore);
        if (std::fwrite(block.data(), 1, block.size(), file.get()) != block.size()) {
            Fail(path);
        }
    });
    if (std::fflush(file.get()) != 0) {
        Fail(path);
    }
    return std::filesystem::absolute(path).lexically_normal().string();
}

void Extraction::MakeFolder() {
    std::error_code error;
    if (std::filesystem::create_directory(job_.options.mediaFolder, error)) {
        madeFolder_ = true;
    } else if (error) {
        throw Failure({.file = job_.options.mediaFolder.string(),
                       .what = "the folder cannot be made: " + error.message()});
    }
}

}  // namespace toolkit::interchange
