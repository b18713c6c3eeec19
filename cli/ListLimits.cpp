#include "cli/ListLimits.h"

#include <fmt/format.h>

#include <map>
#include <tuple>
#include <type_traits>
#include <vector>

#include "format/Limits.h"
#include "reference_host/json/MessageText.h"
#include "reference_host/json/Schema.h"

namespace cli {
namespace {


struct List {
    std::string place;
    kelcore::uint64 length = 0;
};

/// Walks a session and measures its lists.
class ListMeasure {
public:
    /// The total of all lists.
    kelcore::uint64 Entries() const { return entries_; }
    /// The longest list; the first one of several.
    const List& Longest() const { return longest_; }
    /// The first channel map that is too long, if any.
    const std::optional<List>& ChannelMap() const { return channelMap_; }

    template <refhost::HasSchema Struct>
    void Visit(const Struct& value, const std::string& place) {
        std::apply([&](const auto&... rows) { (VisitMember(value, rows, place), ...); },
                   refhost::Schema<Struct>::kRows);
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
    void Visit(const std::vector<orvo::ChannelRoute>& routes, const std::string& place) {
        TakeChannels({place, routes.size()});
    }
    template <class Held>
    void Visit(const std::map<kelcore::uint32, Held>& table, const std::string& place) {
        if (!table.empty()) {
            const kelcore::uint32 highest = table.rbegin()->first;
            const List list{place + "/" + std::to_string(highest), kelcore::uint64{highest} + 1};
            if constexpr (std::is_same_v<Held, kelcore::int32>) {
                TakeChannels(list);
            } else {
                Take(list);
            }
        }
        for (const auto& [number, value] : table) {
            Visit(value, place + "/" + std::to_string(number));
        }
    }
    void Visit(const std::vector<kelcore::byte>&, const std::string&) {}
    void Visit(const std::string&, const std::string&) {}
    template <class Number>
    requires std::is_arithmetic_v<Number> || std::is_enum_v<Number>
    void Visit(Number, const std::string&) {}

private:
    template <class Struct, class Member>
    void VisitMember(const Struct& value, const refhost::Row<Struct, Member>& row,
                     const std::string& place) {
        if constexpr (!std::is_arithmetic_v<Member>) {
            Visit(value.*row.member, place + refhost::PointerStep(row.key));
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

    kelcore::uint64 entries_ = 0;
    List longest_;
    std::optional<List> channelMap_;
};

toolkit::Problem BeyondLimit(const List& list, kelcore::uint64 most, const char* what) {
    return {{},
            fmt::format("{}: this makes {} {}, but a session file has room for {}", list.place,
                        list.length, what, most),
            "use lower numbers, or fewer of them"};
}

}  // namespace

std::optional<toolkit::Problem> FindListBeyondLimits(const orvo::Session& session) {
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

}  // namespace cli
