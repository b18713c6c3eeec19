#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include <orvo/Diff.h>
#include <orvo/Merge.h>
#include "session/Schema.h"
#include "session/json/Encode.h"
#include "toolkit/diff/Ids.h"
#include "toolkit/diff/Members.h"
#include "toolkit/diff/Numbering.h"

namespace orvo {
namespace {

using diff::IdSpace;
using diff::IsSame;

template <class Element>
concept HasId = requires(const Element& element) {
    element.id;
};

/// Where the editor stood. If both sides went elsewhere, nobody misses either place.
constexpr std::tuple kEditorState{&Session::ctiPosition, &Session::selection, &Session::viewState,
                                  &Session::versionDependentValue, &Session::formatDescription};

/// Merges values of which all three have the same ids for the same things.
class Merge {
public:
    explicit Merge(MergeDecision decision) : decision_(decision) {}

    bool HasConflict() const { return hasConflict_; }
    bool KeptEditorState() const { return keptEditorState_; }
    bool HasNewIndices() const { return hasNewIndices_; }

    template <class Value>
    Value Of(const Value& base, const Value& ours, const Value& theirs) {
        if (IsSame(theirs, base) || IsSame(ours, theirs)) {
            return ours;
        }
        return IsSame(ours, base) ? theirs : OfChanged(base, ours, theirs);
    }

private:
    template <class Value>
    Value Decide(const Value& base, const Value& ours, const Value& theirs) {
        hasConflict_ = true;
        return decision_ == MergeDecision::Ours     ? ours
               : decision_ == MergeDecision::Theirs ? theirs
                                                    : base;
    }

    template <class Value>
    Value OfChanged(const Value& base, const Value& ours, const Value& theirs) {
        if constexpr (HasSchema<Value>) {
            Value merged = base;
            ForEachRow<Value>([&](const auto& row) {
                merged.*row.member = OfMember(row.member, base, ours, theirs);
            });
            return merged;
        } else {
            return Decide(base, ours, theirs);
        }
    }

    template <class Struct, class Member>
    Member OfMember(Member Struct::*member, const Struct& base, const Struct& ours,
                    const Struct& theirs) {
        const bool isFree = IsSame(theirs.*member, base.*member) ||
                            IsSame(ours.*member, base.*member) ||
                            IsSame(ours.*member, theirs.*member);
        if (isFree) {
            return Of(base.*member, ours.*member, theirs.*member);
        }
        if (diff::IsIn(member, kEditorState)) {
            keptEditorState_ = true;
            return base.*member;
        }
        if constexpr (std::is_same_v<Member, std::uint32_t>) {
            if (diff::IsIn(member, std::tuple{&AudioTrack::index, &VideoTrack::index})) {
                hasNewIndices_ = true;
                return base.*member;
            }
        }
        if constexpr (std::is_same_v<Member, std::int64_t>) {
            if (diff::IsSameMember(member, &Session::duration)) {
                return std::max(ours.*member, theirs.*member);
            }
        }
        return Of(base.*member, ours.*member, theirs.*member);
    }

    std::vector<std::uint8_t> OfChanged(const std::vector<std::uint8_t>& base,
                                        const std::vector<std::uint8_t>& ours,
                                        const std::vector<std::uint8_t>& theirs) {
        return Decide(base, ours, theirs);
    }

    template <class Held>
    std::optional<Held> OfChanged(const std::optional<Held>& base, const std::optional<Held>& ours,
                                  const std::optional<Held>& theirs) {
        return base && ours && theirs ? std::optional<Held>(Of(*base, *ours, *theirs))
                                      : Decide(base, ours, theirs);
    }

    template <class Held>
    std::map<std::uint32_t, Held> OfChanged(const std::map<std::uint32_t, Held>& base,
                                            const std::map<std::uint32_t, Held>& ours,
                                            const std::map<std::uint32_t, Held>& theirs) {
        std::map<std::uint32_t, Held> merged;
        std::set<std::uint32_t> keys;
        for (const auto* const each : {&base, &ours, &theirs}) {
            for (const auto& [key, value] : *each) {
                keys.insert(key);
            }
        }
        const auto at = [](const auto& table, std::uint32_t key) {
            const auto found = table.find(key);
            return found == table.end() ? std::nullopt : std::optional(found->second);
        };
        for (const std::uint32_t key : keys) {
            if (auto value = Of(at(base, key), at(ours, key), at(theirs, key))) {
                merged.emplace(key, std::move(*value));
            }
        }
        return merged;
    }

    template <class Element>
    std::vector<Element> OfChanged(const std::vector<Element>& base,
                                   const std::vector<Element>& ours,
                                   const std::vector<Element>& theirs) {
        if constexpr (HasId<Element>) {
            if (HasOwnIds(base) && HasOwnIds(ours) && HasOwnIds(theirs)) {
                return OfThings(base, ours, theirs);
            }
        }
        if (Correspond(base, ours) && Correspond(base, theirs)) {
            std::vector<Element> merged;
            for (std::size_t i = 0; i < base.size(); ++i) {
                merged.push_back(Of(base[i], ours[i], theirs[i]));
            }
            return merged;
        }
        return OfRegions(base, ours, theirs);
    }

    // Lists of things without ids

    template <class Element>
    static bool IsOneThing(const Element&, const Element&) {
        return false;
    }
    static bool IsOneThing(const Keyframe& one, const Keyframe& other) {
        return one.sampleOffset == other.sampleOffset;
    }
    static bool IsOneThing(const std::optional<EffectsSlot>& one,
                           const std::optional<EffectsSlot>& other) {
        const auto effect = [](const std::optional<EffectsSlot>& slot) {
            return slot && slot->component ? slot->component->componentId : "";
        };
        return one && other && one->slotIndex == other->slotIndex && effect(one) == effect(other);
    }
    static bool IsOneThing(const std::optional<SendSlot>& one,
                           const std::optional<SendSlot>& other) {
        return one && other && one->slotIndex == other->slotIndex;
    }

    /// Whether a side has the same things in the same order, possibly changed.
    template <class Element>
    static bool Correspond(const std::vector<Element>& base, const std::vector<Element>& side) {
        return base.size() == side.size() &&
               std::equal(
                   base.begin(), base.end(), side.begin(),
                   [](const Element& one, const Element& other) { return IsOneThing(one, other); });
    }

    /// The part of a list that a side replaced.
    struct Region {
        std::size_t begin = 0;
        std::size_t end = 0;     ///< in the base
        std::size_t length = 0;  ///< in the side
    };

    template <class Element>
    static Region ChangedRegion(const std::vector<Element>& base,
                                const std::vector<Element>& side) {
        const std::size_t shorter = std::min(base.size(), side.size());
        std::size_t begin = 0;
        while (begin < shorter && IsSame(base[begin], side[begin])) {
            ++begin;
        }
        std::size_t end = 0;
        while (end < shorter - begin &&
               IsSame(base[base.size() - 1 - end], side[side.size() - 1 - end])) {
            ++end;
        }
        return {begin, base.size() - end, side.size() - end - begin};
    }

    /// Parts that do not touch each other are both replaced.
    template <class Element>
    std::vector<Element> OfRegions(const std::vector<Element>& base,
                                   const std::vector<Element>& ours,
                                   const std::vector<Element>& theirs) {
        const Region mine = ChangedRegion(base, ours);
        const Region other = ChangedRegion(base, theirs);
        const bool isMineFirst = mine.end < other.begin;
        if (!isMineFirst && !(other.end < mine.begin)) {
            return Decide(base, ours, theirs);
        }
        const auto& [first, firstSide] =
            isMineFirst ? std::tie(mine, ours) : std::tie(other, theirs);
        const auto& [second, secondSide] =
            isMineFirst ? std::tie(other, theirs) : std::tie(mine, ours);
        std::vector<Element> merged;
        const auto append = [&](const std::vector<Element>& list, std::size_t begin,
                                std::size_t end) {
            merged.insert(merged.end(), list.begin() + static_cast<std::ptrdiff_t>(begin),
                          list.begin() + static_cast<std::ptrdiff_t>(end));
        };
        append(base, 0, first.begin);
        append(firstSide, first.begin, first.begin + first.length);
        append(base, first.end, second.begin);
        append(secondSide, second.begin, second.begin + second.length);
        append(base, second.end, base.size());
        return merged;
    }

    // Lists of things with ids

    template <class Element>
    static bool HasOwnIds(const std::vector<Element>& list) {
        std::unordered_set<std::int64_t> ids;
        return std::all_of(list.begin(), list.end(), [&](const Element& element) {
            return ids.insert(std::int64_t{element.id}).second;
        });
    }

    using Order = std::vector<std::int64_t>;

    template <class Element>
    struct Things {
        explicit Things(const std::vector<Element>& list) {
            for (const Element& element : list) {
                order.push_back(std::int64_t{element.id});
                byId.emplace(std::int64_t{element.id}, &element);
            }
        }

        std::optional<Element> At(std::int64_t id) const {
            const auto found = byId.find(id);
            return found == byId.end() ? std::nullopt : std::optional(*found->second);
        }
        bool Has(std::int64_t id) const { return byId.contains(id); }

        Order order;
        std::unordered_map<std::int64_t, const Element*> byId;
    };

    /// What a list keeps of another one's order.
    template <class Element>
    static Order Common(const Order& order, const Things<Element>& one,
                        const Things<Element>& other) {
        Order common;
        std::copy_if(order.begin(), order.end(), std::back_inserter(common),
                     [&](std::int64_t id) { return one.Has(id) && other.Has(id); });
        return common;
    }

    template <class Element>
    std::vector<Element> OfThings(const std::vector<Element>& base,
                                  const std::vector<Element>& ours,
                                  const std::vector<Element>& theirs) {
        const Things<Element> before(base);
        const Things<Element> mine(ours);
        const Things<Element> others(theirs);
        std::vector<Element> merged;
        for (const std::int64_t id : MergedOrder(before, mine, others)) {
            if (auto thing = Of(before.At(id), mine.At(id), others.At(id))) {
                merged.push_back(std::move(*thing));
            }
        }
        return merged;
    }

    /// The ids of all three, in the order of the side that changed it.
    template <class Element>
    Order MergedOrder(const Things<Element>& base, const Things<Element>& ours,
                      const Things<Element>& theirs) {
        const bool keepsOurs = Common(base.order, base, ours) == Common(ours.order, base, ours);
        const bool keepsTheirs =
            Common(base.order, base, theirs) == Common(theirs.order, base, theirs);
        const bool agree = Common(ours.order, ours, theirs) == Common(theirs.order, ours, theirs);
        if (!keepsOurs && !keepsTheirs && !agree) {
            hasConflict_ = true;
        }
        const bool isByTheirs =
            keepsOurs || (!keepsTheirs && !agree && decision_ == MergeDecision::Theirs);
        Order order = isByTheirs ? theirs.order : ours.order;
        Insert(order, isByTheirs ? theirs : ours, isByTheirs ? ours : theirs, base);
        Insert(order, base, base, base);
        return order;
    }

    /// Inserts what another list has and the order lacks, behind what it stands behind there. Of
    /// two new things in the same place the one with the lesser text comes first, on whatever side.
    template <class Element>
    static void Insert(Order& order, const Things<Element>& mine, const Things<Element>& other,
                       const Things<Element>& base) {
        std::unordered_set<std::int64_t> known(order.begin(), order.end());
        auto place = order.begin();
        for (const std::int64_t id : other.order) {
            if (known.contains(id)) {
                place = std::find(order.begin(), order.end(), id) + 1;
                continue;
            }
            while (place != order.end() && !base.Has(*place) && mine.Has(*place) &&
                   !other.Has(*place) && TextOf(*mine.At(*place)) < TextOf(*other.At(id))) {
                ++place;
            }
            place = order.insert(place, id) + 1;
        }
    }

    template <class Element>
    static std::string TextOf(Element element) {
        element.id = 0;
        return json::Encoded(element, {json::JsonWriter::Layout::Compact});
    }

    MergeDecision decision_;
    bool hasConflict_ = false;
    bool keptEditorState_ = false;
    bool hasNewIndices_ = false;
};

// References

using Reference = std::pair<IdSpace, std::uint32_t>;

/// What is referred to and is not there.
std::set<Reference> Dangling(const Session& session) {
    std::set<Reference> there;
    diff::ForEachOwnId(session, [&](IdSpace space, const auto& id) {
        there.emplace(space, static_cast<std::uint32_t>(id));
    });
    std::set<Reference> dangling;
    diff::ForEachReference(session, [&](IdSpace space, const auto& id) {
        const Reference reference(space, static_cast<std::uint32_t>(id));
        if (!there.contains(reference)) {
            dangling.insert(reference);
        }
    });
    return dangling;
}

// The whole

/// The three sessions with the same ids for the same things.
struct Sides {
    Sides(const Session& theBase, const Session& ourSide, const Session& theirSide)
        : base(theBase),
          ours(NumberedLike(ourSide, MatchSessions(ourSide, theBase), theBase)),
          theirs(diff::NumberedLikeBoth(theirSide, MatchSessions(theirSide, theBase), theBase,
                                        MatchSessions(theirSide, ours), ours)) {}

    const Session& base;
    Session ours;
    Session theirs;
};

struct Merged {
    Session session;
    bool hasConflict = false;
    bool keptEditorState = false;
};

/// Both sides inserted tracks: the merged list tells the places.
void Renumber(Session& session) {
    for (std::size_t i = 0; i < session.audioTracks.size(); ++i) {
        session.audioTracks[i].index = static_cast<std::uint32_t>(i);
    }
}

Merged MergeAs(const Sides& sides, MergeDecision decision) {
    Merge merge(decision);
    Merged merged{merge.Of(sides.base, sides.ours, sides.theirs), false, false};
    if (merge.HasNewIndices()) {
        Renumber(merged.session);
    }
    merged.hasConflict = merge.HasConflict();
    merged.keptEditorState = merge.KeptEditorState();
    return merged;
}

/// Sentences about the same thing make a conflict.
std::vector<MergeConflict> Describe(const Session& base, const Session& ours,
                                    const Session& theirs) {
    std::vector<MergeConflict> conflicts;
    std::map<std::string, std::size_t> places;
    const auto add = [&](const Session& side, std::vector<std::string> MergeConflict::*sentences) {
        for (const Change& change : FindChanges(base, side)) {
            const std::string place = change.before.empty() ? "" : change.before.front();
            const auto [known, isNew] = places.try_emplace(place, conflicts.size());
            if (isNew) {
                conflicts.emplace_back();
            }
            (conflicts[known->second].*sentences).push_back(change.sentence);
        }
    };
    add(ours, &MergeConflict::ours);
    add(theirs, &MergeConflict::theirs);
    return conflicts;
}

}  // namespace

MergeResult MergeSessions(const Session& base, const Session& ours, const Session& theirs,
                          MergeDecision decision) {
    const Sides sides(base, ours, theirs);
    Merged merged = MergeAs(sides, MergeDecision::None);
    MergeResult result;
    result.keptEditorState = merged.keptEditorState;
    if (merged.hasConflict) {
        const Merged byOurs = MergeAs(sides, MergeDecision::Ours);
        const Merged byTheirs = MergeAs(sides, MergeDecision::Theirs);
        result.conflicts = Describe(merged.session, byOurs.session, byTheirs.session);
        merged = decision == MergeDecision::Ours     ? byOurs
                 : decision == MergeDecision::Theirs ? byTheirs
                                                     : merged;
    }
    const std::set<Reference> before = Dangling(sides.ours);
    const std::set<Reference> others = Dangling(sides.theirs);
    for (const Reference& reference : Dangling(merged.session)) {
        if (!before.contains(reference) && !others.contains(reference)) {
            result.conflicts.push_back({{"one side removed what the other refers to, with the id " +
                                         std::to_string(reference.second)},
                                        {}});
        }
    }
    result.session = std::move(merged.session);
    return result;
}

}  // namespace orvo
