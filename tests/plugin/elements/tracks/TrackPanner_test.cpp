#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "reference_host/SessionNode.h"
#include "tests/plugin/elements/ElementFixture.h"
#include "tests/support/SerializerTestAccess.h"

namespace tses {
namespace {

using testing::HasSubstr;
using testing::Not;

class TrackPanner : public test::ElementFixture {};

TEST_F(TrackPanner, LeavesTheTrackUnchangedWhateverItSays) {
    EXPECT_EQ(CallsInTrack("<trackAudioParameters><trackPanner angle='1' balanceLeftRight='0,5' "
                           "panLeftRight='x' radius='-2' stereoSpread='3'>"
                           "<fivePointOneLeft/><fivePointOneLFE/></trackPanner>"
                           "</trackAudioParameters>"),
              CallsInTrack("<trackAudioParameters/>"));
}

TEST_F(TrackPanner, IsNeverWritten) {
    ReadInTrack("<trackAudioParameters><trackPanner angle='1'/></trackAudioParameters>");
    EXPECT_THAT(*Write(WithTrack({})).file, Not(HasSubstr("trackPanner")));
}

/// What the track's record holds after a panner with these attributes.
TrackPannerRecord RecordAfter(TagAttributes attributes) {
    Serializer::Impl impl{WriterFault{}, MakeDomDocument};
    SAXContentHandler& events = SerializerTestAccess::Content(impl);
    const auto session = refhost::SessionNode::Make();
    SerializerTestAccess::Attach(impl, &session->Edit());
    events.StartElementEvent(u"", u"orvo", u"orvo", {});
    events.StartElementEvent(u"", u"session", u"session", {});
    events.StartElementEvent(u"", u"tracks", u"tracks", {});
    events.StartElementEvent(u"", u"audioTrack", u"audioTrack", {{u"id", u"1"}});
    events.StartElementEvent(u"", u"trackAudioParameters", u"trackAudioParameters", {});
    events.StartElementEvent(u"", u"trackPanner", u"trackPanner", attributes);
    return SerializerTestAccess::Tracks(impl).pending.panner;
}

TEST_F(TrackPanner, IsReadIntoTheTracksRecord) {
    const TrackPannerRecord record = RecordAfter({{u"angle", u"1.5"},
                                                  {u"panLeftRight", u"-0,5"},
                                                  {u"radius", u"2"},
                                                  {u"stereoSpread", u"x"}});
    EXPECT_EQ(record.angle, 1.5F);
    EXPECT_EQ(record.panLeftRight, -0.5F);
    EXPECT_EQ(record.radius, 2.0F);
    EXPECT_EQ(record.stereoSpread, 0.0F);
}

TEST_F(TrackPanner, TheBalanceIsAnotherNameForThePanAndThePanWins) {
    EXPECT_EQ(RecordAfter({{u"balanceLeftRight", u"0.25"}}).panLeftRight, 0.25F);
    EXPECT_EQ(
        RecordAfter({{u"panLeftRight", u"0.75"}, {u"balanceLeftRight", u"0.25"}}).panLeftRight,
        0.75F);
}

}  // namespace
}  // namespace tses
