#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include <orvo/Diff.h>
#include "toolkit/diff/Times.h"

namespace orvo::diff {

/// The thing of which a change speaks.
struct Subject {
    ChangedThing thing = ChangedThing::Session;
    std::string noun{};                   ///< "bus"
    std::string name{};                   ///< in quotation marks; may be empty
    std::string where{};                  ///< " on track "Drums""
    std::optional<std::string> before{};  ///< its place in the first session; null: it is not there
    std::optional<std::string> after{};
};

/// What happened to a thing.
struct Event {
    ChangeKind kind = ChangeKind::Changed;
    std::string
        predicate{};  ///< with the blank or colon before it; things that share it are said together
    std::string detail{};                ///< what only one thing has
    std::optional<std::int64_t> from{};  ///< where it was, for what moved in time
};

/// Collects what happened, and says it once for all things to which the same happened.
class Report {
public:
    explicit Report(const Times& times) : times_(times) {}

    void Say(const Subject& subject, const Event& event);
    std::size_t EventCount() const { return eventCount_; }
    std::vector<Change> Take() const;

private:
    using Key = std::tuple<ChangeKind, ChangedThing, bool, bool, std::string>;

    struct Group {
        Event event;
        std::vector<Subject> subjects;
    };

    Change ChangeOf(const Group& group) const;

    const Times& times_;
    std::map<Key, std::size_t> places_;
    std::vector<Group> groups_;
    std::size_t eventCount_ = 0;
};

}  // namespace orvo::diff
