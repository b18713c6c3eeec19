#include "plugin/xml/XercesPlatform.h"

#include <gtest/gtest.h>

namespace tses {
namespace {

TEST(XercesPlatform, StoppingWhatIsNotStartedChangesNothing) {
    StopXerces();
    EXPECT_FALSE(IsXercesStarted());
    EXPECT_TRUE(StartXerces());
    EXPECT_TRUE(IsXercesStarted());
    StopXerces();
    EXPECT_FALSE(IsXercesStarted());
}

TEST(XercesPlatform, AMessageThatIsMissingIsAnEmptyText) {
    EXPECT_EQ(TranscodeMessage(nullptr), "");
    EXPECT_EQ(TranscodeMessage(u"\u00E4"), "\xC3\xA4");
}

}  // namespace
}  // namespace tses
