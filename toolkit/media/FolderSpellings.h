#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace toolkit {

/// Finds files whose path is spelled differently here: in other letter case, or with accents in
/// another form. Lists each folder at most once.
class FolderSpellings {
public:
    /// The path of what the names lead to from a folder; no value if one of them is not there, or
    /// is there in several spellings but not in its own.
    /// @param folder  like the names, in the bytes of this system
    std::optional<std::string> Find(const std::string& folder,
                                    const std::vector<std::string>& names);

private:
    using Spellings = std::unordered_multimap<std::string, std::string>;  // by folded name

    const Spellings& In(const std::string& folder);

    std::unordered_map<std::string, Spellings> folders_;
};

}  // namespace toolkit
