#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

#include "cli/Messages.h"
#include "toolkit/ClipSummary.h"
#include "toolkit/SessionSummary.h"
#include "toolkit/TrackSummary.h"

// What `orvo info` found in one file, and how it is shown.

namespace cli {

struct InfoContent {
    toolkit::SessionSummary session;
    std::vector<toolkit::TrackSummary> tracks;
    std::vector<toolkit::ClipSummary> clips;
    std::vector<toolkit::GroupSummary> groups;
};

/// What one file gave: its content, or why there is none.
struct InfoReport {
    std::string name;
    std::optional<InfoContent> content;
    std::vector<Message> messages;
};

/// Which details a person asked for.
struct InfoDetail {
    bool tracks = false;
    bool effects = false;
    bool clips = false;
};

/// The report of a session as aligned text.
std::string ShowInfo(const InfoReport& report, const InfoDetail& detail);

/// Its missing media alone. Empty if it misses none.
std::string ShowMissing(const InfoReport& report);

/// The whole of it for programs.
nlohmann::ordered_json InfoToJson(const InfoReport& report);

/// Its missing media alone, for programs. Null if it misses none.
nlohmann::ordered_json MissingToJson(const InfoReport& report);

}  // namespace cli
