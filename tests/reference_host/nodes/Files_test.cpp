#include "reference_host/nodes/Files.h"

#include "reference_host/SessionNode.h"
#include "tests/reference_host/support/NoLiveNodes.h"

namespace refhost {
namespace {

class FilesTest : public test::NoLiveNodes {};

TEST_F(FilesTest, EditingFillsTheModel) {
    const auto session = SessionNode::Make();
    tses::IEditFile* const file = session->Edit().GetFile(5);
    file->SetPath(u"/a.wav");
    file->SetRecoveryId(u"recovery");
    file->SetMediaHandler(u"handler");
    file->SetImporterPrivateSettings(u"settings");
    EXPECT_EQ(session->Value().files,
              (std::vector<orvo::File>{{5, "/a.wav", "handler", "recovery", "settings"}}));
}

TEST_F(FilesTest, QueryingReportsTheModel) {
    const auto session =
        SessionNode::Make({.files = {{5, "/a.wav", "handler", "recovery", "settings"}}});
    tses::IQueryFile* const file = session->Query().GetFile(0);
    EXPECT_EQ(file->GetId(), 5U);
    EXPECT_EQ(TextOf(file->GetPath()), u"/a.wav");
    EXPECT_EQ(TextOf(file->GetRecoveryId()), u"recovery");
    EXPECT_EQ(TextOf(file->GetMediaHandler()), u"handler");
    EXPECT_EQ(TextOf(file->GetImporterPrivateSettings()), u"settings");
}

TEST_F(FilesTest, AFileIsMadeOnceForEachId) {
    const auto session = SessionNode::Make();
    session->Edit().GetFile(0)->SetPath(u"/zero.wav");
    session->Edit().GetFile(4294967294)->SetPath(u"/last.wav");
    session->Edit().GetFile(0)->SetRecoveryId(u"zero");
    ASSERT_EQ(session->Value().files.size(), 2U);
    EXPECT_EQ(session->Value().files[0].recoveryId, "zero");
    EXPECT_EQ(session->Value().files[1].id, 4294967294U);
}

TEST_F(FilesTest, NoFileIsMadeForTheIdThatNamesNothing) {
    const auto session = SessionNode::Make();
    EXPECT_EQ(session->Edit().GetFile(4294967295), nullptr);
    EXPECT_TRUE(session->Value().files.empty());
}

TEST_F(FilesTest, AFileOfTheModelIsFoundByItsId) {
    const auto session = SessionNode::Make({.files = {{.id = 9}, {.id = 4}, {.id = 4}}});
    session->Edit().GetFile(4)->SetPath(u"/four.wav");
    EXPECT_EQ(session->Value().files.size(), 3U);
    EXPECT_EQ(session->Value().files[1].path, "/four.wav");
}

TEST_F(FilesTest, BeyondTheLastFileThereIsNone) {
    const auto session = SessionNode::Make({.files = {{.id = 9}}});
    EXPECT_NE(session->Query().GetFile(0), nullptr);
    EXPECT_EQ(session->Query().GetFile(1), nullptr);
}

}  // namespace
}  // namespace refhost
