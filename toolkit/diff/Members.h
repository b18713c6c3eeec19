#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include <orvo/Session.h>
#include "session/Schema.h"
#include "toolkit/diff/Report.h"
#include "toolkit/diff/Times.h"
#include "toolkit/diff/Values.h"

/// Members compared by the model's rows: what is said of everything that has no sentence of its
/// own.
namespace orvo::diff {

/// Members that are positions in samples.
inline constexpr std::tuple kPositions{&Session::ctiPosition, &Selection::start,
                                       &ViewState::horizontalViewStart};

/// Members that are lengths in samples.
inline constexpr std::tuple kLengths{&Session::duration, &Selection::duration,
                                     &ViewState::horizontalViewDuration};

template <class One, class Other>
constexpr bool IsSameMember(One one, Other other) {
    if constexpr (std::is_same_v<One, Other>) {
        return one == other;
    } else {
        return false;
    }
}

/// Whether a member has the type of positions and lengths.
template <class Member>
inline constexpr bool kIsTime = false;
template <class Struct>
inline constexpr bool kIsTime<std::int64_t Struct::*> = true;

template <class Member>
constexpr bool IsIn(Member member, const auto& members) {
    return std::apply([&](auto... each) { return (IsSameMember(member, each) || ...); }, members);
}

/// Whether values are equal if a NaN is the same as a NaN.
template <class Value>
bool IsSame(const Value& one, const Value& other) {
    if constexpr (std::is_floating_point_v<Value>) {
        return one == other || (std::isnan(one) && std::isnan(other));
    } else if constexpr (HasSchema<Value>) {
        return one == other || AllOfRows<Value>([&](const auto& row) {
                   return IsSame(one.*row.member, other.*row.member);
               });
    } else {
        return one == other;
    }
}
template <class Held>
bool IsSame(const std::optional<Held>& one, const std::optional<Held>& other) {
    return one && other ? IsSame(*one, *other) : !one == !other;
}
template <class Element>
bool IsSame(const std::vector<Element>& one, const std::vector<Element>& other) {
    return one == other ||
           (one.size() == other.size() &&
            std::equal(one.begin(), one.end(), other.begin(),
                       [](const Element& a, const Element& b) { return IsSame(a, b); }));
}
template <class Held>
bool IsSame(const std::map<std::uint32_t, Held>& one, const std::map<std::uint32_t, Held>& other) {
    return one == other ||
           (one.size() == other.size() &&
            std::equal(one.begin(), one.end(), other.begin(), [](const auto& a, const auto& b) {
                return a.first == b.first && IsSame(a.second, b.second);
            }));
}

/// Says what differs between two values of one thing.
class Members {
public:
    Members(Report& report, const Times& before, const Times& after, Subject subject,
            ChangeKind kind = ChangeKind::Changed)
        : report_(report),
          before_(before),
          after_(after),
          subject_(std::move(subject)),
          kind_(kind) {}

    void Say(ChangeKind kind, std::string predicate, std::string detail = {}) const {
        report_.Say(subject_, {kind, std::move(predicate), std::move(detail), {}});
    }

    /// Compares the members of a struct that are not among the handled ones.
    template <class Struct, class... Handled>
    void Rest(const std::string& label, const Struct& one, const Struct& other,
              Handled... handled) const {
        const auto compare = [&](const auto& row) {
            if ((IsSameMember(row.member, handled) || ...) ||
                IsSame(one.*row.member, other.*row.member)) {
                return;
            }
            const std::string inner = Joined(label, InWords(row.key));
            if constexpr (kIsTime<std::remove_const_t<decltype(row.member)>>) {
                if (IsIn(row.member, kPositions)) {
                    FromTo(inner, before_.Position(one.*row.member),
                           after_.Position(other.*row.member));
                    return;
                }
                if (IsIn(row.member, kLengths)) {
                    FromTo(inner, before_.Length(one.*row.member),
                           after_.Length(other.*row.member));
                    return;
                }
            }
            Compare(inner, one.*row.member, other.*row.member);
        };
        ForEachRow<Struct>(compare);
    }

    template <class Value>
    void Compare(const std::string& label, const Value& one, const Value& other) const {
        if constexpr (HasSchema<Value>) {
            Rest(label, one, other);
        } else if (!IsSame(one, other)) {
            FromTo(label, Shown(one), Shown(other));
        }
    }

    void Compare(const std::string& label, const std::vector<std::uint8_t>& one,
                 const std::vector<std::uint8_t>& other) const;
    void Compare(const std::string& label, const Component& one, const Component& other) const;
    void Compare(const std::string& label, const Parameter& one, const Parameter& other) const;
    void Compare(const std::string& label, const AutomationLane& one,
                 const AutomationLane& other) const;
    void Compare(const std::string& label, const std::optional<AutomationLane>& one,
                 const std::optional<AutomationLane>& other) const;
    void Compare(const std::string& label, const EffectsRack& one, const EffectsRack& other) const;
    void Compare(const std::string& label, const std::optional<EffectsRack>& one,
                 const std::optional<EffectsRack>& other) const;
    /// A channel that feeds itself may be left out.
    void Compare(const std::string& label, const std::map<std::uint32_t, std::int32_t>& one,
                 const std::map<std::uint32_t, std::int32_t>& other) const;

    template <class Element>
    void Compare(const std::string& label, const std::vector<Element>& one,
                 const std::vector<Element>& other) const {
        if (!IsSame(one, other)) {
            FromTo(label, Shown(one), Shown(other));
        }
    }

    template <class Held>
    void Compare(const std::string& label, const std::optional<Held>& one,
                 const std::optional<Held>& other) const {
        if (one && other) {
            Compare(label, *one, *other);
        } else if (one || other) {
            Say(kind_, ": " + label + (one ? " removed" : " added"));
        }
    }

    void FromTo(const std::string& label, const std::string& one, const std::string& other) const;

private:
    /// A thing that is not there compares as an empty one, unless nothing else tells them apart.
    template <class Held>
    void CompareHeld(ChangeKind kind, const std::string& label, const std::optional<Held>& one,
                     const std::optional<Held>& other) const {
        const Held none;
        const std::size_t said = report_.EventCount();
        Compare(label, one ? *one : none, other ? *other : none);
        if (one.has_value() != other.has_value() && report_.EventCount() == said) {
            Say(kind, ": " + label + (one ? " removed" : " added"));
        }
    }
    static std::string Joined(const std::string& label, const std::string& inner) {
        return label.empty() ? inner : label + ' ' + inner;
    }
    void CompareEffects(const EffectsRack& one, const EffectsRack& other) const;
    void ComparePairOfSlots(const EffectsSlot& one, const EffectsSlot& other, bool hasMoved) const;

    Report& report_;
    const Times& before_;
    const Times& after_;
    Subject subject_;
    ChangeKind kind_;
};

/// Same order as in `match.same`: whether a pair keeps its order in the second list.
std::vector<bool> KeepsOrder(const ListMatch& match);

}  // namespace orvo::diff
