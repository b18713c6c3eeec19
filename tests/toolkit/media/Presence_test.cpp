#include "toolkit/media/Presence.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <string>

#include "tests/support/TemporaryFolder.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using toolkit::FindPresence;
using toolkit::Presence;

constexpr std::chrono::milliseconds kShort{50};

TEST(Presence, TellsFilesThatAreThereFromOthers) {
    const test::TemporaryFolder folder;
    const std::string here = folder.Write("here.wav", "").string();
    EXPECT_THAT(
        FindPresence({here, here + "2", folder.Path().string(), ""}),
        ElementsAre(Presence::Present, Presence::Missing, Presence::Missing, Presence::Missing));
    EXPECT_THAT(FindPresence({}), IsEmpty());
}

TEST(Presence, WaitsOnceForAFolderThatDoesNotAnswer) {
    std::promise<void> end;
    const std::shared_future<void> ended = end.get_future().share();
    const auto asked = std::make_shared<std::atomic<int>>(0);
    const auto isPresent = [ended, asked](const std::string& path) {
        if (path.starts_with("/hung/")) {
            ++*asked;
            ended.wait();
        }
        return true;
    };
    EXPECT_THAT(FindPresence({"/a/1", "/hung/1", "/a/2", "/hung/2", "/a/3"}, kShort, isPresent),
                ElementsAre(Presence::Present, Presence::Silent, Presence::Present,
                            Presence::Silent, Presence::Present));
    EXPECT_EQ(*asked, 1);
    end.set_value();
}

}  // namespace
