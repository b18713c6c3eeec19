#include "cli/verbs/CollectReport.h"

#include <fmt/format.h>

#include <array>
#include <map>
#include <string_view>
#include <utility>

#include "cli/files/ShownPath.h"
#include "cli/terminal/ShownSize.h"
#include "cli/terminal/Table.h"

namespace cli {
namespace {

using nlohmann::ordered_json;
using orvo::CollectedFile;
using orvo::VerifiedFile;
using orvo::VerifiedState;

std::string Counted(std::size_t count, std::string_view thing) {
    return fmt::format("{} {}{}", count, thing, count == 1 ? "" : "s");
}

std::string_view WordOf(VerifiedState state) {
    switch (state) {
        case VerifiedState::Good:
            return "good";
        case VerifiedState::Changed:
            return "changed";
        case VerifiedState::Missing:
            return "missing";
        case VerifiedState::Unreadable:
            return "unreadable";
        case VerifiedState::Unlisted:
            break;
    }
    return "unlisted";
}

ordered_json ToJson(const CollectedFile& media) {
    return {{"ids", media.ids},
            {"source", media.source},
            {"name", media.name.empty() ? ordered_json() : ordered_json(media.name)},
            {"size", media.size}};
}

ordered_json ToJson(const VerifiedFile& file) {
    return {{"name", file.name}, {"state", WordOf(file.state)}, {"why", file.why}};
}

ordered_json ToJson(const std::vector<Message>& messages) {
    ordered_json array = ordered_json::array();
    for (const Message& message : messages) {
        array.push_back(
            {{"subject", message.subject}, {"what", message.what}, {"advice", message.advice}});
    }
    return array;
}

template <class Item>
ordered_json ToArray(const std::vector<Item>& items) {
    ordered_json array = ordered_json::array();
    for (const Item& item : items) {
        array.push_back(ToJson(item));
    }
    return array;
}

}  // namespace

std::string ToText(const orvo::CollectPlan& plan, const std::string& file,
                   const std::string& folder) {
    const std::size_t missing = plan.MissingCount();
    std::string text = fmt::format(
        "{}: {}, {}{}\n", Printable(file), Counted(plan.media.size() - missing, "media file"),
        ShownSize(plan.bytes), missing == 0 ? "" : fmt::format("; {} missing", missing));
    for (const CollectedFile& media : plan.media) {
        if (media.name.empty()) {
            text += "  missing  " + ShownPath(media.source) + "\n";
        }
    }
    return text + fmt::format("{}: {} to copy{}\n", Printable(folder), ShownSize(plan.bytesToCopy),
                              plan.bytesFree ? ", " + ShownSize(*plan.bytesFree) + " free" : "");
}

std::string ListMedia(const orvo::CollectPlan& plan) {
    std::vector<std::vector<std::string>> rows;
    for (const CollectedFile& media : plan.media) {
        if (!media.name.empty()) {
            rows.push_back({Printable(media.name), ShownSize(media.size), ShownPath(media.source)});
        }
    }
    return FormatTable(rows, {Align::Left, Align::Right, Align::Left}, "  ");
}

std::string ToText(const orvo::CollectResult& result, const std::string& folder) {
    if (!result) {
        return {};
    }
    std::string done;
    for (const auto& [count, word] : std::array<std::pair<std::size_t, std::string_view>, 4>{
             {{result.copied, "copied"},
              {result.cloned, "cloned"},
              {result.linked, "linked"},
              {result.kept, "there already"}}}) {
        if (count != 0) {
            done += fmt::format("{}{} {}", done.empty() ? "" : ", ", count, word);
        }
    }
    return fmt::format("{}: complete; {}\n", Printable(folder),
                       done.empty() ? "there are no media" : done);
}

ordered_json ToJson(const orvo::CollectPlan& plan, const orvo::CollectResult& result,
                    const std::string& file, const std::string& folder,
                    const std::vector<Message>& messages) {
    return {{"file", file},
            {"folder", folder},
            {"session", plan.sessionName},
            {"media", ToArray(plan.media)},
            {"missing", plan.MissingCount()},
            {"bytes", plan.bytes},
            {"bytesToCopy", plan.bytesToCopy},
            {"bytesFree", plan.bytesFree ? ordered_json(*plan.bytesFree) : ordered_json()},
            {"complete", result.ok},
            {"copied", result.copied},
            {"cloned", result.cloned},
            {"linked", result.linked},
            {"kept", result.kept},
            {"errors", ToJson(messages)}};
}

std::string ToText(const orvo::VerifyResult& result, const std::string& folder) {
    std::string text;
    std::map<VerifiedState, std::size_t> counts;
    for (const VerifiedFile& file : result.files) {
        ++counts[file.state];
        if (file.state != VerifiedState::Good) {
            text += fmt::format("  {:10}  {}{}\n", WordOf(file.state), Printable(file.name),
                                file.why.empty() ? "" : ": " + Printable(file.why));
        }
    }
    std::string summary;
    for (const auto& [state, count] : counts) {
        summary += fmt::format("{}{} {}", summary.empty() ? "" : ", ", count, WordOf(state));
    }
    return result.messages.empty() ? fmt::format("{}: {}\n", Printable(folder), summary) + text
                                   : "";
}

ordered_json ToJson(const orvo::VerifyResult& result, const std::string& folder,
                    const std::vector<Message>& messages) {
    return {{"folder", folder},
            {"good", result.ok},
            {"files", ToArray(result.files)},
            {"errors", ToJson(messages)}};
}

}  // namespace cli
