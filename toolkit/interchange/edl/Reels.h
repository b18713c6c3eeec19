#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include <orvo/Model.h>

namespace toolkit::interchange {

/// Names media as the reels of an edit decision list: up to eight of A-Z, 0-9 and "_", each its
/// own.
class Reels {
public:
    /// Names all files in their order. "AX" if a path has no such character.
    explicit Reels(const orvo::Session& session);

    /// "AX" for no file.
    const std::string& Of(std::uint32_t fileId) const;

private:
    std::string Unique(const std::string& name);

    std::unordered_map<std::uint32_t, std::string> names_;
    std::unordered_set<std::string> taken_;
    std::unordered_map<std::string, std::size_t> numbers_;  // the last one of a name
};

}  // namespace toolkit::interchange
