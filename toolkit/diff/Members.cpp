#include "toolkit/diff/Members.h"

#include <fmt/format.h>

#include <algorithm>

#include <orvo/Diff.h>
#include "toolkit/diff/Order.h"

namespace orvo::diff {
namespace {

// Keyframes

/// How keyframes differ, and where the first and the last that do are.
class KeyframeCount {
public:
    void Added(const Keyframe& keyframe) { Count(added_, keyframe); }
    void Removed(const Keyframe& keyframe) { Count(removed_, keyframe); }
    void Changed(const Keyframe& keyframe) { Count(changed_, keyframe); }

    /// "3 keyframes changed and 1 added between A and B".
    std::string Sentence(const Times& times) const {
        std::vector<std::string> parts;
        std::size_t total = 0;
        for (const auto& [count, word] :
             {std::pair(changed_, "changed"), std::pair(added_, "added"),
              std::pair(removed_, "removed")}) {
            if (count != 0) {
                const char* const noun = count == 1 ? " keyframe" : " keyframes";
                parts.push_back(fmt::format("{}{} {}", count, parts.empty() ? noun : "", word));
                total += count;
            }
        }
        const std::string where = first_ == last_ ? " at " + times.Position(first_)
                                                  : " between " + times.Position(first_) + " and " +
                                                        times.Position(last_);
        return total == 0 ? "keyframes in another order"
                          : fmt::format("{}{}", fmt::join(parts, ", "), where);
    }

private:
    void Count(std::size_t& count, const Keyframe& keyframe) {
        const bool isFirst = added_ + removed_ + changed_ == 0;
        first_ = isFirst ? keyframe.sampleOffset : std::min(first_, keyframe.sampleOffset);
        last_ = isFirst ? keyframe.sampleOffset : std::max(last_, keyframe.sampleOffset);
        ++count;
    }

    std::size_t added_ = 0;
    std::size_t removed_ = 0;
    std::size_t changed_ = 0;
    std::int64_t first_ = 0;
    std::int64_t last_ = 0;
};

using Keyframes = std::vector<Keyframe>;

/// The keyframes between what is alike at both ends, in the order of time.
std::pair<Keyframes, Keyframes> Middles(const Keyframes& one, const Keyframes& other) {
    const std::size_t shorter = std::min(one.size(), other.size());
    std::size_t begin = 0;
    while (begin < shorter && IsSame(one[begin], other[begin])) {
        ++begin;
    }
    std::size_t end = 0;
    while (end < shorter - begin &&
           IsSame(one[one.size() - 1 - end], other[other.size() - 1 - end])) {
        ++end;
    }
    const auto middle = [&](const Keyframes& list) {
        Keyframes part(list.begin() + static_cast<std::ptrdiff_t>(begin),
                       list.end() - static_cast<std::ptrdiff_t>(end));
        std::stable_sort(part.begin(), part.end(), [](const Keyframe& a, const Keyframe& b) {
            return a.sampleOffset < b.sampleOffset;
        });
        return part;
    };
    return {middle(one), middle(other)};
}

KeyframeCount CountKeyframes(const Keyframes& one, const Keyframes& other) {
    const auto [before, after] = Middles(one, other);
    KeyframeCount count;
    auto mine = before.begin();
    auto others = after.begin();
    while (mine != before.end() || others != after.end()) {
        const bool onlyMine = others == after.end() ||
                              (mine != before.end() && mine->sampleOffset < others->sampleOffset);
        const bool onlyOthers = mine == before.end() || (others != after.end() &&
                                                         others->sampleOffset < mine->sampleOffset);
        if (onlyMine) {
            count.Removed(*mine++);
        } else if (onlyOthers) {
            count.Added(*others++);
        } else {
            if (!IsSame(*mine, *others)) {
                count.Changed(*others);
            }
            ++mine;
            ++others;
        }
    }
    return count;
}

// Effects

std::string NameOf(const EffectsSlot& slot) {
    if (!slot.component) {
        return fmt::format("empty slot {}", slot.slotIndex);
    }
    const Component& effect = *slot.component;
    return "effect " + Quoted(effect.name.empty() ? effect.componentId : effect.name);
}

std::string NameOf(std::uint32_t index, const Parameter& parameter) {
    return parameter.name.empty() ? fmt::format("parameter {}", index) : Quoted(parameter.name);
}

/// With the channels that feed themselves, up to the highest.
std::map<std::uint32_t, std::int32_t> Complete(
    std::map<std::uint32_t, std::int32_t> sources,
    const std::map<std::uint32_t, std::int32_t>& counterpart) {
    for (const auto& [channel, source] : counterpart) {
        if (!sources.empty() && channel < sources.rbegin()->first) {
            sources.try_emplace(channel, static_cast<std::int32_t>(channel));
        }
    }
    return sources;
}

}  // namespace

std::vector<bool> KeepsOrder(const ListMatch& match) {
    std::vector<std::size_t> sequence;
    for (const auto& [before, after] : match.same) {
        sequence.push_back(after);
    }
    return KeepsOrder(sequence);
}

void Members::FromTo(const std::string& label, const std::string& one,
                     const std::string& other) const {
    Say(kind_, one == other ? fmt::format(": {} changed", label)
                            : fmt::format(": {} from {} to {}", label, one, other));
}

void Members::Compare(const std::string& label, const std::vector<std::uint8_t>& one,
                      const std::vector<std::uint8_t>& other) const {
    if (one != other) {
        Say(kind_,
            fmt::format(": {} changed, from {} to {} bytes", label, one.size(), other.size()));
    }
}

void Members::Compare(const std::string& label, const std::map<std::uint32_t, std::int32_t>& one,
                      const std::map<std::uint32_t, std::int32_t>& other) const {
    const auto before = Complete(one, other);
    const auto after = Complete(other, one);
    if (before != after) {
        FromTo(label, Shown(before), Shown(after));
    }
}

void Members::Compare(const std::string& label, const Component& one,
                      const Component& other) const {
    const bool isControl = one.parameters.size() == 1 && other.parameters.size() == 1;
    const auto inner = [&](std::uint32_t index, const Parameter& parameter) {
        return isControl ? label : label + ' ' + NameOf(index, parameter);
    };
    for (const auto& [index, parameter] : one.parameters) {
        if (const auto found = other.parameters.find(index); found == other.parameters.end()) {
            Say(ChangeKind::Parameter, ": " + label + ' ' + NameOf(index, parameter) + " removed");
        } else if (!IsSame(parameter, found->second)) {
            Compare(inner(index, parameter), parameter, found->second);
        }
    }
    for (const auto& [index, parameter] : other.parameters) {
        if (!one.parameters.contains(index)) {
            Say(ChangeKind::Parameter, ": " + label + ' ' + NameOf(index, parameter) + " added");
        }
    }
    Rest(label, one, other, &Component::parameters);
}

void Members::Compare(const std::string& label, const Parameter& one,
                      const Parameter& other) const {
    if (one.value && other.value && !IsSame(*one.value, *other.value)) {
        Say(ChangeKind::Parameter,
            fmt::format(": {} from {} to {}", label, Shown(*one.value), Shown(*other.value)));
    } else {
        Compare(label + " value", one.value, other.value);
    }
    if (!IsSame(one.automation, other.automation)) {
        Compare("automation of " + label, one.automation, other.automation);
    }
    Rest(label, one, other, &Parameter::value, &Parameter::automation);
}

void Members::Compare(const std::string& label, const std::optional<AutomationLane>& one,
                      const std::optional<AutomationLane>& other) const {
    CompareHeld(ChangeKind::Automation, label, one, other);
}

void Members::Compare(const std::string& label, const std::optional<EffectsRack>& one,
                      const std::optional<EffectsRack>& other) const {
    CompareHeld(ChangeKind::Changed, label, one, other);
}

void Members::Compare(const std::string& label, const AutomationLane& one,
                      const AutomationLane& other) const {
    if (!IsSame(one.keyframes, other.keyframes)) {
        Say(ChangeKind::Automation,
            fmt::format(": {}: {}", label,
                        CountKeyframes(one.keyframes, other.keyframes).Sentence(after_)));
    }
    Rest(label, one, other, &AutomationLane::keyframes);
}

void Members::Compare(const std::string& label, const EffectsRack& one,
                      const EffectsRack& other) const {
    Rest(label, one, other, &EffectsRack::slots, &EffectsRack::mix, &EffectsRack::input,
         &EffectsRack::output);
    Rest("", one, other, &EffectsRack::slots, &EffectsRack::preFader);
    CompareEffects(one, other);
}

void Members::CompareEffects(const EffectsRack& one, const EffectsRack& other) const {
    const ListMatch match = MatchEffects(one, other);
    for (const std::size_t slot : match.removed) {
        Say(ChangeKind::Removed, ": " + NameOf(*one.slots[slot]) + " removed");
    }
    for (const std::size_t slot : match.added) {
        Say(ChangeKind::Added, ": " + NameOf(*other.slots[slot]) + " added",
            fmt::format(" in slot {}", other.slots[slot]->slotIndex));
    }
    const std::vector<bool> keeps = KeepsOrder(match);
    const bool isAllThere = match.removed.empty() && match.added.empty();
    for (std::size_t i = 0; i < keeps.size(); ++i) {
        const EffectsSlot& before = *one.slots[match.same[i].first];
        const EffectsSlot& after = *other.slots[match.same[i].second];
        const bool hasOtherNumber = before.slotIndex != after.slotIndex;
        const bool isOrdered = std::find(keeps.begin(), keeps.end(), false) == keeps.end();
        ComparePairOfSlots(before, after, !keeps[i] || (isAllThere && isOrdered && hasOtherNumber));
    }
}

void Members::ComparePairOfSlots(const EffectsSlot& one, const EffectsSlot& other,
                                 bool hasMoved) const {
    const std::string label = NameOf(one);
    if (hasMoved) {
        Say(ChangeKind::Moved, one.slotIndex == other.slotIndex
                                   ? fmt::format(": {} moved in the rack", label)
                                   : fmt::format(": {} moved from slot {} to slot {}", label,
                                                 one.slotIndex, other.slotIndex));
    }
    if (one.component && other.component) {
        Compare(label, *one.component, *other.component);
    }
    Rest(label, one, other, &EffectsSlot::component, &EffectsSlot::slotIndex);
}

}  // namespace orvo::diff
