#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

namespace cli {

/// What a session can be saved as.
enum class Kind { Orvo, Json };

/// An option that states a kind: "orvo" or "json", and anything else is a usage error.
/// @param stated  empty as long as it is not stated
void AddKindOption(CLI::App& verb, const std::string& option, std::string& stated,
                   const std::string& description);

/// The kind as it is stated, or else as the extension of the name tells, in either case.
std::optional<Kind> FindKind(const std::string& stated, const std::string& name);

}  // namespace cli
