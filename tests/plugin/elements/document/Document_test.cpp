#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <utility>

#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Trace.h"
#include "tests/support/SerializerFixture.h"

// How a document is written: the order, the progress, and that a failure leaves the file alone.

namespace tses {
namespace {

using refhost::Progress;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class Document : public test::SerializerFixture {
protected:
    static orvo::Session Sample() {
        orvo::Session session;
        session.files.push_back({1, "/a.wav", "h", "r", "i"});
        session.audioDevice.inputPorts = {{1, "Mic"}};
        session.audioDevice.outputPorts = {{1, "Out"}};
        return session;
    }
};

TEST_F(Document, TheRootCarriesTheHostsVersionAndTheThreeChildrenInOrder) {
    auto session = Sample();
    session.formatVersion = {1, 5};
    const std::string file = *Write(session).file;
    EXPECT_THAT(
        file,
        StartsWith("\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\" ?>\n"
                   "<orvo version=\"1.5\">\n"));
    EXPECT_LT(file.find("<session "), file.find("<files>"));
    EXPECT_LT(file.find("<files>"), file.find("<audioDevice "));
}

TEST_F(Document, TheVersionsTwoNumbersAreSigned) {
    auto session = Sample();
    session.formatVersion = {-1, 20};
    EXPECT_THAT(*Write(session).file, HasSubstr("<orvo version=\"-1.20\">"));
}

TEST_F(Document, ProgressIsReportedAtTheStartAndAfterEachChild) {
    EXPECT_THAT(Write(Sample()).progress, ElementsAre(Progress{1, 7, 0, 0}, Progress{2, 7, 0, 1},
                                                      Progress{3, 7, 0, 1}, Progress{4, 7, 0, 1}));
}

TEST_F(Document, ProgressIsReportedBeforeTheVersionBetweenTheChildrenAndBeforeTheSave) {
    std::vector<std::string> afterProgress;
    bool follows = false;
    std::size_t reports = 0;
    test::HostSetup host;
    host.interceptor = [&](const refhost::CallRecord& call) {
        if (std::exchange(follows, call.operation == "SetProgress")) {
            afterProgress.emplace_back(call.operation);
        }
        reports += follows ? 1U : 0U;
        EXPECT_FALSE(std::filesystem::exists(kelcore::PathToBytes(Path()))) << call.operation;
        return refhost::CallDecision::Forward();
    };
    EXPECT_TRUE(Write(Sample(), host).ok);
    EXPECT_THAT(afterProgress, ElementsAre("GetFormatVersion", "GetFileCount", "GetInputDeviceId"));
    EXPECT_EQ(reports, 4u);
    EXPECT_TRUE(follows) << "the last call must be a report";
}

TEST_F(Document, ProgressReportsAVersionThatCouldNotBeSet) {
    const auto outcome = WriteWithFault(Sample(), 0);
    EXPECT_FALSE(outcome.ok);
    EXPECT_THAT(outcome.progress, ElementsAre(Progress{1, 7, 0, 0}, Progress{2, 7, 0, 0},
                                              Progress{3, 7, 0, 0}, Progress{4, 7, 0, 0}));
}

TEST_F(Document, ProgressReportsEveryStepEvenAfterAFailedOne) {
    constexpr std::size_t kStartOfSession = 1;
    const auto outcome = WriteWithFault(Sample(), kStartOfSession);
    EXPECT_FALSE(outcome.ok);
    EXPECT_THAT(outcome.progress, ElementsAre(Progress{1, 7, 0, 0}, Progress{2, 7, 0, 1},
                                              Progress{3, 7, 0, 1}, Progress{4, 7, 0, 1}));
}

TEST_F(Document, AnEmptyPathFailsBeforeTheHostIsAskedAnythingAndIsTraced) {
    std::vector<std::string> traced;
    kelcore::trace::SetOutput([&](std::string_view category, std::string_view text) {
        traced.push_back(std::string(category) + ": " + std::string(text));
    });
    const auto outcome = WriteTo(u"", Sample());
    kelcore::trace::SetOutput({});
    EXPECT_THAT(traced, ElementsAre("app::XMLWriter: cannot write: the path is empty"));
    EXPECT_FALSE(outcome.ok);
    EXPECT_THAT(outcome.calls, IsEmpty());
    EXPECT_THAT(outcome.progress, IsEmpty());
}

TEST_F(Document, NoFileIsMadeIfAnyOperationFails) {
    std::size_t operation = 0;
    for (;; ++operation) {
        const auto outcome = WriteWithFault(Sample(), operation);
        if (outcome.ok) {
            break;
        }
        ASSERT_FALSE(outcome.file.has_value()) << operation;
    }
    // The version, 2 for "session", 4 for the table, 6 for the device, and the save.
    EXPECT_GE(operation, 14u);
}

TEST_F(Document, AFailureLeavesTheOldFileWhole) {
    for (std::size_t operation = 0;; ++operation) {
        folder.Write("session.orvo", "the old session");
        const auto outcome = WriteWithFault(Sample(), operation);
        if (outcome.ok) {
            break;
        }
        ASSERT_EQ(*outcome.file, "the old session") << operation;
    }
}

TEST_F(Document, AFailureInTheFirstChildKeepsTheOthersFromAskingTheHost) {
    const auto outcome = WriteWithFault(Sample(), 1);
    EXPECT_THAT(CallsOf(outcome.calls, "GetFileCount"), IsEmpty());
    EXPECT_THAT(CallsOf(outcome.calls, "GetInputDeviceId"), IsEmpty());
}

TEST_F(Document, AFailureInTheSecondChildKeepsTheThirdFromAskingTheHost) {
    std::size_t failuresInTable = 0;
    for (std::size_t operation = 0;; ++operation) {
        const auto outcome = WriteWithFault(Sample(), operation);
        if (!CallsOf(outcome.calls, "GetInputDeviceId").empty()) {
            break;
        }
        ASSERT_FALSE(outcome.ok);
        failuresInTable += CallsOf(outcome.calls, "GetFileCount").size();
    }
    EXPECT_EQ(failuresInTable, 3u) << "the file's two operations and the end of the table";
}

TEST_F(Document, WritingReadingAndWritingAgainGivesTheSameBytes) {
    const auto first = Write(Sample());
    ASSERT_TRUE(first.ok);
    const auto read = ReadPath(Path());
    ASSERT_TRUE(read.ok);
    EXPECT_EQ(*Write(read.session).file, *first.file);
}

TEST_F(Document, AnExceptionOfTheHostLeavesTheOldFileWhole) {
    folder.Write("session.orvo", "the old session");
    for (const char* const operation :
         {"IQuerySession.GetFormatVersion", "IQuerySession.GetSampleRate", "IQuerySession.GetFile",
          "IQueryFile.GetPath", "IQuerySession.GetInputPortName"}) {
        test::HostSetup host;
        host.faults.Throw(operation, std::make_exception_ptr(42));
        EXPECT_THROW(Write(Sample(), host), int) << operation;
        EXPECT_EQ(test::ReadFile(kelcore::PathToBytes(Path())), "the old session") << operation;
    }
}

}  // namespace
}  // namespace tses
