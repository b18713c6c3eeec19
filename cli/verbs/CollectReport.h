#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include <orvo/Collect.h>
#include "cli/terminal/Messages.h"

namespace cli {

/// How much goes where, and what is missing.
/// @param file    the session as named
/// @param folder  the folder as named
std::string ToText(const orvo::CollectPlan& plan, const std::string& file,
                   const std::string& folder);

/// The name of each file in the folder, its size and its source.
std::string ListMedia(const orvo::CollectPlan& plan);

/// What was done. Empty if the collection is incomplete.
std::string ToText(const orvo::CollectResult& result, const std::string& folder);

/// @param messages  why the collection is incomplete
nlohmann::ordered_json ToJson(const orvo::CollectPlan& plan, const orvo::CollectResult& result,
                              const std::string& file, const std::string& folder,
                              const std::vector<Message>& messages);

/// What is not as it was collected, and how many files are.
std::string ToText(const orvo::VerifyResult& result, const std::string& folder);

nlohmann::ordered_json ToJson(const orvo::VerifyResult& result, const std::string& folder,
                              const std::vector<Message>& messages);

}  // namespace cli
