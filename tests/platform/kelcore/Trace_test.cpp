#include "platform/kelcore/Trace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace kelcore::trace {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;

class TraceTest : public testing::Test {
protected:
    TraceTest() {
        SetOutput([this](std::string_view category, std::string_view text) {
            lines_.push_back(std::string(category) + "|" + std::string(text));
        });
    }
    ~TraceTest() override {
        SetOutput(nullptr);
        SetEnabled("test::A", false);
        SetEnabled("test::B", false);
    }

    std::vector<std::string> lines_;
};

TEST_F(TraceTest, OtherCategoriesAreOffUntilSwitchedOn) {
    EXPECT_FALSE(IsEnabled("test::A"));
    Write("test::A", "lost");
    EXPECT_THAT(lines_, IsEmpty());
}

TEST_F(TraceTest, TheCategoriesOfFailedReadsAndSavesAreOnUntilSwitchedOff) {
    for (const std::string_view category : {"app::XMLReader", "app::XMLWriter"}) {
        lines_.clear();
        EXPECT_TRUE(IsEnabled(category));
        Write(category, "kept");
        SetEnabled(category, false);
        EXPECT_FALSE(IsEnabled(category));
        Write(category, "lost");
        SetEnabled(category, true);
        Write(category, "kept again");
        EXPECT_THAT(lines_, ElementsAre(std::string(category) + "|kept",
                                        std::string(category) + "|kept again"));
    }
}

TEST_F(TraceTest, OnlyTheCategorySwitchedOnIsWritten) {
    SetEnabled("test::A", true);
    EXPECT_TRUE(IsEnabled("test::A"));
    EXPECT_FALSE(IsEnabled("test::B"));
    Write("test::A", "kept {}");
    Write("test::B", "lost");
    EXPECT_THAT(lines_, ElementsAre("test::A|kept {}"));
}

TEST_F(TraceTest, ACategoryCanBeSwitchedOffAgain) {
    SetEnabled("test::A", true);
    SetEnabled("test::A", true);
    SetEnabled("test::A", false);
    SetEnabled("test::A", false);
    EXPECT_FALSE(IsEnabled("test::A"));
    Write("test::A", "lost");
    EXPECT_THAT(lines_, IsEmpty());
}

TEST_F(TraceTest, WithoutOutputLinesGoToStandardError) {
    SetOutput(nullptr);
    SetEnabled("test::A", true);
    testing::internal::CaptureStderr();
    Write("test::A", "to {} standard error %s");
    const std::string captured = testing::internal::GetCapturedStderr();
    EXPECT_THAT(captured,
                MatchesRegex("\\[[0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3}\\] test::A: to \\{\\} "
                             "standard error %s\n"));
    EXPECT_THAT(lines_, IsEmpty());
}

TEST_F(TraceTest, AnOutputThatThrowsLosesOnlyTheLine) {
    SetEnabled("test::A", true);
    SetOutput([this](std::string_view, std::string_view text) {
        if (text == "lost") {
            throw std::runtime_error("no room");
        }
        lines_.emplace_back(text);
    });
    Write("test::A", "lost");
    Write("test::A", "kept");
    EXPECT_THAT(lines_, ElementsAre("kept"));
}

TEST_F(TraceTest, SetOutputReturnsThePreviousOutput) {
    Output former = SetOutput([](std::string_view, std::string_view) {});
    Write(kReaderCategory, "lost");
    EXPECT_TRUE(SetOutput(std::move(former)));
    Write(kReaderCategory, "kept");
    EXPECT_THAT(lines_, ElementsAre("app::XMLReader|kept"));
    SetOutput({});
    EXPECT_FALSE(SetOutput({})) << "standard error is no output";
}

TEST_F(TraceTest, TheOutputMayTraceItself) {
    SetEnabled("test::A", true);
    SetEnabled("test::B", true);
    SetOutput([this](std::string_view category, std::string_view text) {
        lines_.emplace_back(text);
        if (category == "test::A") {
            SetEnabled("test::A", false);
            Write("test::B", "inner");
        }
    });
    Write("test::A", "outer");
    EXPECT_THAT(lines_, ElementsAre("outer", "inner"));
}

TEST_F(TraceTest, ManyThreadsMayTraceAndSwitchAtOnce) {
    constexpr int kThreads = 4;
    constexpr int kLines = 500;
    std::atomic<int> received = 0;
    SetOutput([&received](std::string_view, std::string_view) { ++received; });
    SetEnabled("test::A", true);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([] {
            for (int line = 0; line < kLines; ++line) {
                Write("test::A", "line");
                SetEnabled("test::B", line % 2 == 0);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(received, kThreads * kLines);
}

}  // namespace
}  // namespace kelcore::trace
