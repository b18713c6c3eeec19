#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

#include "cli/terminal/Messages.h"
#include "toolkit/ClipSummary.h"
#include "toolkit/SessionSummary.h"
#include "toolkit/TrackSummary.h"

// The findings of `orvo info` for one file, and their presentation.

namespace cli {

struct InfoContent {
    toolkit::SessionSummary session;
    std::vector<toolkit::TrackSummary> tracks;
    std::vector<toolkit::ClipSummary> clips;
    std::vector<toolkit::GroupSummary> groups;
};

/// The content of one file, or the reason why it could not be read.
struct InfoReport {
    std::string name;
    std::optional<InfoContent> content;
    std::vector<Message> messages;
};

/// The details to show.
struct InfoDetail {
    bool tracks = false;
    bool effects = false;
    bool clips = false;
};

/// Formats the report as aligned text.
std::string ShowInfo(const InfoReport& report, const InfoDetail& detail);

/// Formats only the missing media. Empty if none are missing.
std::string ShowMissing(const InfoReport& report);

/// Formats the whole report for programs.
nlohmann::ordered_json InfoToJson(const InfoReport& report);

/// Formats only the missing media for programs. Null if none are missing.
nlohmann::ordered_json MissingToJson(const InfoReport& report);

}  // namespace cli
