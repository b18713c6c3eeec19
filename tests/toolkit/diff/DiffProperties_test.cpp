#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include <orvo/Diff.h>
#include <orvo/Differences.h>
#include <orvo/Json.h>
#include <orvo/Merge.h>
#include "tests/plugin/RandomSession.h"

namespace {

using nlohmann::json;
using orvo::Session;

/// Whether two sessions are the same though a NaN is not equal to itself.
bool AreAlike(const Session& one, const Session& other) {
    return orvo::ToJson(one, {.full = true}) == orvo::ToJson(other, {.full = true});
}

/// Another value for one member of a session, at any depth.
Session DrawEdited(const Session& session) {
    json document = json::parse(orvo::ToJson(session, {.full = true}));
    std::vector<json::json_pointer> leaves;
    const json flat = document.flatten();
    for (const auto& [path, value] : flat.items()) {
        if (value.is_number_integer() || value.is_boolean()) {
            leaves.emplace_back(path);
        }
    }
    const auto& path = leaves[*rc::gen::inRange<std::size_t>(0, leaves.size())];
    json& value = document[path];
    value = value.is_boolean() ? json(!value.get<bool>()) : json(value == 1 ? 2 : 1);
    const orvo::ReadResult read = orvo::FromJson(document.dump());
    return read ? read.session : session;
}

RC_GTEST_PROP(DiffProperties, ASessionHasNoChangesToItself, ()) {
    const Session session = test::DrawSession();
    RC_ASSERT(orvo::FindChanges(session, session).empty());
    RC_ASSERT(orvo::JsonPatch(session, session) == "[]");
}

RC_GTEST_PROP(DiffProperties, APatchTurnsOneSessionIntoTheOther, ()) {
    const Session before = test::DrawSession();
    const Session after = *rc::gen::arbitrary<bool>() ? test::DrawSession() : DrawEdited(before);
    const json patch = json::parse(orvo::JsonPatch(before, after));
    for (const bool isFull : {true, false}) {
        const json document = json::parse(orvo::ToJson(before, {.full = isFull}));
        const orvo::ReadResult read = orvo::FromJson(document.patch(patch).dump());
        RC_ASSERT(bool(read));
        RC_ASSERT(AreAlike(read.session, after));
    }
}

/// What the comparison member by member finds once ids mean the same, the words tell too.
RC_GTEST_PROP(DiffProperties, NothingIsPassedOver, ()) {
    const Session before = test::DrawSession();
    const Session after = DrawEdited(before);
    const Session numbered = orvo::NumberedLike(before, orvo::MatchSessions(before, after), after);
    const orvo::Differences differences = orvo::FindDifferences(numbered, after, 1);
    if (differences.count != 0) {
        RC_LOG() << differences.list[0] << '\n';
        RC_ASSERT(!orvo::FindChanges(before, after).empty());
    }
}

RC_GTEST_PROP(DiffProperties, MatchesEachThingOnce, ()) {
    const Session before = test::DrawSession();
    const Session after = test::DrawSession();
    const orvo::SessionMatch match = orvo::MatchSessions(before, after);
    RC_ASSERT(match.files.same.size() + match.files.removed.size() == before.files.size());
    RC_ASSERT(match.files.same.size() + match.files.added.size() == after.files.size());
    std::size_t clips = 0;
    for (const orvo::VideoTrack& track : before.videoTracks) {
        clips += track.clips.size();
    }
    RC_ASSERT(match.videoClips.same.size() + match.videoClips.removed.size() == clips);
}

/// Whatever the sides changed, and also if they conflict.
RC_GTEST_PROP(DiffProperties, AMergeDoesNotDependOnTheOrderOfItsSides, ()) {
    const Session base = test::DrawSession();
    const Session ours = DrawEdited(base);
    const Session theirs = DrawEdited(base);
    const orvo::MergeResult merged = orvo::MergeSessions(base, ours, theirs);
    const orvo::MergeResult swapped = orvo::MergeSessions(base, theirs, ours);
    RC_ASSERT(orvo::FindChanges(merged.session, swapped.session).empty());
    RC_ASSERT(merged.conflicts.size() == swapped.conflicts.size());
}

}  // namespace
