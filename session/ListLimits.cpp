#include "session/ListLimits.h"

#include <fmt/format.h>

#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "format/Limits.h"
#include "session/Schema.h"
#include "session/json/MessageText.h"

namespace orvo {
namespace {

struct List {
    std::string place;
    std::uint64_t length = 0;
};

/// Walks a session and measures its lists.
class ListMeasure {
public:
    /// The total of all lists.
    std::uint64_t Entries() const { return entries_; }
    /// The longest list; the first one of several.
    const List& Longest() const { return longest_; }
    /// The first channel map that is too long, if any.
    const std::optional<List>& ChannelMap() const { return channelMap_; }

    template <HasSchema Struct>
    void Visit(const Struct& value, const std::string& place) {
        ForEachRow<Struct>([&](const auto& row) { VisitMember(value, row, place); });
    }
    template <class Held>
    void Visit(const std::optional<Held>& value, const std::string& place) {
        if (value) {
            Visit(*value, place);
        }
    }
    template <class Element>
    void Visit(const std::vector<Element>& list, const std::string& place) {
        Take({place, list.size()});
        for (std::size_t i = 0; i < list.size(); ++i) {
            Visit(list[i], place + "/" + std::to_string(i));
        }
    }
    void Visit(const std::vector<ChannelRoute>& routes, const std::string& place) {
        TakeChannels({place, routes.size()});
    }
    template <class Held>
    void Visit(const std::map<std::uint32_t, Held>& table, const std::string& place) {
        if (!table.empty()) {
            const std::uint32_t highest = table.rbegin()->first;
            const List list{place + "/" + std::to_string(highest), std::uint64_t{highest} + 1};
            if constexpr (std::is_same_v<Held, std::int32_t>) {
                TakeChannels(list);
            } else {
                Take(list);
            }
        }
        for (const auto& [number, value] : table) {
            Visit(value, place + "/" + std::to_string(number));
        }
    }
    void Visit(const std::vector<std::uint8_t>&, const std::string&) {}
    void Visit(const std::string&, const std::string&) {}
    template <class Number>
    requires std::is_arithmetic_v<Number> || std::is_enum_v<Number>
    void Visit(Number, const std::string&) {}

private:
    template <class Struct, class Member>
    void VisitMember(const Struct& value, const Row<Struct, Member>& row,
                     const std::string& place) {
        if constexpr (!std::is_arithmetic_v<Member>) {
            Visit(value.*row.member, place + orvo::json::PointerStep(row.key));
        }
    }

    void Take(const List& list) {
        entries_ += list.length;
        if (list.length > longest_.length) {
            longest_ = list;
        }
    }
    void TakeChannels(const List& map) {
        if (map.length > tses::limits::kChannels && !channelMap_) {
            channelMap_ = map;
        }
    }

    std::uint64_t entries_ = 0;
    List longest_;
    std::optional<List> channelMap_;
};

Message BeyondLimit(const List& list, std::uint64_t most, const char* what) {
    return {.what = fmt::format("{}: this makes {} {}, but a session file has room for {}",
                                list.place, list.length, what, most),
            .advice = "use lower numbers, or fewer of them"};
}

}  // namespace

std::optional<Message> FindListBeyondLimits(const Session& session) {
    ListMeasure measure;
    measure.Visit(session, {});
    if (measure.ChannelMap()) {
        return BeyondLimit(*measure.ChannelMap(), tses::limits::kChannels, "channels");
    }
    if (measure.Entries() > tses::limits::kItems) {
        return BeyondLimit(measure.Longest(), tses::limits::kItems, "entries");
    }
    return std::nullopt;
}

}  // namespace orvo
