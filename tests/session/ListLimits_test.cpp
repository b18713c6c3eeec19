#include "session/ListLimits.h"

#include <gtest/gtest.h>

namespace orvo {
namespace {

Session WithClip(AudioClip clip) {
    return {.audioTracks = {{.clips = {std::move(clip)}}}};
}

TEST(ListLimitsTest, AnOrdinarySessionHasRoom) {
    EXPECT_EQ(FindListBeyondLimits({}), std::nullopt);
    EXPECT_EQ(FindListBeyondLimits(WithClip({.channelSources = {{1023, 0}}})), std::nullopt);
}

TEST(ListLimitsTest, AChannelMapThatIsTooLongIsNamedByItsHighestChannel) {
    const auto message = FindListBeyondLimits(WithClip({.channelSources = {{0, 0}, {1024, 0}}}));
    ASSERT_TRUE(message);
    EXPECT_EQ(
        message->what,
        "/audioTracks/0/audioClips/0/channelMap/1024: this makes 1025 channels, but a session "
        "file has room for 1024");
    EXPECT_EQ(message->advice, "use lower numbers, or fewer of them");
}

TEST(ListLimitsTest, AHighIndexOfAParameterMakesTooManyEntries) {
    const auto message =
        FindListBeyondLimits(WithClip({.gain = Component{.parameters = {{16777216, {}}}}}));
    ASSERT_TRUE(message);
    EXPECT_TRUE(message->what.starts_with(
        "/audioTracks/0/audioClips/0/clipGain/parameters/16777216: this makes 16777217 entries"))
        << message->what;
}

}  // namespace
}  // namespace orvo
