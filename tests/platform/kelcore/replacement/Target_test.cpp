#include "platform/kelcore/replacement/Target.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <filesystem>

#include "tests/platform/kelcore/replacement/ReplacementFixture.h"
#include "tests/platform/support/OtherProcess.h"

namespace kelcore {
namespace {

using testing::ElementsAre;

class ReplacementTargetTest : public ReplacementTest {};

// ---- Links

TEST_F(ReplacementTargetTest, ALinkStaysAndItsTargetIsReplaced) {
    MakeOld(0640);
    ASSERT_EQ(mkdir(folder_.Bytes("sub").c_str(), 0777), 0);
    ASSERT_EQ(symlink("../song.orvo", folder_.Bytes("sub/second").c_str()), 0);
    ASSERT_EQ(symlink(folder_.Bytes("sub/second").c_str(), folder_.Bytes("first").c_str()), 0);
    Replace(folder_.Path16("first"), "new");
    EXPECT_EQ(test::ReadFile(bytes_), "new");
    EXPECT_EQ(ModeOf(bytes_), 0640U);
    EXPECT_TRUE(std::filesystem::is_symlink(folder_.Bytes("first")));
    EXPECT_TRUE(std::filesystem::is_symlink(folder_.Bytes("sub/second")));
    EXPECT_THAT(folder_.Names(), ElementsAre("first", kName, "sub"));
}

TEST_F(ReplacementTargetTest, TheTemporaryFileIsNextToTheRealTarget) {
    ASSERT_EQ(mkdir(folder_.Bytes("sub").c_str(), 0777), 0);
    test::WriteFile(folder_.Bytes("sub/real"), "old");
    ASSERT_EQ(symlink("sub/real", bytes_.c_str()), 0);
    File file(target_);
    file.Create();
    EXPECT_THAT(folder_.Names(), ElementsAre(kName, "sub"));
}

TEST_F(ReplacementTargetTest, ADanglingLinksTargetIsCreated) {
    ASSERT_EQ(symlink("real", bytes_.c_str()), 0);
    Replace(target_, "new");
    EXPECT_TRUE(std::filesystem::is_symlink(bytes_));
    EXPECT_EQ(test::ReadFile(folder_.Bytes("real")), "new");
}

TEST_F(ReplacementTargetTest, TrailingSeparatorsInADanglingLinkAreIgnored) {
    ASSERT_EQ(symlink("real//", bytes_.c_str()), 0);
    Replace(target_, "new");
    EXPECT_EQ(test::ReadFile(folder_.Bytes("real")), "new");
}

TEST_F(ReplacementTargetTest, ADanglingLinkIntoAMissingFolderIsRefused) {
    ASSERT_EQ(symlink("nowhere/real", bytes_.c_str()), 0);
    EXPECT_EQ(Refusal(target_), "cannot write \"@0\": its folder does not exist");
}

TEST_F(ReplacementTargetTest, LinksInACircleAreRefused) {
    ASSERT_EQ(symlink("other", bytes_.c_str()), 0);
    ASSERT_EQ(symlink(kName, folder_.Bytes("other").c_str()), 0);
    EXPECT_EQ(Refusal(target_), "cannot write \"@0\": Too many levels of symbolic links");
}

TEST_F(ReplacementTargetTest, OtherHardLinksKeepTheOldContent) {
    MakeOld();
    ASSERT_EQ(link(bytes_.c_str(), folder_.Bytes("other").c_str()), 0);
    Replace(target_, "new");
    EXPECT_EQ(test::ReadFile(bytes_), "new");
    EXPECT_EQ(test::ReadFile(folder_.Bytes("other")), "old");
}

// ---- Refusals

TEST_F(ReplacementTargetTest, AFolderIsRefused) {
    ASSERT_EQ(mkdir(bytes_.c_str(), 0777), 0);
    EXPECT_EQ(Refusal(target_), "cannot write \"@0\": it is a folder");
    ASSERT_EQ(symlink(kName, folder_.Bytes("link").c_str()), 0);
    EXPECT_EQ(Refusal(folder_.Path16("link")), "cannot write \"@0\": it is a folder");
    EXPECT_EQ(Refusal(u"/"), "cannot write \"@0\": it is a folder");
}

TEST_F(ReplacementTargetTest, APipeIsRefusedWithoutWaiting) {
    ASSERT_EQ(mkfifo(bytes_.c_str(), 0666), 0);
    EXPECT_EQ(Refusal(target_), "cannot write \"@0\": it is not a regular file");
    EXPECT_TRUE(std::filesystem::is_fifo(bytes_));
}

TEST_F(ReplacementTargetTest, ADeviceIsRefused) {
    EXPECT_EQ(Refusal(u"/dev/null"), "cannot write \"@0\": it is not a regular file");
}

TEST_F(ReplacementTargetTest, ASocketIsRefused) {
    const replacement::Descriptor server(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(bytes_.size(), sizeof(address.sun_path));
    bytes_.copy(address.sun_path, bytes_.size());
    ASSERT_EQ(bind(server.Number(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)),
              0);
    EXPECT_EQ(Refusal(target_), "cannot write \"@0\": it is not a regular file");
}

TEST_F(ReplacementTargetTest, AWriteProtectedFileIsRefusedWhoeverAsks) {
    MakeOld(0444);
    EXPECT_EQ(Refusal(target_), "cannot write \"@0\": it is write-protected");
    EXPECT_EQ(test::ReadFile(bytes_), "old");
    EXPECT_THAT(folder_.Names(), ElementsAre(kName));
}

TEST_F(ReplacementTargetTest, AFileThatOnlyOthersMayWriteIsRefused) {
    MakeOld(0644);
    if (geteuid() != 0) {
        GTEST_SKIP() << "needs a file of somebody else";
    }
    EXPECT_EQ(test::RunUnprivileged([this] { return Refusal(target_); }),
              "cannot write \"@0\": Permission denied");
}

TEST_F(ReplacementTargetTest, AReadOnlyFolderIsRefused) {
    MakeOld(0666);
    ASSERT_EQ(chmod(folder_.Path().c_str(), 0555), 0);
    EXPECT_EQ(test::RunUnprivileged([this] { return Refusal(target_); }),
              "cannot write \"@0\": no new file can be made in its folder: Permission denied");
    ASSERT_EQ(chmod(folder_.Path().c_str(), 0777), 0);
}

TEST_F(ReplacementTargetTest, SomebodyElsesFileInAStickyFolderIsRefusedAndKept) {
    MakeOld(0666);
    if (geteuid() != 0) {
        GTEST_SKIP() << "needs a file of somebody else";
    }
    ASSERT_EQ(chmod(folder_.Path().c_str(), 01777), 0);
    EXPECT_EQ(test::RunUnprivileged([this]() -> std::string {
                  Replace(target_, "new");
                  return "replaced";
              }),
              "exception: cannot write \"@0\": Operation not permitted");
    EXPECT_EQ(test::ReadFile(bytes_), "old");
    EXPECT_THAT(folder_.Names(), ElementsAre(kName));
}

TEST_F(ReplacementTargetTest, AFolderThatIsWritableButNotReadableWorks) {
    MakeOld(0666);
    ASSERT_EQ(chmod(folder_.Path().c_str(), 0333), 0);
    EXPECT_EQ(test::RunUnprivileged([this]() -> std::string {
                  Replace(target_, "new");
                  return "replaced";
              }),
              "replaced");
    ASSERT_EQ(chmod(folder_.Path().c_str(), 0777), 0);
    EXPECT_EQ(test::ReadFile(bytes_), "new");
}

TEST_F(ReplacementTargetTest, AMissingFolderIsRefused) {
    EXPECT_EQ(Refusal(folder_.Path16("missing/song.orvo")),
              "cannot write \"@0\": its folder does not exist");
}

TEST_F(ReplacementTargetTest, AFileInsteadOfTheFolderIsRefused) {
    MakeOld();
    EXPECT_EQ(Refusal(folder_.Path16("song.orvo/below")), "cannot write \"@0\": Not a directory");
}

TEST_F(ReplacementTargetTest, ARefusalCarriesTheSystemsErrorNumber) {
    try {
        File file(folder_.Path16("missing/song.orvo"));
        file.Create();
        FAIL() << "not refused";
    } catch (const file_exception& error) {
        EXPECT_EQ(error.SystemError(), ENOENT);
    }
}

}  // namespace
}  // namespace kelcore
