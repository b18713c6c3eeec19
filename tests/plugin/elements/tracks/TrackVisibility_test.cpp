#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::Session;
using testing::AnyOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class TrackVisibility : public test::ElementFixture {};

TEST_F(TrackVisibility, APresetReachesTheHostWithItsTracksInOrder) {
    EXPECT_THAT(
        CallsIn("<trackVisibilityPresets><trackVisibilityPreset id='4' name='Voices'>"
                "<trackVisibility id='9' trackHeight='64.5' trackMinimized='true'/>"
                "<trackVisibility id='2' trackHeight='-1'/></trackVisibilityPreset>"
                "<trackVisibilityPreset id='3'/></trackVisibilityPresets>"),
        ElementsAre("IEditSession#1.CreateTrackVisibilityPreset() -> IEditTrackVisibilityPreset#2",
                    "IEditTrackVisibilityPreset#2.SetId(4)",
                    "IEditTrackVisibilityPreset#2.SetName(\"Voices\")",
                    "IEditTrackVisibilityPreset#2.AddTrack(9,64.5,true)",
                    "IEditTrackVisibilityPreset#2.AddTrack(2,-1,false)",
                    "IEditSession#1.CreateTrackVisibilityPreset() -> IEditTrackVisibilityPreset#3",
                    "IEditTrackVisibilityPreset#3.SetId(3)",
                    "IEditTrackVisibilityPreset#3.SetName(\"\")"));
}

TEST_F(TrackVisibility, MissingAttributesAreZeroEmptyAndFalse) {
    EXPECT_THAT(
        CallsIn("<trackVisibilityPresets><trackVisibilityPreset><trackVisibility/>"
                "</trackVisibilityPreset></trackVisibilityPresets>"),
        ElementsAre("IEditSession#1.CreateTrackVisibilityPreset() -> IEditTrackVisibilityPreset#2",
                    "IEditTrackVisibilityPreset#2.SetId(0)",
                    "IEditTrackVisibilityPreset#2.SetName(\"\")",
                    "IEditTrackVisibilityPreset#2.AddTrack(0,0,false)"));
}

TEST_F(TrackVisibility, NoPresetReachesTheHostBeforeTheListEnds) {
    const auto outcome = ReadInRoot(
        "<session><trackVisibilityPresets><trackVisibilityPreset id='4'/></wrong></session>");
    EXPECT_FALSE(outcome.ok);
    EXPECT_THAT(CallsOf(outcome.calls, "CreateTrackVisibilityPreset"), IsEmpty());
}

TEST_F(TrackVisibility, MinimizedIsOnOnlyForTheExactTextTrue) {
    for (const std::string text : {"TRUE", "1", ""}) {
        EXPECT_THAT(CallsIn("<trackVisibilityPresets><trackVisibilityPreset>"
                            "<trackVisibility trackMinimized='" +
                            text + "'/></trackVisibilityPreset></trackVisibilityPresets>")
                        .back(),
                    "IEditTrackVisibilityPreset#2.AddTrack(0,0,false)");
    }
}

TEST_F(TrackVisibility, NumbersThatDoNotParseAreZero) {
    EXPECT_THAT(CallsIn("<trackVisibilityPresets><trackVisibilityPreset id='x'>"
                        "<trackVisibility id='-' trackHeight='high'/></trackVisibilityPreset>"
                        "</trackVisibilityPresets>")
                    .back(),
                "IEditTrackVisibilityPreset#2.AddTrack(0,0,false)");
}

TEST_F(TrackVisibility, AHeightWithADecimalCommaIsNoNumber) {
    EXPECT_THAT(CallsIn("<trackVisibilityPresets><trackVisibilityPreset>"
                        "<trackVisibility id='1' trackHeight='64,5'/></trackVisibilityPreset>"
                        "</trackVisibilityPresets>")
                    .back(),
                "IEditTrackVisibilityPreset#2.AddTrack(1,0,false)");
}

TEST_F(TrackVisibility, ATrackOutsideOfAnyPresetIsIgnored) {
    EXPECT_THAT(
        CallsIn("<trackVisibilityPresets><trackVisibility id='9'/></trackVisibilityPresets>"),
        IsEmpty());
}

TEST_F(TrackVisibility, AnEmptyListCreatesNothing) {
    EXPECT_THAT(CallsIn("<trackVisibilityPresets/>"), IsEmpty());
}

TEST_F(TrackVisibility, ASecondListDoesNotRepeatTheFirst) {
    const std::string list =
        "<trackVisibilityPresets><trackVisibilityPreset id='4'/></trackVisibilityPresets>";
    EXPECT_THAT(CallsOf(CallsIn(list + list), "CreateTrackVisibilityPreset"), testing::SizeIs(2));
}

TEST_F(TrackVisibility, APresetThatTheHostDoesNotCreateIsDropped) {
    EXPECT_THAT(CallsIn("<trackVisibilityPresets><trackVisibilityPreset id='4'>"
                        "<trackVisibility/></trackVisibilityPreset></trackVisibilityPresets>",
                        Null("IEditSession.CreateTrackVisibilityPreset")),
                ElementsAre("IEditSession#1.CreateTrackVisibilityPreset() -> null"));
}

// Writing

Session SampleOfPresets() {
    Session session;
    session.trackVisibilityPresets = {{4, "Voices", {{9, 64.5F, true}, {2, -1, false}}},
                                      {3, "", {}}};
    return session;
}

TEST_F(TrackVisibility, AreWrittenWithTheNameUnlessEmptyAndMinimizedOnlyWhenOn) {
    EXPECT_EQ(WrittenElement("trackVisibilityPresets", SampleOfPresets()),
              "<trackVisibilityPresets>\n"
              "  <trackVisibilityPreset id=\"4\" name=\"Voices\">\n"
              "    <trackVisibility id=\"9\" trackHeight=\"64.5\" trackMinimized=\"true\"/>\n"
              "    <trackVisibility id=\"2\" trackHeight=\"-1\"/>\n"
              "  </trackVisibilityPreset>\n"
              "  <trackVisibilityPreset id=\"3\"/>\n"
              "</trackVisibilityPresets>");
}

TEST_F(TrackVisibility, IdsBeyondTheSignedRangeAreWrittenUnsigned) {
    Session session;
    session.trackVisibilityPresets = {{4294967294, "", {{4294967293, 1, false}}}};
    EXPECT_EQ(WrittenElement("trackVisibilityPresets", session),
              "<trackVisibilityPresets>\n"
              "  <trackVisibilityPreset id=\"4294967294\">\n"
              "    <trackVisibility id=\"4294967293\" trackHeight=\"1\"/>\n"
              "  </trackVisibilityPreset>\n"
              "</trackVisibilityPresets>");
}

TEST_F(TrackVisibility, ASessionWithoutPresetsHasNoElement) {
    EXPECT_THAT(*Write({}).file, Not(HasSubstr("trackVisibilityPresets")));
}

TEST_F(TrackVisibility, IsTheLastChildOfTheSession) {
    EXPECT_THAT(*Write(SampleOfPresets()).file,
                HasSubstr("</trackVisibilityPresets>\n  </session>"));
}

TEST_F(TrackVisibility, TheHostIsAskedForEverythingBeforeAnythingIsWritten) {
    const std::string queries = "IQueryTrackVisibilityPreset#";
    const std::size_t all = CallsOf(Write(SampleOfPresets()).calls, queries).size();
    for (std::size_t operation = 0;; ++operation) {
        const auto outcome = WriteWithFault(SampleOfPresets(), operation);
        EXPECT_THAT(CallsOf(outcome.calls, queries).size(), AnyOf(0u, all)) << operation;
        if (outcome.ok) {
            break;
        }
    }
}

TEST_F(TrackVisibility, APresetThatTheHostReportsAsNullIsSkipped) {
    EXPECT_EQ(WrittenElement("trackVisibilityPresets", SampleOfPresets(),
                             Null("IQuerySession.GetTrackVisibilityPreset")),
              "");
}

TEST_F(TrackVisibility, SurvivesAWriteAndARead) {
    EXPECT_EQ(ThroughFile(SampleOfPresets()).trackVisibilityPresets,
              SampleOfPresets().trackVisibilityPresets);
}

}  // namespace
}  // namespace tses
