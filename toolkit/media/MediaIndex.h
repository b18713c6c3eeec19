#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "toolkit/SessionFolder.h"

namespace toolkit {

/// The regular files of folders, by their names.
class MediaIndex {
public:
    /// Called for each folder with the number of files known by then. Returns false to cancel.
    using Progress = std::function<bool(std::size_t files)>;

    struct Added {
        bool isRead = false;  ///< the folder itself
        bool cancelled = false;
        std::vector<UnreadFolder> unread;
    };

    /// Adds the files of a folder and of all folders below it, unless they are known. Includes
    /// links to files but does not follow links to folders. Opens no file.
    Added Add(const std::filesystem::path& folder, const Progress& progress);

    bool HasFolders() const { return !folders_.empty(); }
    std::size_t FileCount() const { return fileCount_; }

    /// The full paths of the files with a name, sorted: those with exactly this name, or else those
    /// whose names fold to the same.
    /// @param name  in the bytes of this system
    std::vector<std::string> Find(std::string_view name) const;

private:
    struct Entry {
        std::size_t folder;
        std::string name;
    };

    void Take(const std::filesystem::directory_entry& entry, std::size_t folder,
              std::vector<std::filesystem::path>& below);
    std::vector<std::filesystem::path> LookInto(const std::filesystem::path& folder, Added& added);

    std::vector<std::string> folders_;
    std::unordered_set<std::string> known_;  // the same folders
    std::unordered_map<std::string, std::vector<Entry>> byFoldedName_;
    std::size_t fileCount_ = 0;
};

}  // namespace toolkit
