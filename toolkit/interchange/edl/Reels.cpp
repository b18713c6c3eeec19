#include "toolkit/interchange/edl/Reels.h"

#include <algorithm>
#include <filesystem>

#include "toolkit/relink/PathNames.h"

namespace toolkit::interchange {
namespace {

constexpr std::size_t kLongest = 8;
const std::string kNoReel = "AX";

std::string ReelNameOf(const std::string& path) {
    std::string name;
    for (const char c : std::filesystem::path(LastNameOf(path)).stem().string()) {
        const char upper = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
        const bool isAllowed =
            (upper >= 'A' && upper <= 'Z') || (upper >= '0' && upper <= '9') || upper == '_';
        if (isAllowed && name.size() < kLongest) {
            name += upper;
        }
    }
    return name;
}

}  // namespace

Reels::Reels(const orvo::Session& session) : taken_{kNoReel, "BL", ""} {
    for (const orvo::File& file : session.files) {
        const std::string name = ReelNameOf(file.path);
        names_.try_emplace(file.id, name.empty() ? kNoReel : Unique(name));
    }
}

const std::string& Reels::Of(std::uint32_t fileId) const {
    const auto name = names_.find(fileId);
    return name != names_.end() ? name->second : kNoReel;
}

std::string Reels::Unique(const std::string& name) {
    std::string unique = name;
    while (!taken_.insert(unique).second) {
        const std::string number = std::to_string(++numbers_.try_emplace(name, 1).first->second);
        unique = name.substr(0, kLongest - std::min(kLongest, number.size())) + number;
    }
    return unique;
}

}  // namespace toolkit::interchange
