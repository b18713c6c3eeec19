#include "bench/StaticHost.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "reference_host/Sessions.h"
#include "tests/support/SourceFolder.h"
#include "tests/support/TemporaryFolder.h"
#include "toolkit/GeneratedSession.h"

namespace bench {
namespace {

class StaticHostTest : public testing::Test {
protected:
    StaticHostTest() { refhost::UseFeatureDefaults(); }

    orvo::Session Read(const std::filesystem::path& path) {
        refhost::ReadResult read = refhost::ReadSession(plugin_, path.u16string());
        EXPECT_EQ(read.result, tses::SessionResult::Ok) << path;
        return std::move(read.session);
    }

    std::string WriteWithReferenceHost(const orvo::Session& session) {
        const auto path = folder_ / "reference.orvo";
        EXPECT_EQ(refhost::WriteSession(plugin_, path.u16string(), session).result,
                  tses::SessionResult::Ok);
        return test::ReadFile(path);
    }

    std::string WriteWithTape(const AnswerTape& tape) {
        const auto path = folder_ / "static.orvo";
        EXPECT_EQ(plugin_.Write(path.u16string(), StaticHost(tape)), tses::SessionResult::Ok);
        plugin_.ReleaseContext();
        EXPECT_TRUE(StaticHostIsAtEnd());
        return test::ReadFile(path);
    }

    AnswerTape Record(const orvo::Session& session) {
        return RecordAnswers(plugin_, (folder_ / "recorded.orvo").u16string(), session);
    }

    test::TemporaryFolder folder_;
    refhost::Plugin plugin_;
};

std::vector<std::filesystem::path> StoredSessions() {
    const std::filesystem::path root = test::SourceFolder();
    std::vector<std::filesystem::path> sessions = {root / "tests/golden/everything.orvo",
                                                   root / "tests/golden/read-only.orvo"};
    for (const char* const name :
         {"music", "picture", "radio-spot", "sound-library", "spoken-word"}) {
        sessions.push_back(root / "examples" / name / (std::string(name) + ".orvo"));
    }
    return sessions;
}

TEST_F(StaticHostTest, WritesTheBytesOfTheReferenceHost) {
    for (const std::filesystem::path& path : StoredSessions()) {
        const orvo::Session session = Read(path);
        EXPECT_EQ(WriteWithTape(Record(session)), WriteWithReferenceHost(session)) << path;
    }
}

TEST_F(StaticHostTest, GivesItsAnswersAsOftenAsTheyAreAskedFor) {
    const AnswerTape tape = Record(toolkit::GenerateSession({.tracks = 9, .clips = 12}, 5));
    const std::string first = WriteWithTape(tape);
    EXPECT_FALSE(first.empty());
    EXPECT_EQ(WriteWithTape(tape), first);
}

TEST_F(StaticHostTest, KnowsWhetherAllAnswersWereAskedFor) {
    const AnswerTape tape = Record({});
    StaticHost(tape);
    EXPECT_FALSE(StaticHostIsAtEnd());
    WriteWithTape(tape);
}

TEST_F(StaticHostTest, ASessionThatCannotBeWrittenIsNotRecorded) {
    EXPECT_THROW(RecordAnswers(plugin_, (folder_ / "nowhere/a.orvo").u16string(), {}),
                 std::runtime_error);
}

}  // namespace
}  // namespace bench
