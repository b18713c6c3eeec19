#include "cli/verbs/RelinkReport.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "cli/files/ShownPath.h"

namespace cli {
namespace {

using nlohmann::ordered_json;
using orvo::RelinkedMedia;
using orvo::RelinkOutcome;

std::string_view WordOf(RelinkOutcome outcome) {
    switch (outcome) {
        case RelinkOutcome::Present:
            return "present";
        case RelinkOutcome::Found:
            return "found";
        case RelinkOutcome::Ambiguous:
            return "ambiguous";
        case RelinkOutcome::Missing:
            break;
    }
    return "missing";
}

constexpr std::size_t kWidthOfWords = 9;

/// A line under the path of a file.
std::string Below(const std::string& printable) {
    return fmt::format("  {:{}}    {}\n", "", kWidthOfWords, printable);
}

std::string ToText(const RelinkedMedia& media) {
    const std::string path =
        media.path.empty() ? fmt::format("file {}", media.id) : Printable(media.path);
    std::string text = fmt::format("  {:{}}  {}\n", WordOf(media.outcome), kWidthOfWords, path);
    if (!media.newPath.empty()) {
        text += Below(ShownPath(media.newPath));
    }
    text += media.why.empty() ? "" : Below("(" + Printable(media.why) + ")");
    for (const std::string& candidate : media.candidates) {
        text += Below(ShownPath(candidate));
    }
    return text;
}

ordered_json ToJson(const RelinkedMedia& media) {
    return {{"id", media.id},
            {"path", media.path},
            {"outcome", WordOf(media.outcome)},
            {"newPath", media.newPath.empty() ? ordered_json() : ordered_json(media.newPath)},
            {"why", media.why},
            {"candidates", media.candidates}};
}

ordered_json ToJson(const Message& message) {
    return {{"line", message.place.line},
            {"column", message.place.column},
            {"what", message.what},
            {"advice", message.advice}};
}

std::string Counted(std::size_t count, std::string_view thing) {
    return fmt::format("{} {}{}", count, thing, count == 1 ? "" : "s");
}

}  // namespace

std::size_t RelinkReport::Count(RelinkOutcome outcome) const {
    return static_cast<std::size_t>(
        std::count_if(media.begin(), media.end(),
                      [outcome](const RelinkedMedia& one) { return one.outcome == outcome; }));
}

bool RelinkReport::IsGood() const {
    return messages.empty() && Count(RelinkOutcome::Ambiguous) == 0 &&
           Count(RelinkOutcome::Missing) == 0;
}

std::string ToText(const RelinkReport& report) {
    std::string text;
    for (const RelinkedMedia& media : report.media) {
        text += media.outcome != RelinkOutcome::Present ? ToText(media) : "";
    }
    return text.empty() ? "" : Printable(report.name) + "\n" + text;
}

ordered_json ToJson(const RelinkReport& report) {
    ordered_json media = ordered_json::array();
    for (const RelinkedMedia& one : report.media) {
        if (one.outcome != RelinkOutcome::Present) {
            media.push_back(ToJson(one));
        }
    }
    ordered_json errors = ordered_json::array();
    for (const Message& message : report.messages) {
        errors.push_back(ToJson(message));
    }
    const auto textOrNull = [](const std::optional<std::string>& text) {
        return text ? ordered_json(*text) : ordered_json();
    };
    return {{"file", report.name},
            {"present", report.Count(RelinkOutcome::Present)},
            {"found", report.Count(RelinkOutcome::Found)},
            {"ambiguous", report.Count(RelinkOutcome::Ambiguous)},
            {"missing", report.Count(RelinkOutcome::Missing)},
            {"media", media},
            {"changes", report.changes},
            {"saved", textOrNull(report.saved)},
            {"backup", textOrNull(report.backup)},
            {"errors", errors}};
}

void RelinkSummary::Add(const RelinkReport& report) {
    ++sessions_;
    changed_ += report.changes ? 1U : 0U;
    failed_ += report.messages.empty() ? 0U : 1U;
    found_ += report.Count(RelinkOutcome::Found);
    ambiguous_ += report.Count(RelinkOutcome::Ambiguous);
    missing_ += report.Count(RelinkOutcome::Missing);
}

std::string RelinkSummary::Text(bool isDryRun) const {
    const std::string sessions = Counted(sessions_, "session");
    if (failed_ == sessions_ && sessions_ != 0 && found_ + ambiguous_ + missing_ == 0) {
        return sessions + ": none could be relinked\n";
    }
    const std::string media =
        found_ + ambiguous_ + missing_ == 0
            ? "no media are missing"
            : fmt::format("{} found, {} ambiguous, {} still missing", found_, ambiguous_, missing_);
    return fmt::format("{}: {}; {} {}{}\n", sessions, media, changed_,
                       isDryRun ? "would change" : "changed",
                       failed_ == 0 ? "" : fmt::format(", {} failed", failed_));
}

}  // namespace cli
