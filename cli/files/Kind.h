#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

namespace cli {

/// The kinds of files that hold a session.
enum class Kind { Orvo, Json };

/// Adds an option for a kind: "orvo" or "json"; anything else is a usage error.
/// @param stated  stays empty if the option is absent
void AddKindOption(CLI::App& verb, const std::string& option, std::string& stated,
                   const std::string& description);

/// The stated kind, or else the kind that the name's extension implies, in either case.
std::optional<Kind> FindKind(const std::string& stated, const std::string& name);

}  // namespace cli
