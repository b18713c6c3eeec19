#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <orvo/Interchange.h>
#include "tests/support/TemporaryFolder.h"

namespace {

using orvo::ExportResult;
using orvo::ExportSession;
using orvo::InterchangeKind;
using orvo::Session;
using testing::ElementsAre;

Session SessionForCsv() {
    Session session;
    session.files = {{.id = 5, .path = "/nowhere/a.wav"}};
    session.audioTracks = {{.id = 1, .name = "Voice"}};
    session.audioTracks[0].clips = {
        {.id = 2,
         .fileId = 5,
         .sourceInPoint = 10,
         .duration = 48000,
         .startPoint = 96000,
         .name = "=SUM(A1)"},
        {.id = 3, .duration = 1, .startPoint = -48000, .name = "a \"b\""}};
    return session;
}

class CsvExport : public testing::Test {
protected:
    std::string Written(const Session& session, const orvo::ExportOptions& options = {}) {
        result_ = ExportSession(session, InterchangeKind::Csv, folder_ / "a.csv", options);
        return std::filesystem::exists(folder_ / "a.csv") ? test::ReadFile(folder_ / "a.csv") : "";
    }

    test::TemporaryFolder folder_;
    ExportResult result_;
};

TEST_F(CsvExport, HasALineForEachClipInOrderOfTime) {
    EXPECT_EQ(
        Written(SessionForCsv()),
        "type,track,name,start,end,duration,startTime,endTime,durationTime,sourceIn,file,"
        "comment\r\n"
        "audio,Voice,\"a \"\"b\"\"\",-48000,-47999,1,-0:00:01.000,-0:00:01.000,0:00:00.000,0,,\r\n"
        "audio,Voice,'=SUM(A1),96000,144000,48000,0:00:02.000,0:00:03.000,0:00:01.000,10,"
        "/nowhere/a.wav,\r\n");
    EXPECT_TRUE(result_) << testing::PrintToString(result_.messages);
    EXPECT_THAT(result_.files, ElementsAre(folder_ / "a.csv"));
}

TEST_F(CsvExport, AnOldFileStaysIfSomethingWouldBeLostAndThatIsForbidden) {
    folder_.Write("a.csv", "old");
    EXPECT_EQ(Written(SessionForCsv(), {.strict = true}), "old");
    EXPECT_EQ(result_.report.Count(orvo::Fidelity::Approximated), 1u);
    EXPECT_FALSE(result_);
    EXPECT_EQ(result_.messages.size(), 1u);
}

TEST_F(CsvExport, AFolderThatIsNotThereIsAMessage) {
    result_ = ExportSession(SessionForCsv(), InterchangeKind::Csv, folder_ / "no" / "a.csv");
    EXPECT_FALSE(result_);
    ASSERT_EQ(result_.messages.size(), 1u);
    EXPECT_EQ(result_.messages[0].file, (folder_ / "no" / "a.csv").string());
}

TEST_F(CsvExport, ATextThatIsNoFormulaStaysAsItIs) {
    Session session = SessionForCsv();
    session.audioTracks[0].name = "a+b";
    EXPECT_THAT(Written(session), testing::HasSubstr("audio,a+b,"));
}

}  // namespace
