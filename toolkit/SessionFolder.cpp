#include "toolkit/SessionFolder.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace toolkit {
namespace {

bool HasSessionExtension(const std::filesystem::path& name) {
    constexpr std::string_view kExtension = ".orvo";
    const std::string extension = name.extension().string();
    return std::equal(extension.begin(), extension.end(), kExtension.begin(), kExtension.end(),
                      [](unsigned char one, char other) { return std::tolower(one) == other; });
}

void Search(const std::filesystem::path& folder, FolderContent& content) {
    std::error_code error;
    std::filesystem::directory_iterator entry(folder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        std::error_code ignored;
        if (!entry->is_directory(ignored)) {
            if (HasSessionExtension(entry->path())) {
                content.sessions.push_back(entry->path().string());
            }
        } else if (!entry->is_symlink(ignored)) {
            Search(entry->path(), content);
        }
    }
    if (error) {
        content.unread.push_back(
            {folder.string(), {{}, "this folder cannot be read", error.message()}});
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
