#include <orvo/Collect.h>

#include <sys/stat.h>

#include <cerrno>

#include <algorithm>
#include <cstdint>
#include <system_error>
#include <unordered_set>
#include <utility>
#include <variant>

#include "toolkit/FileContent.h"
#include "toolkit/media/Manifest.h"
#include "toolkit/media/Sha256.h"

namespace orvo {
namespace {

namespace fs = std::filesystem;

std::uint64_t SizeOf(const fs::path& file) {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(file, error);
    return error ? 0 : size;
}

VerifiedFile Verify(const fs::path& folder, const std::string& name, const std::string& digest) {
    const fs::path file = folder / name;
    struct stat status {};
    if (::lstat(file.c_str(), &status) != 0 && (errno == ENOENT || errno == ENOTDIR)) {
        return {.name = name, .state = VerifiedState::Missing};
    }
    const auto found = toolkit::DigestOfFile(file.string());
    if (const auto* const problem = std::get_if<toolkit::Problem>(&found)) {
        return {.name = name, .state = VerifiedState::Unreadable, .why = problem->what};
    }
    const bool isSame = std::get<std::string>(found) == digest;
    return {.name = name, .state = isSame ? VerifiedState::Good : VerifiedState::Changed};
}

/// Adds the files that the manifest does not list, sorted by name.
void AddUnlisted(const fs::path& folder, const toolkit::Manifest& manifest, VerifyResult& result) {
    std::unordered_set<std::string> listed = {kManifestName};
    for (const auto& [name, digest] : manifest) {
        listed.insert(name);
    }
    std::vector<std::string> unlisted;
    std::error_code error;
    fs::recursive_directory_iterator entry(folder, error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
        const std::string name = entry->path().lexically_relative(folder).string();
        std::error_code ignored;
        if (!listed.contains(name) && !entry->is_directory(ignored)) {
            unlisted.push_back(name);
        }
    }
    std::sort(unlisted.begin(), unlisted.end());
    for (std::string& name : unlisted) {
        result.files.push_back({.name = std::move(name), .state = VerifiedState::Unlisted});
    }
}

/// Says of a folder without a manifest what it lacks, and of a manifest why it cannot be read.
Message WhyUnread(const fs::path& folder, const fs::path& list, const toolkit::Problem& problem) {
    std::error_code error;
    if (fs::symlink_status(list, error).type() != fs::file_type::not_found) {
        return {.file = list.string(), .what = problem.what, .advice = problem.advice};
    }
    return {.file = folder.string(),
            .what = fs::is_directory(folder, error)
                        ? std::string("is no collection: it has no ") + kManifestName
                        : "no such folder",
            .advice = "name a folder with a collected session"};
}

}  // namespace

VerifyResult VerifyCollection(const fs::path& folder, const ProgressFunction& progress) {
    VerifyResult result;
    const fs::path list = folder / kManifestName;
    const auto content = toolkit::ReadFileContent(list.string());
    if (const auto* const problem = std::get_if<toolkit::Problem>(&content)) {
        result.messages.push_back(WhyUnread(folder, list, *problem));
        return result;
    }
    const auto& text = std::get<std::string>(content);
    const auto manifest = toolkit::ParseManifest(text);
    if (!manifest || !text.ends_with('\n')) {
        result.messages.push_back({.file = list.string(),
                                   .what = "is not a complete list of SHA-256 sums",
                                   .advice = "collect the session again"});
        return result;
    }
    std::uint64_t all = 1;
    for (const auto& [name, digest] : *manifest) {
        all += SizeOf(folder / name);
    }
    std::uint64_t done = 0;
    result.ok = true;
    for (const auto& [name, digest] : *manifest) {
        if (progress && !progress(static_cast<double>(done) / static_cast<double>(all))) {
            result.ok = false;
            result.cancelled = true;
            return result;
        }
        result.files.push_back(Verify(folder, name, digest));
        result.ok = result.ok && result.files.back().state == VerifiedState::Good;
        done += SizeOf(folder / name);
    }
    AddUnlisted(folder, *manifest, result);
    return result;
}

}  // namespace orvo
