#pragma once

#include <map>
#include <string>
#include <string_view>

#include <orvo/Model.h>

/// The entries of a DAWproject file.
namespace toolkit::interchange::dawproject {

inline constexpr std::string_view kProjectEntry = "project.xml";
inline constexpr std::string_view kMetadataEntry = "metadata.xml";

// Those of our own.
inline constexpr std::string_view kSessionEntry = "orvo/session.json";
inline constexpr std::string_view kDigestsEntry = "orvo/SHA256SUMS";

/// The text of `kDigestsEntry`, as sha256sum writes it.
std::string DigestsText(std::string_view projectDigest, std::string_view metadataDigest);

/// The entry of each file of a session if it is embedded, by its id. The names are distinct
/// on every system.
std::map<std::uint32_t, std::string> MediaEntriesOf(const orvo::Session& session);

/// The entry of an effect's state.
std::string StateEntryOf(std::string_view deviceId);

}  // namespace toolkit::interchange::dawproject
