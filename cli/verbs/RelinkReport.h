#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include <orvo/Relink.h>
#include "cli/terminal/Messages.h"

namespace cli {

/// What became of one session.
struct RelinkReport {
    std::string name;
    std::vector<orvo::RelinkedMedia> media{};
    bool changes = false;                 ///< a path in it is another one now
    std::optional<std::string> saved{};   ///< under which name
    std::optional<std::string> backup{};  ///< under which name
    std::vector<Message> messages{};      ///< what failed

    std::size_t Count(orvo::RelinkOutcome outcome) const;

    /// Whether every file was found, and nothing failed.
    bool IsGood() const;
};

/// The media that were missing, and what became of them; empty if there were none.
std::string ToText(const RelinkReport& report);

nlohmann::ordered_json ToJson(const RelinkReport& report);

/// Counts what became of all sessions.
class RelinkSummary {
public:
    void Add(const RelinkReport& report);

    /// A sentence or two, with a line end.
    std::string Text(bool isDryRun) const;

private:
    std::size_t sessions_ = 0;
    std::size_t changed_ = 0;
    std::size_t failed_ = 0;
    std::size_t found_ = 0;
    std::size_t ambiguous_ = 0;
    std::size_t missing_ = 0;
};

}  // namespace cli
