#include "toolkit/SessionFolder.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "toolkit/FileNames.h"

namespace toolkit {
namespace {

/// Adds what is in one folder and returns the folders in it. Closes the folder before the caller
/// opens those, so that they may nest deeper than a process may have folders open.
std::vector<std::filesystem::path> LookInto(const std::filesystem::path& folder,
                                            FolderContent& content) {
    std::vector<std::filesystem::path> below;
    std::error_code error;
    std::filesystem::directory_iterator entry(folder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        std::error_code ignored;
        if (!entry->is_directory(ignored)) {
            if (ExtensionOf(entry->path().native()) == "orvo") {
                content.sessions.push_back(entry->path().string());
            }
        } else if (!entry->is_symlink(ignored)) {
            below.push_back(entry->path());
        }
    }
    if (error) {
        content.unread.push_back(
            {folder.string(), {{}, "this folder cannot be read", error.message()}});
    }
    return below;
}

void Search(const std::filesystem::path& folder, FolderContent& content) {
    for (const std::filesystem::path& below : LookInto(folder, content)) {
        Search(below, content);
    }
}

}  // namespace

FolderContent FindSessions(const std::string& folder) {
    FolderContent content;
    Search(folder, content);
    std::sort(content.sessions.begin(), content.sessions.end());
    return content;
}

}  // namespace toolkit
