#include "toolkit/media/MediaIndex.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "toolkit/media/FoldedName.h"

namespace toolkit {

namespace fs = std::filesystem;

void MediaIndex::Take(const fs::directory_entry& entry, std::size_t folder,
                      std::vector<fs::path>& below) {
    std::error_code ignored;
    if (entry.is_regular_file(ignored)) {
        std::string name = entry.path().filename().string();
        std::vector<Entry>& named = byFoldedName_[FoldedName(name)];
        named.push_back({folder, std::move(name)});
        ++fileCount_;
    } else if (entry.is_directory(ignored) && !entry.is_symlink(ignored)) {
        below.push_back(entry.path());
    }
}

/// Closes the folder before the caller opens those in it, so that they may nest deeper than a
/// process may have folders open.
std::vector<fs::path> MediaIndex::LookInto(const fs::path& folder, Added& added) {
    std::vector<fs::path> below;
    if (!known_.insert(folder.string()).second) {
        return below;
    }
    const std::size_t number = folders_.size();
    folders_.push_back(folder.string());
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        Take(*entry, number, below);
    }
    if (error) {
        added.unread.push_back(
            {folder.string(), {{}, "this folder cannot be read", error.message()}});
    }
    return below;
}

MediaIndex::Added MediaIndex::Add(const fs::path& folder, const Progress& progress) {
    Added added;
    std::error_code error;
    const fs::path whole = fs::canonical(folder, error);
    if (error) {
        added.unread.push_back(
            {folder.string(), {{}, "this folder cannot be read", error.message()}});
        return added;
    }
    std::vector<fs::path> left = {whole};
    while (!left.empty() && !added.cancelled) {
        const fs::path next = std::move(left.back());
        left.pop_back();
        for (fs::path& below : LookInto(next, added)) {
            left.push_back(std::move(below));
        }
        added.cancelled = progress && !progress(fileCount_);
    }
    added.isRead = std::none_of(added.unread.begin(), added.unread.end(),
                                [&](const UnreadFolder& one) { return one.path == whole; });
    return added;
}

std::vector<std::string> MediaIndex::Find(std::string_view name) const {
    const auto found = byFoldedName_.find(FoldedName(name));
    if (found == byFoldedName_.end()) {
        return {};
    }
    const auto& entries = found->second;
    const auto isExact = [&](const Entry& entry) { return entry.name == name; };
    const bool hasExact = std::any_of(entries.begin(), entries.end(), isExact);
    std::vector<std::string> paths;
    for (const Entry& entry : entries) {
        if (!hasExact || isExact(entry)) {
            paths.push_back((fs::path(folders_[entry.folder]) / entry.name).string());
        }
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

}  // namespace toolkit
