#include "cli/terminal/Suggestions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using cli::NearMatches;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const std::vector<std::string> kNames = {"IEditSession.GetFile", "IEditSession.GetLogTarget",
                                         "IEditSession.GetVideoTrack"};

TEST(NearMatches, FindsATypingError) {
    EXPECT_THAT(NearMatches("IEditSesion.GetFiel", kNames), ElementsAre("IEditSession.GetFile"));
}

TEST(NearMatches, IgnoresCase) {
    EXPECT_THAT(NearMatches("ieditsession.getfile", kNames, 1),
                ElementsAre("IEditSession.GetFile"));
}

TEST(NearMatches, ANameThatDiffersInCaseOnlyIsAlone) {
    const std::vector<std::string> verbs = {"collect", "convert"};
    EXPECT_THAT(NearMatches("Convert", verbs), ElementsAre("convert"));
    EXPECT_THAT(NearMatches("Colvert", verbs), ElementsAre("convert", "collect"));
}

TEST(NearMatches, FindsAPartOfAName) {
    EXPECT_THAT(NearMatches("LogTarget", kNames), ElementsAre("IEditSession.GetLogTarget"));
}

TEST(NearMatches, FindsNothingForAnUnrelatedText) {
    EXPECT_THAT(NearMatches("Zanzibar", kNames), IsEmpty());
    EXPECT_THAT(NearMatches("", kNames), IsEmpty());
}

TEST(NearMatches, FindsNothingIfAShortTextDiffersMostly) {
    const std::vector<std::string> verbs = {"info", "trace"};
    EXPECT_THAT(NearMatches("sing", verbs), IsEmpty());
    EXPECT_THAT(NearMatches("x", verbs), IsEmpty());
    EXPECT_THAT(NearMatches("inof", verbs), ElementsAre("info"));
    EXPECT_THAT(NearMatches("ifo", verbs), ElementsAre("info"));
}

TEST(NearMatches, RespectsTheLimit) {
    EXPECT_THAT(NearMatches("IEditSession", kNames, 2), testing::SizeIs(2));
}

}  // namespace
