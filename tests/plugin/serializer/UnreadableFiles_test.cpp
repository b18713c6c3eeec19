#include <gmock/gmock.h>
#include <sys/stat.h>

#include <exception>
#include <utility>

#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"
#include "platform/kelcore/Trace.h"
#include "tests/support/SerializerFixture.h"

// A file that the parser does not get to read: the host learns why, by the trace and by its log
// target.

namespace tses {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class UnreadableFiles : public test::SerializerFixture {
protected:
    UnreadableFiles() {
        kelcore::trace::SetOutput([this](std::string_view category, std::string_view text) {
            EXPECT_EQ(category, "app::XMLReader");
            traced.emplace_back(text);
        });
    }
    ~UnreadableFiles() override { kelcore::trace::SetOutput({}); }

    /// That the last thing said of a read of `path` is this reason, once in the trace and once in
    /// the log.
    void ExpectReason(const std::u16string& path, const std::string& reason) {
        traced.clear();
        const auto outcome = ReadPath(path);
        const std::string name = kelcore::PathToBytes(path);
        EXPECT_FALSE(outcome.ok) << name;
        ASSERT_THAT(traced, Not(IsEmpty())) << name;
        EXPECT_EQ(traced.back(), name + ": " + reason);
        ASSERT_THAT(outcome.log, Not(IsEmpty())) << name;
        EXPECT_EQ(outcome.log.back(),
                  "XML FATAL ERROR: (line: 0, col: 0) [ " + name + "] " + reason + "\n");
    }

    std::vector<std::string> traced;
};

TEST_F(UnreadableFiles, AMissingFileIsSaidOnceInTheTraceAndOnceInTheLog) {
    ExpectReason(Path(), "no such file: check the path");
    EXPECT_THAT(traced, testing::SizeIs(1));
    EXPECT_THAT(ReadPath(Path()).calls,
                ElementsAre(HasSubstr("GetLogTarget() -> "), HasSubstr("LogMessage(")));
}

TEST_F(UnreadableFiles, AnEmptyPathIsSaidWithoutAName) {
    const auto outcome = ReadPath(u"");
    EXPECT_FALSE(outcome.ok);
    EXPECT_THAT(outcome.log, ElementsAre("XML FATAL ERROR: (line: 0, col: 0) the path is empty: "
                                         "name a session file\n"));
    EXPECT_THAT(traced, ElementsAre("the path is empty: name a session file"));
}

TEST_F(UnreadableFiles, AFolderAPipeAndADeviceAreSaidToBeThat) {
    const std::string pipe = (folder / "pipe.orvo").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    ExpectReason(folder.Path().u16string(), "this is a folder: name a session file in it");
    ExpectReason(kelcore::PathFromBytes(pipe), "this is a pipe: put its content into a file first");
    ExpectReason(u"/dev/null", "this is a device: put its content into a file first");
}

TEST_F(UnreadableFiles, AFileThatGivesNotOneByteIsSaidInTheWordsOfTheSystem) {
    ExpectReason(u"/proc/self/mem", "cannot be read: Input/output error");
}

TEST_F(UnreadableFiles, WithoutALogTargetTheTraceSaysIt) {
    test::HostSetup host;
    host.logTarget = false;
    EXPECT_FALSE(ReadPath(Path(), host).ok);
    EXPECT_THAT(traced, ElementsAre(HasSubstr(": no such file: ")));
}

TEST_F(UnreadableFiles, WhatTheHostThrowsWhileItIsToldGoesNoFurther) {
    for (const char* const operation : {"IEditSession.GetLogTarget", "IHostLogTarget.LogMessage"}) {
        traced.clear();
        test::HostSetup host;
        host.faults.Throw(operation, std::make_exception_ptr(42));
        EXPECT_FALSE(ReadPath(Path(), host).ok) << operation;
        EXPECT_THAT(traced, ElementsAre(HasSubstr(": no such file: "))) << operation;
    }
}

TEST_F(UnreadableFiles, AFileThatIsReadInPartHasItsOwnMessageAlone) {
    const auto outcome = Read("<orvo><session></orvo>");
    EXPECT_FALSE(outcome.ok);
    EXPECT_THAT(outcome.log, ElementsAre(HasSubstr("XML FATAL ERROR: (line: 1, col: ")));
    EXPECT_THAT(traced, ElementsAre("Unexpected XMLReader Exception"));
}

TEST_F(UnreadableFiles, ADocumentThatIsNoSessionIsNotTakenForAFileThatCannotBeRead) {
    const auto outcome = Read("<score/>");
    EXPECT_FALSE(outcome.ok);
    EXPECT_THAT(outcome.log, IsEmpty());
    EXPECT_THAT(traced, ElementsAre("Unexpected XMLReader Exception"));
}

TEST_F(UnreadableFiles, AReadBehindOneThatBeganStillSaysWhyItDidNot) {
    EXPECT_TRUE(Read("<orvo/>").ok);
    ExpectReason(kelcore::PathFromBytes((folder / "none.orvo").string()),
                 "no such file: check the path");
}

}  // namespace
}  // namespace tses
