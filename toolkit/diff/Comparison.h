#pragma once

#include <optional>
#include <string>
#include <utility>

#include <orvo/Diff.h>
#include <orvo/Lookup.h>
#include "toolkit/diff/Members.h"
#include "toolkit/diff/Names.h"
#include "toolkit/diff/Report.h"
#include "toolkit/diff/Times.h"

namespace orvo::diff {

/// Two sessions with the same ids for the same things, and what was found of them.
struct Comparison {
    Comparison(const Session& one, const Session& other, const SessionMatch& sameThings,
               ChangeTimes times)
        : before(one),
          after(other),
          match(sameThings),
          beforeTimes(one, times),
          afterTimes(other, times),
          beforeIndex(one),
          afterIndex(other) {}
    Comparison(const Comparison&) = delete;
    Comparison& operator=(const Comparison&) = delete;

    Members MembersOf(Subject subject) {
        return {report, beforeTimes, afterTimes, std::move(subject)};
    }

    const Session& before;
    const Session& after;
    const SessionMatch& match;
    const Times beforeTimes;
    const Times afterTimes;
    const SessionIndex beforeIndex;
    const SessionIndex afterIndex;
    Report report{beforeTimes};
};

// What is compared, each in a file of its own

void CompareSession(Comparison& sessions);
void CompareFiles(Comparison& sessions);
void CompareTracks(Comparison& sessions);
void CompareClips(Comparison& sessions);

/// Compares clip groups, visibility presets and ports.
void CompareLists(Comparison& sessions);

/// Compares inputs, outputs and sends.
void CompareRouting(const Comparison& sessions, const Members& members, const AudioTrack& before,
                    const AudioTrack& after);

// What several of them say

inline Subject SessionSubject() {
    return {ChangedThing::Session, "session", "", "", "", ""};
}

template <class Track>
Subject SubjectOf(const Track& track, std::optional<std::string> before,
                  std::optional<std::string> after) {
    return {ChangedThing::Track, NounOf(track),   NameOrId(track), "",
            std::move(before),   std::move(after)};
}

inline void Rename(const Members& members, const std::string& before, const std::string& after) {
    if (before != after) {
        members.Say(ChangeKind::Renamed, " renamed to " + Quoted(after));
    }
}

/// Whether what is the same has the same order in both lists.
bool KeepsAll(const ListMatch& match);

/// Says that a list has another order.
void CompareOrder(Comparison& sessions, const ListMatch& match, const char* what);

}  // namespace orvo::diff
