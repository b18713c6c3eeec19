#include "toolkit/interchange/dawproject/Entries.h"

#include <fmt/format.h>

#include "toolkit/collect/PortableNames.h"
#include "toolkit/relink/PathNames.h"

namespace toolkit::interchange::dawproject {

std::string DigestsText(std::string_view projectDigest, std::string_view metadataDigest) {
    return fmt::format("{}  {}\n{}  {}\n", projectDigest, kProjectEntry, metadataDigest,
                       kMetadataEntry);
}

std::map<std::uint32_t, std::string> MediaEntriesOf(const orvo::Session& session) {
    std::map<std::uint32_t, std::string> entries;
    UniqueNames names;
    for (const orvo::File& file : session.files) {
        const std::string name = names.Take(PortableName(LastNameOf(file.path)));
        entries.emplace(file.id, fmt::format("audio/{}", name));
    }
    return entries;
}

std::string StateEntryOf(std::string_view deviceId) {
    return fmt::format("plugins/{}.bin", deviceId);
}

}  // namespace toolkit::interchange::dawproject
