#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "platform/kelappsupport/Features.h"
#include "session/json/SessionJson.h"
#include "tests/plugin/RandomSession.h"
#include "tests/plugin/StoredSession.h"
#include "tests/support/SerializerFixture.h"

// Whole sessions, with any value in any field, through the file.

namespace tses {
namespace {

using orvo::Session;

class RoundTrip : public test::SerializerFixture {
protected:
    void SetInstrumentTracks(bool on) {
        kelappsupport::SetFeatureEnabled("Tembra.InstrumentTracks", on);
        serializer.emplace();
    }

    Session ThroughFile(const Session& session) {
        RC_ASSERT(Write(session).ok);
        const test::ReadOutcome outcome = ReadPath(Path());
        RC_ASSERT(outcome.ok);
        return outcome.session;
    }
};

RC_GTEST_FIXTURE_PROP(RoundTrip, OfAnySessionKeepsAllThatTheFormatKeeps, ()) {
    const Session session = test::DrawSession();
    RC_ASSERT(ThroughFile(session) == test::Stored(session, true));
}

RC_GTEST_FIXTURE_PROP(RoundTrip, WithoutInstrumentTracksKeepsAllButTheirs, ()) {
    SetInstrumentTracks(false);
    const Session session = test::DrawSession();
    RC_ASSERT(ThroughFile(session) == test::Stored(session, false));
}

RC_GTEST_FIXTURE_PROP(RoundTrip, OfWhatWasReadBackWritesTheSameBytes, ()) {
    const Session session = ThroughFile(test::DrawSession());
    const auto first = Write(session).file;
    const Session again = ThroughFile(session);
    RC_ASSERT(again == test::Stored(session, true));
    RC_ASSERT(Write(again).file == first);
}

RC_GTEST_FIXTURE_PROP(RoundTrip, FromJsonThroughTheFileToJsonIsTheSame, ()) {
    // A send list with only missing slots is stored as an empty list, and an empty list is not
    // stored.
    const Session stored = test::Stored(test::Stored(test::DrawSession(), true), true);
    const std::string json = orvo::ToJson(stored);
    const Session session = orvo::json::Parse(json);
    RC_ASSERT(orvo::ToJson(ThroughFile(session)) == json);
}

}  // namespace
}  // namespace tses
