#include <orvo/Differences.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <optional>
#include <ostream>
#include <tuple>
#include <type_traits>

#include "session/Schema.h"
#include "session/json/Encode.h"
#include "session/json/MessageText.h"

namespace orvo {
namespace {

template <class Value>
bool AreSame(const Value& one, const Value& other) {
    if constexpr (std::is_floating_point_v<Value>) {
        return one == other || (std::isnan(one) && std::isnan(other));
    } else {
        return one == other;
    }
}

/// Things with an id are the same thing if their ids are equal.
template <class Value>
bool AreOneThing(const Value& one, const Value& other) {
    if constexpr (requires { one.id; }) {
        return one.id == other.id;
    } else {
        return one == other;
    }
}

/// Ends the encoding of a value.
struct Enough {};

/// The first bytes of a value's JSON. Stops encoding soon after them.
template <class Value>
std::string Shown(const Value& value) {
    constexpr std::size_t kLongest = 60;
    std::string begin;
    try {
        json::WriteValue(value, {json::JsonWriter::Layout::Compact}, {},
                         [&](std::string_view block) {
                             begin = block;
                             if (begin.size() > kLongest) {
                                 throw Enough();
                             }
                         });
    } catch (const Enough&) {
        // The rest is not shown.
    }
    return json::Shortened(std::move(begin), kLongest);
}

/// Where in a session's JSON a value is; only a difference spells it out.
class JsonPlace {
public:
    JsonPlace() = default;
    JsonPlace(const JsonPlace& parent, std::string_view key) : parent_(&parent), key_(key) {}
    JsonPlace(const JsonPlace& parent, std::size_t index) : parent_(&parent), index_(index) {}

    /// As a JSON pointer; empty for the whole document.
    std::string Pointer() const {
        if (parent_ == nullptr) {
            return {};
        }
        return parent_->Pointer() +
               (key_ ? json::PointerStep(*key_) : "/" + std::to_string(index_));
    }

private:
    const JsonPlace* parent_ = nullptr;
    std::optional<std::string_view> key_;  // null: an element of a list
    std::size_t index_ = 0;
};

class Comparison {
public:
    explicit Comparison(std::size_t limit) : limit_(limit) {}

    Differences Take() { return std::move(differences_); }

    template <class Value>
    void Compare(const Value& one, const Value& other, const JsonPlace& place) {
        if (!AreSame(one, other)) {
            Report(one, other, place);
        }
    }

    template <HasSchema Struct>
    void Compare(const Struct& one, const Struct& other, const JsonPlace& place) {
        ForEachRow<Struct>([&](const auto& row) {
            Compare(one.*row.member, other.*row.member, JsonPlace(place, row.key));
        });
    }

    void Compare(const std::vector<std::uint8_t>& one, const std::vector<std::uint8_t>& other,
                 const JsonPlace& place) {
        if (one != other) {
            Report(one, other, place);
        }
    }

    template <class Element>
    void Compare(const std::vector<Element>& one, const std::vector<Element>& other,
                 const JsonPlace& place) {
        CompareLists(Entries(one), Entries(other), place);
    }

    template <class Held>
    void Compare(const std::optional<Held>& one, const std::optional<Held>& other,
                 const JsonPlace& place) {
        if (one && other) {
            Compare(*one, *other, place);
        } else if (one || other) {
            Report(one, other, place);
        }
    }

    template <class Held>
    void Compare(const std::map<std::uint32_t, Held>& one,
                 const std::map<std::uint32_t, Held>& other, const JsonPlace& place) {
        for (const auto& [number, value] : one) {
            const std::string key = std::to_string(number);
            const auto found = other.find(number);
            if (found != other.end()) {
                Compare(value, found->second, JsonPlace(place, key));
            } else if (!IsImplied(other, number, value)) {
                Report(value, nullptr, JsonPlace(place, key));
            }
        }
        for (const auto& [number, value] : other) {
            if (!one.contains(number) && !IsImplied(one, number, value)) {
                const std::string key = std::to_string(number);
                Report(nullptr, value, JsonPlace(place, key));
            }
        }
    }

private:
    /// Whether a table means an entry that it leaves out. A channel below the highest is fed by the
    /// channel of its own number.
    static bool IsImplied(const std::map<std::uint32_t, std::int32_t>& channelSources,
                          std::uint32_t channel, std::int32_t source) {
        return !channelSources.empty() && channel < channelSources.rbegin()->first &&
               source == static_cast<std::int32_t>(channel);
    }
    template <class Held>
    static bool IsImplied(const std::map<std::uint32_t, Held>&, std::uint32_t, const Held&) {
        return false;
    }

    /// A list for comparison.
    template <class Element>
    class Entries {
    public:
        explicit Entries(const std::vector<Element>& list) : list_(list) {}
        std::size_t Size() const { return list_.size(); }
        const Element& operator[](std::size_t index) const { return list_[index]; }
        std::size_t PlaceOf(std::size_t index) const { return index; }

    private:
        const std::vector<Element>& list_;
    };

    /// Leaves out the nulls, so the elements after them move up.
    template <class Held>
    class Entries<std::optional<Held>> {
    public:
        explicit Entries(const std::vector<std::optional<Held>>& list) : list_(list) {
            for (std::size_t place = 0; place < list.size(); ++place) {
                if (list[place]) {
                    places_.push_back(place);
                }
            }
        }
        std::size_t Size() const { return places_.size(); }
        const Held& operator[](std::size_t index) const { return *list_[places_[index]]; }
        std::size_t PlaceOf(std::size_t index) const { return places_[index]; }

    private:
        const std::vector<std::optional<Held>>& list_;
        std::vector<std::size_t> places_;
    };

    /// If a list became shorter, the elements that have no counterpart in their place were left
    /// out.
    template <class Element>
    void CompareLists(const Entries<Element>& one, const Entries<Element>& other,
                      const JsonPlace& place) {
        std::size_t leftOut = one.Size() - std::min(one.Size(), other.Size());
        std::size_t next = 0;
        for (std::size_t i = 0; i < one.Size(); ++i) {
            const JsonPlace there(place, one.PlaceOf(i));
            if (leftOut > 0 && (next == other.Size() || !AreOneThing(one[i], other[next]))) {
                Report(one[i], nullptr, there);
                --leftOut;
            } else {
                Compare(one[i], other[next++], there);
            }
        }
        for (; next < other.Size(); ++next) {
            Report(nullptr, other[next], JsonPlace(place, other.PlaceOf(next)));
        }
    }

    static std::string Shown(std::nullptr_t) { return "nothing"; }
    template <class Value>
    static std::string Shown(const Value& value) {
        return orvo::Shown(value);
    }

    template <class One, class Other>
    void Report(const One& one, const Other& other, const JsonPlace& place) {
        if (differences_.count++ < limit_) {
            differences_.list.push_back({place.Pointer(), Shown(one), Shown(other)});
        }
    }

    std::size_t limit_;
    Differences differences_;
};

}  // namespace

Differences FindDifferences(const Session& session, const Session& other, std::size_t limit) {
    Comparison comparison(limit);
    comparison.Compare(session, other, JsonPlace());
    return comparison.Take();
}

std::ostream& operator<<(std::ostream& out, const Difference& difference) {
    return out << difference.place << ": " << difference.before << " became " << difference.after;
}

}  // namespace orvo
