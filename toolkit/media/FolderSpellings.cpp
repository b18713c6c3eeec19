#include "toolkit/media/FolderSpellings.h"

#include <filesystem>
#include <iterator>
#include <system_error>

#include "toolkit/media/FoldedName.h"

namespace toolkit {

namespace fs = std::filesystem;

const FolderSpellings::Spellings& FolderSpellings::In(const std::string& folder) {
    const auto [known, isNew] = folders_.try_emplace(folder);
    if (isNew) {
        std::error_code error;
        fs::directory_iterator entry(folder, error);
        for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
            const std::string name = entry->path().filename().string();
            known->second.emplace(FoldedName(name), name);
        }
    }
    return known->second;
}

std::optional<std::string> FolderSpellings::Find(const std::string& folder,
                                                 const std::vector<std::string>& names) {
    fs::path path = folder;
    for (const std::string& name : names) {
        std::error_code error;
        if (fs::exists(path / name, error)) {
            path /= name;
            continue;
        }
        const Spellings& spellings = In(path.string());
        const auto [first, end] = spellings.equal_range(FoldedName(name));
        if (first == end || std::next(first) != end) {
            return std::nullopt;
        }
        path /= first->second;
    }
    return path.string();
}

}  // namespace toolkit
