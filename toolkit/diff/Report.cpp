#include "toolkit/diff/Report.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <ostream>
#include <string_view>

namespace orvo {
namespace {

std::string_view WordOf(ChangeKind kind) {
    switch (kind) {
        case ChangeKind::Added:
            return "added";
        case ChangeKind::Removed:
            return "removed";
        case ChangeKind::Moved:
            return "moved";
        case ChangeKind::Trimmed:
            return "trimmed";
        case ChangeKind::Split:
            return "split";
        case ChangeKind::Renamed:
            return "renamed";
        case ChangeKind::Faded:
            return "faded";
        case ChangeKind::Automation:
            return "automation";
        case ChangeKind::Routing:
            return "routing";
        case ChangeKind::Parameter:
            return "parameter";
        case ChangeKind::Changed:
            break;
    }
    return "changed";
}

std::string_view WordOf(ChangedThing thing) {
    switch (thing) {
        case ChangedThing::File:
            return "file";
        case ChangedThing::Track:
            return "track";
        case ChangedThing::Clip:
            return "clip";
        case ChangedThing::ClipGroup:
            return "clip group";
        case ChangedThing::VisibilityPreset:
            return "visibility preset";
        case ChangedThing::Port:
            return "port";
        case ChangedThing::Session:
            break;
    }
    return "session";
}

using diff::Subject;

std::string NameOf(const Subject& subject) {
    return subject.name.empty() ? subject.noun : subject.noun + ' ' + subject.name;
}

/// Up to three names, or one that all share.
std::string NamesOf(const std::vector<Subject>& subjects) {
    constexpr std::size_t kMostNames = 3;
    std::vector<std::string> names;
    for (const Subject& subject : subjects) {
        if (std::find(names.begin(), names.end(), subject.name) == names.end()) {
            names.push_back(subject.name);
        }
        if (names.size() > kMostNames) {
            return {};
        }
    }
    if (names.size() > 1 && names.size() < subjects.size()) {
        return {};
    }
    const std::string last = names.back();
    names.pop_back();
    return names.empty() ? (last.empty() ? "" : " " + last)
                         : fmt::format(" {} and {}", fmt::join(names, ", "), last);
}

std::string PlacesOf(const std::vector<Subject>& subjects) {
    std::set<std::string> places;
    for (const Subject& subject : subjects) {
        places.insert(subject.where);
    }
    return places.size() == 1 ? *places.begin() : fmt::format(" on {} tracks", places.size());
}

}  // namespace

std::ostream& operator<<(std::ostream& out, ChangeKind kind) {
    return out << WordOf(kind);
}

std::ostream& operator<<(std::ostream& out, ChangedThing thing) {
    return out << WordOf(thing);
}

std::ostream& operator<<(std::ostream& out, const Change& change) {
    return out << change.sentence;
}

namespace diff {

void Report::Say(const Subject& subject, const Event& event) {
    const Key key(event.kind, subject.thing, subject.before.has_value(), subject.after.has_value(),
                  event.predicate);
    const auto [place, isNew] = places_.try_emplace(key, groups_.size());
    if (isNew) {
        groups_.push_back({event, {}});
    }
    ++eventCount_;
    Group& group = groups_[place->second];
    group.subjects.push_back(subject);
    if (event.from) {
        group.event.from = std::min(*group.event.from, *event.from);
    }
}

std::vector<Change> Report::Take() const {
    std::vector<Change> changes;
    changes.reserve(groups_.size());
    for (const Group& group : groups_) {
        changes.push_back(ChangeOf(group));
    }
    return changes;
}

Change Report::ChangeOf(const Group& group) const {
    const Subject& first = group.subjects.front();
    Change change{.kind = group.event.kind, .thing = first.thing, .count = group.subjects.size()};
    for (const Subject& subject : group.subjects) {
        if (subject.before) {
            change.before.push_back(*subject.before);
        }
        if (subject.after) {
            change.after.push_back(*subject.after);
        }
    }
    if (change.count == 1) {
        change.sentence = NameOf(first) + first.where + group.event.predicate + group.event.detail;
    } else {
        change.sentence =
            fmt::format("{} {}s{}{}{}", change.count, WordOf(first.thing), NamesOf(group.subjects),
                        PlacesOf(group.subjects), group.event.predicate);
        if (group.event.from) {
            change.sentence += ", the first from " + times_.Position(*group.event.from);
        }
    }
    return change;
}

}  // namespace diff
}  // namespace orvo
