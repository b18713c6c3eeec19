#include "toolkit/interchange/dawproject/Entries.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <set>

#include "platform/kelcore/Unicode.h"

namespace toolkit::interchange::dawproject {
namespace {

bool IsWellFormed(std::string_view text) {
    while (!text.empty()) {
        const kelcore::unicode::Utf8Part part = kelcore::unicode::FirstPart(text);
        if (!part.wellFormed) {
            return false;
        }
        text.remove_prefix(part.length);
    }
    return true;
}

std::string Folded(std::string name) {
    std::ranges::transform(name, name.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return name;
}

}  // namespace

std::string PlainNameOf(std::string_view path) {
    constexpr std::size_t kLongest = 120;
    std::string name(path.substr(path.find_last_of("/\\") + 1));
    const bool isText = IsWellFormed(name);
    std::ranges::replace_if(
        name,
        [&](char c) {
            const auto byte = static_cast<unsigned char>(c);
            return byte < 0x20 || byte == 0x7F || (byte > 0x7F && !isText) ||
                   std::string_view("<>:\"|?*").find(c) != std::string_view::npos;
        },
        '_');
    if (name.size() > kLongest) {
        name.erase(0, name.size() - kLongest);
        while (!IsWellFormed(name)) {
            name.erase(0, 1);
        }
    }
    const bool isNamed = name.find_first_not_of('.') != std::string::npos;
    return isNamed ? name : "media";
}

std::string DigestsText(std::string_view projectDigest, std::string_view metadataDigest) {
    return fmt::format("{}  {}\n{}  {}\n", projectDigest, kProjectEntry, metadataDigest,
                       kMetadataEntry);
}

std::map<std::uint32_t, std::string> MediaEntriesOf(const orvo::Session& session) {
    std::map<std::uint32_t, std::string> entries;
    std::set<std::string> taken;
    for (const orvo::File& file : session.files) {
        const std::string plain = PlainNameOf(file.path);
        std::string name = plain;
        for (std::size_t number = 2; !taken.insert(Folded(name)).second; ++number) {
            name = fmt::format("{}-{}", number, plain);
        }
        entries.emplace(file.id, fmt::format("audio/{}", name));
    }
    return entries;
}

std::string StateEntryOf(std::string_view deviceId) {
    return fmt::format("plugins/{}.bin", deviceId);
}

}  // namespace toolkit::interchange::dawproject
