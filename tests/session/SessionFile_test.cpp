#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <orvo/Differences.h>
#include <orvo/Session.h>
#include "tests/support/TemporaryFolder.h"

namespace orvo {
namespace {

using ::testing::HasSubstr;

Session Sample() {
    Session session;
    session.sampleRate = 44100;
    for (std::uint32_t id = 1; id <= 4; ++id) {
        session.audioTracks.push_back({.id = id, .index = id - 1, .name = "Voice"});
        session.audioTracks.back().clips = {{.id = 10 * id, .duration = 48000}};
    }
    return session;
}

class SessionFileTest : public ::testing::Test {
protected:
    std::filesystem::path In(const char* name) const { return folder_ / name; }

private:
    const ::test::TemporaryFolder folder_;
};

TEST_F(SessionFileTest, WhatIsWrittenIsReadAgain) {
    ASSERT_TRUE(WriteSession(Sample(), In("a.orvo")));
    const ReadResult read = ReadSession(In("a.orvo"));
    ASSERT_TRUE(read);
    EXPECT_TRUE(read.messages.empty());
    EXPECT_EQ(read.session.audioTracks, Sample().audioTracks);
    EXPECT_EQ(read.session.sampleRate, 44100u);
}

TEST_F(SessionFileTest, ARelativePathCountsFromTheWorkingDirectory) {
    ASSERT_TRUE(WriteSession(Sample(), In("a.orvo")));
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(In("."));
    EXPECT_TRUE(ReadSession("a.orvo"));
    EXPECT_TRUE(WriteSession(Sample(), "b.orvo"));
    std::filesystem::current_path(before);
    EXPECT_TRUE(std::filesystem::exists(In("b.orvo")));
}

TEST_F(SessionFileTest, AFileThatIsNotThereIsAMessageThatNamesIt) {
    const ReadResult read = ReadSession(In("none.orvo"));
    EXPECT_FALSE(read);
    EXPECT_FALSE(read.cancelled);
    ASSERT_FALSE(read.messages.empty());
    EXPECT_EQ(read.messages[0].severity, Severity::Error);
    EXPECT_EQ(read.messages[0].file, In("none.orvo").string());
    EXPECT_FALSE(read.messages[0].what.empty());
    EXPECT_EQ(read.session, Session());
}

TEST_F(SessionFileTest, MalformedTextIsAMessageWithItsPlace) {
    ::test::TemporaryFolder folder;
    const auto path = folder.Write("bad.orvo", "<orvo>\n<session></orvo>");
    const ReadResult read = ReadSession(path);
    EXPECT_FALSE(read);
    ASSERT_FALSE(read.messages.empty());
    EXPECT_EQ(read.messages[0].line, 2u);
    EXPECT_GT(read.messages[0].column, 0u);
    EXPECT_THAT(read.messages[0].what, Not(HasSubstr("XML ERROR")));
    EXPECT_THAT(read.messages[0].what, Not(HasSubstr("bad.orvo")));
}

TEST_F(SessionFileTest, AFolderThatIsNotThereFailsTheWriteWithAReason) {
    const WriteResult written = WriteSession(Sample(), In("no/such/a.orvo"));
    EXPECT_FALSE(written);
    ASSERT_FALSE(written.messages.empty());
    EXPECT_EQ(written.messages[0].file, In("no/such/a.orvo").string());
}

TEST_F(SessionFileTest, ReplacedTextIsAWarningOfAWriteThatSucceeds) {
    Session session = Sample();
    session.audioTracks[0].name = "a\xED\xA0\x80";
    const WriteResult written = WriteSession(session, In("a.orvo"));
    ASSERT_TRUE(written);
    ASSERT_EQ(written.messages.size(), 1u);
    EXPECT_EQ(written.messages[0].severity, Severity::Warning);
    EXPECT_EQ(ReadSession(In("a.orvo")).session.audioTracks[0].name, "a\uFFFD");
}

TEST_F(SessionFileTest, AChannelMapBeyondTheLimitIsSaidOfTheSession) {
    Session session = Sample();
    session.audioTracks[0].clips[0].channelSources = {{1024, 0}};
    const WriteResult written = WriteSession(session, In("a.orvo"));
    EXPECT_FALSE(written);
    ASSERT_FALSE(written.messages.empty());
    EXPECT_EQ(written.messages.back().file, "");
    EXPECT_THAT(written.messages.back().what, HasSubstr("/channelMap/1024"));
}

TEST_F(SessionFileTest, ATrackWithoutAnIdFailsTheWriteAndLeavesTheFileAsItWas) {
    ASSERT_TRUE(WriteSession(Sample(), In("a.orvo")));
    Session session = Sample();
    session.audioTracks[1].id = kNoId;
    const WriteResult written = WriteSession(session, In("a.orvo"));
    EXPECT_FALSE(written);
    ASSERT_EQ(written.messages.size(), 1u);
    EXPECT_EQ(written.messages[0].what, "/audioTracks/1/id: 4294967295 means \"no id\"");
    EXPECT_EQ(written.messages[0].advice, "give a number from 0 to 4294967294");
    EXPECT_EQ(ReadSession(In("a.orvo")).session.audioTracks, Sample().audioTracks);
}

TEST_F(SessionFileTest, TwoFilesWithOneIdFailTheWrite) {
    Session session = Sample();
    session.files = {{.id = 7}, {.id = 7}};
    const WriteResult written = WriteSession(session, In("a.orvo"));
    EXPECT_FALSE(written);
    ASSERT_EQ(written.messages.size(), 1u);
    EXPECT_EQ(written.messages[0].what, "/files/1/id: 7 is the id of /files/0 too");
    EXPECT_FALSE(std::filesystem::exists(In("a.orvo")));
}

TEST_F(SessionFileTest, ARefusalSaysWhatAndWhereAndWhatToDo) {
    ::test::TemporaryFolder folder;
    const auto path = folder.Write("bad.orvo", "<?xml version='1.0'?>\n <!DOCTYPE a><a/>");
    const ReadResult read = ReadSession(path);
    ASSERT_FALSE(read.messages.empty());
    EXPECT_EQ(read.messages[0].line, 2u);
    EXPECT_EQ(read.messages[0].what, "refused: a session has no document type declaration");
    EXPECT_EQ(read.messages[0].advice, "remove it to read the file");
}

TEST_F(SessionFileTest, ProgressNeverGoesBackAndEndsAtOne) {
    std::vector<double> shares;
    const ProgressFunction note = [&shares](double share) {
        shares.push_back(share);
        return true;
    };
    ASSERT_TRUE(WriteSession(Sample(), In("a.orvo"), {.progress = note}));
    EXPECT_GE(shares.size(), 4u) << "one for each track";
    EXPECT_TRUE(std::ranges::is_sorted(shares));
    EXPECT_EQ(shares.back(), 1);
    shares.clear();
    ASSERT_TRUE(ReadSession(In("a.orvo"), {.progress = note}));
    EXPECT_TRUE(std::ranges::is_sorted(shares));
    EXPECT_EQ(shares.back(), 1);
}

TEST_F(SessionFileTest, AStopAtTheWholeShareDoesNotCancel) {
    const ProgressFunction stopsAtTheEnd = [](double share) { return share < 1; };
    const WriteResult written = WriteSession(Sample(), In("a.orvo"), {.progress = stopsAtTheEnd});
    EXPECT_TRUE(written);
    EXPECT_FALSE(written.cancelled);
    const ReadResult read = ReadSession(In("a.orvo"), {.progress = stopsAtTheEnd});
    EXPECT_TRUE(read);
    EXPECT_FALSE(read.cancelled);
    EXPECT_EQ(read.session.audioTracks, Sample().audioTracks);
}

TEST_F(SessionFileTest, AReadThatFailsAfterItsLastStepDoesNotReportTheWholeShare) {
    const ::test::TemporaryFolder folder;
    std::string document = "<orvo><session>";
    for (int step = 1; step <= 7; ++step) {
        document += "<tracks></tracks>";
    }
    const auto path = folder.Write("bad.orvo", document + "</session></orvo><orvo/>");
    std::vector<double> shares;
    EXPECT_FALSE(ReadSession(path, {.progress = [&shares](double share) {
                                 shares.push_back(share);
                                 return true;
                             }}));
    ASSERT_FALSE(shares.empty());
    EXPECT_GT(shares.back(), 0.9) << "the last step";
    EXPECT_LT(shares.back(), 1);
}

TEST_F(SessionFileTest, ACancelledWriteLeavesTheFileAsItWas) {
    ASSERT_TRUE(WriteSession({}, In("a.orvo")));
    const auto size = std::filesystem::file_size(In("a.orvo"));
    const WriteResult written =
        WriteSession(Sample(), In("a.orvo"), {.progress = [](double) { return false; }});
    EXPECT_FALSE(written);
    EXPECT_TRUE(written.cancelled);
    EXPECT_EQ(std::filesystem::file_size(In("a.orvo")), size);
    EXPECT_TRUE(WriteSession(Sample(), In("a.orvo"))) << "the next one works";
}

TEST_F(SessionFileTest, ACancelledReadGivesNoSession) {
    ASSERT_TRUE(WriteSession(Sample(), In("a.orvo")));
    const ReadResult read = ReadSession(In("a.orvo"), {.progress = [](double) { return false; }});
    EXPECT_FALSE(read);
    EXPECT_TRUE(read.cancelled);
    EXPECT_EQ(read.session, Session());
    EXPECT_TRUE(ReadSession(In("a.orvo"))) << "the next one works";
}

TEST_F(SessionFileTest, AReadCanBeCancelledAtEachTrackAndClip) {
    ASSERT_TRUE(WriteSession(Sample(), In("a.orvo")));
    int calls = 0;
    ASSERT_TRUE(ReadSession(In("a.orvo"), {.progress = [&calls](double) { return ++calls > 0; }}));
    EXPECT_GE(calls, 4 + 4 + 7) << "tracks, clips and the plug-in's own steps";
    const int last = calls - 1;  // the call after success cancels nothing
    for (int end = 1; end <= last; ++end) {
        calls = 0;
        const ReadResult read =
            ReadSession(In("a.orvo"), {.progress = [&](double) { return ++calls != end; }});
        EXPECT_TRUE(read.cancelled) << end;
        EXPECT_EQ(read.session, Session()) << end;
        EXPECT_EQ(calls, end) << "no call after that";
    }
    EXPECT_EQ(ReadSession(In("a.orvo")).session.audioTracks.size(), 4u) << "the next one works";
}

TEST(CheckPluginDeathTest, AMissingPluginIsNamedApartFromTheAdvice) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");  // a process that has not loaded the plug-in
    const auto check = [] {
        ::setenv("ORVO_PLUGIN", "/none; at all/Other.so", 1);
        const std::optional<Message> missing = CheckPlugin();
        std::cerr << missing.value_or(Message()).what << '\n';
        std::exit(missing && missing->advice.starts_with("build it, or ") ? 0 : 1);
    };
    EXPECT_EXIT(check(), ::testing::ExitedWithCode(0), "^no plug-in at /none; at all/Other.so\n$");
}

TEST_F(SessionFileTest, ThreadsWaitForEachOther) {
    ASSERT_TRUE(WriteSession(Sample(), In("a.orvo")));
    std::vector<std::thread> threads;
    std::vector<int> good(4, 0);
    for (int& count : good) {
        threads.emplace_back([&] {
            for (int turn = 0; turn < 10; ++turn) {
                count += ReadSession(In("a.orvo")).ok ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(good, std::vector<int>(4, 10));
}

}  // namespace
}  // namespace orvo
