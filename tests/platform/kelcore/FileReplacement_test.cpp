#include "platform/kelcore/FileReplacement.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <optional>
#include <thread>

#include "platform/kelcore/File.h"
#include "platform/kelcore/Paths.h"
#include "tests/platform/support/FailingAllocations.h"
#include "tests/platform/support/FileFolder.h"
#include "tests/platform/support/OtherProcess.h"

namespace kelcore {
namespace {

using testing::ContainsRegex;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::SizeIs;

constexpr const char* kAccessList = "system.posix_acl_access";
constexpr const char* kDefaultAccessList = "system.posix_acl_default";

void Replace(const std::u16string& path, std::string_view content) {
    File file(path);
    file.Create();
    OPlatformByteStream stream(file);
    stream.WriteBlock(content.data(), content.size());
    stream.Close();
}

/// The message with which `Create` refuses; empty if it does not.
std::string Refusal(const std::u16string& path) {
    try {
        File file(path);
        file.Create();
        return {};
    } catch (const file_exception& error) {
        return error.what();
    }
}

mode_t ModeOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(lstat(path.c_str(), &status), 0);
    return status.st_mode & 07777U;
}

std::optional<std::string> AttributeOf(const std::string& path, const char* name) {
    std::string value(1024, '\0');
    const ssize_t size = getxattr(path.c_str(), name, value.data(), value.size());
    if (size < 0) {
        return std::nullopt;
    }
    value.resize(static_cast<std::size_t>(size));
    return value;
}

bool SetAttribute(const std::string& path, const char* name, std::string_view value) {
    return setxattr(path.c_str(), name, value.data(), value.size(), 0) == 0;
}

/// An access list as the kernel keeps it: owner rw, user 1234 r, group none, mask r, others none.
std::string SomeAccessList() {
    std::string list("\x02\x00\x00\x00", 4);
    const auto entry = [&list](char tag, char rights, std::string_view id) {
        list += tag;
        list += '\0';
        list += rights;
        list += '\0';
        list += id;
    };
    constexpr std::string_view kNoId = "\xFF\xFF\xFF\xFF";
    entry(0x01, 6, kNoId);
    entry(0x02, 4, std::string_view("\xD2\x04\x00\x00", 4));
    entry(0x04, 0, kNoId);
    entry(0x10, 4, kNoId);
    entry(0x20, 0, kNoId);
    return list;
}

class FileReplacementTest : public testing::Test {
protected:
    FileReplacementTest() : target_(folder_.Path16(kName)), bytes_(folder_.Bytes(kName)) {}

    void MakeOld(mode_t mode = 0644) {
        test::WriteFile(bytes_, "old");
        ASSERT_EQ(chmod(bytes_.c_str(), mode), 0);
    }

    static constexpr const char* kName = "song.orvo";
    test::FileFolder folder_;
    std::u16string target_;
    std::string bytes_;
};

TEST_F(FileReplacementTest, MakesANewFile) {
    Replace(target_, "new");
    EXPECT_EQ(test::ReadFile(bytes_), "new");
    EXPECT_THAT(folder_.Names(), ElementsAre(kName));
}

TEST_F(FileReplacementTest, ReplacesAnOldFile) {
    MakeOld();
    Replace(target_, "new content");
    EXPECT_EQ(test::ReadFile(bytes_), "new content");
    EXPECT_THAT(folder_.Names(), ElementsAre(kName));
}

TEST_F(FileReplacementTest, BlocksAreAppended) {
    File file(target_);
    file.Create();
    OPlatformByteStream stream(file);
    stream.WriteBlock("ab", 2);
    stream.WriteBlock(nullptr, 0);
    stream.WriteBlock("\0c", 2);
    stream.Close();
    EXPECT_EQ(test::ReadFile(bytes_), std::string("ab\0c", 4));
}

TEST_F(FileReplacementTest, WithoutAnyBlockTheFileIsEmpty) {
    MakeOld();
    Replace(target_, "");
    EXPECT_EQ(test::ReadFile(bytes_), "");
}

TEST_F(FileReplacementTest, ALargeBlockIsWrittenWhole) {
    const std::string content(20'000'000, 'x');
    Replace(target_, content);
    EXPECT_EQ(test::ReadFile(bytes_), content);
}

TEST_F(FileReplacementTest, TheOldFileStaysWholeUntilTheStreamIsClosed) {
    MakeOld();
    File file(target_);
    file.Create();
    EXPECT_EQ(test::ReadFile(bytes_), "old");
    OPlatformByteStream stream(file);
    stream.WriteBlock("new", 3);
    EXPECT_EQ(test::ReadFile(bytes_), "old");
    stream.Close();
    EXPECT_EQ(test::ReadFile(bytes_), "new");
}

TEST_F(FileReplacementTest, WhoHasTheOldFileOpenGoesOnReadingIt) {
    MakeOld();
    std::ifstream reader(bytes_);
    Replace(target_, "new");
    std::string content;
    reader >> content;
    EXPECT_EQ(content, "old");
}

TEST_F(FileReplacementTest, AReaderSeesTheOldOrTheNewContentOnly) {
    const std::string first(300'000, 'a');
    const std::string second(300'000, 'b');
    test::WriteFile(bytes_, first);
    std::atomic<bool> done = false;
    std::atomic<int> mixed = 0;
    std::thread reader([&] {
        while (!done) {
            const std::string seen = test::ReadFile(bytes_);
            mixed += seen != first && seen != second ? 1 : 0;
        }
    });
    for (int i = 0; i < 20; ++i) {
        Replace(target_, i % 2 == 0 ? second : first);
    }
    done = true;
    reader.join();
    EXPECT_EQ(mixed, 0);
}

TEST_F(FileReplacementTest, AGivenUpStreamLeavesTheOldFileAndNoStray) {
    MakeOld();
    {
        File file(target_);
        file.Create();
        OPlatformByteStream stream(file);
        stream.WriteBlock("new", 3);
        EXPECT_THAT(folder_.Names(), SizeIs(2));
    }
    EXPECT_EQ(test::ReadFile(bytes_), "old");
    EXPECT_THAT(folder_.Names(), ElementsAre(kName));
}

TEST_F(FileReplacementTest, AGivenUpFileThatWasNeverThereIsNotThere) {
    {
        File file(target_);
        file.Create();
    }
    EXPECT_THAT(folder_.Names(), IsEmpty());
}

TEST_F(FileReplacementTest, CreatingAgainBeginsAnew) {
    File file(target_);
    file.Create();
    file.Create();
    EXPECT_THAT(folder_.Names(), SizeIs(1));
    OPlatformByteStream stream(file);
    stream.WriteBlock("new", 3);
    stream.Close();
    EXPECT_THAT(folder_.Names(), ElementsAre(kName));
}

TEST_F(FileReplacementTest, TheTemporaryFileIsHiddenAndBesideTheTarget) {
    MakeOld();
    File file(target_);
    file.Create();
    EXPECT_THAT(folder_.Names(),
                ElementsAre(MatchesRegex("\\.song\\.orvo\\.orvo-tmp-[0-9a-f]{12}"), kName));
}

TEST_F(FileReplacementTest, TheTemporaryFileOfAPrivateFileIsAsPrivate) {
    MakeOld(0600);
    File file(target_);
    file.Create();
    for (const std::string& name : folder_.Names()) {
        EXPECT_EQ(ModeOf(folder_.Bytes(name)), 0600U) << name;
    }
}

// ---- Permissions, owner, attributes

TEST_F(FileReplacementTest, KeepsTheMode) {
    for (const mode_t mode : {0600U, 0644U, 0666U, 0755U, 0640U, 02664U, 0202U}) {
        MakeOld(mode);
        Replace(target_, "new");
        EXPECT_EQ(ModeOf(bytes_), mode) << std::oct << mode;
    }
}

TEST_F(FileReplacementTest, ANewFileHasTheUsualModeOfThisProcess) {
    const mode_t before = umask(027);
    Replace(target_, "new");
    umask(before);
    EXPECT_EQ(ModeOf(bytes_), 0640U);
}

// What follows asks things of the user and the file system that not every machine has. There it is
// skipped, which the test run reports; as root on a file system with extended attributes, all of it
// runs.

TEST_F(FileReplacementTest, KeepsOwnerAndGroup) {
    MakeOld();
    if (chown(bytes_.c_str(), 1234, 2345) != 0) {
        GTEST_SKIP() << "only a privileged user may give files away";
    }
    ASSERT_EQ(chmod(bytes_.c_str(), 04664), 0);
    Replace(target_, "new");
    struct stat status {};
    ASSERT_EQ(stat(bytes_.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 1234U);
    EXPECT_EQ(status.st_gid, 2345U);
    EXPECT_EQ(ModeOf(bytes_), 04664U);
}

TEST_F(FileReplacementTest, WhereOwnerAndGroupCannotBeKeptNobodyGainsRights) {
    MakeOld();
    if (geteuid() != 0) {
        GTEST_SKIP() << "needs a file of somebody else";
    }
    ASSERT_EQ(chmod(bytes_.c_str(), 04666), 0);
    ASSERT_EQ(test::RunUnprivileged([this]() -> std::string {
                  Replace(target_, "new");
                  return "replaced";
              }),
              "replaced");
    EXPECT_EQ(test::ReadFile(bytes_), "new");
    EXPECT_EQ(ModeOf(bytes_), 0666U) << "no set-user-id for another owner";

    ASSERT_EQ(chown(bytes_.c_str(), 0, 0), 0);
    ASSERT_EQ(chmod(bytes_.c_str(), 0662), 0);
    ASSERT_EQ(test::RunUnprivileged([this]() -> std::string {
                  Replace(target_, "newer");
                  return "replaced";
              }),
              "replaced");
    EXPECT_EQ(ModeOf(bytes_), 0622U) << "the new group gets what everybody has";
}

TEST_F(FileReplacementTest, WhereOnlyTheGroupCannotBeKeptItGetsWhatEverybodyHas) {
    MakeOld();
    if (chown(bytes_.c_str(), 65534, 2345) != 0) {
        GTEST_SKIP() << "only a privileged user may give files away";
    }
    ASSERT_EQ(chmod(bytes_.c_str(), 0664), 0);
    ASSERT_EQ(test::RunUnprivileged([this]() -> std::string {
                  Replace(target_, "new");
                  return "replaced";
              }),
              "replaced");
    EXPECT_EQ(ModeOf(bytes_), 0644U);
}

TEST_F(FileReplacementTest, KeepsExtendedAttributes) {
    MakeOld();
    const std::string large(2000, 'x');
    if (!SetAttribute(bytes_, "user.orvo.test", "value")) {
        GTEST_SKIP() << "no extended attributes here";
    }
    ASSERT_TRUE(SetAttribute(bytes_, "user.orvo.empty", ""));
    Replace(target_, "new");
    EXPECT_EQ(AttributeOf(bytes_, "user.orvo.test"), "value");
    EXPECT_EQ(AttributeOf(bytes_, "user.orvo.empty"), "");
}

TEST_F(FileReplacementTest, KeepsTheAccessList) {
    MakeOld();
    if (!SetAttribute(bytes_, kAccessList, SomeAccessList())) {
        GTEST_SKIP() << "no access lists here";
    }
    const auto before = AttributeOf(bytes_, kAccessList);
    const mode_t mode = ModeOf(bytes_);
    Replace(target_, "new");
    EXPECT_EQ(AttributeOf(bytes_, kAccessList), before);
    EXPECT_EQ(ModeOf(bytes_), mode);
}

TEST_F(FileReplacementTest, TheFoldersDefaultAccessListDoesNotChangeAnOldFilesRights) {
    MakeOld(0600);
    if (!SetAttribute(folder_.Path(), kDefaultAccessList, SomeAccessList())) {
        GTEST_SKIP() << "no access lists here";
    }
    Replace(target_, "new");
    EXPECT_EQ(AttributeOf(bytes_, kAccessList), std::nullopt);
    EXPECT_EQ(ModeOf(bytes_), 0600U);
}

TEST_F(FileReplacementTest, ANewFileGetsTheFoldersDefaultAccessList) {
    if (!SetAttribute(folder_.Path(), kDefaultAccessList, SomeAccessList())) {
        GTEST_SKIP() << "no access lists here";
    }
    Replace(target_, "new");
    EXPECT_EQ(AttributeOf(bytes_, kAccessList), SomeAccessList());
}

TEST_F(FileReplacementTest, WhatVouchesForTheOldContentIsNotKept) {
    MakeOld();
    // A capability set of version 2: it would give rights to whatever the file now holds.
    const std::string capability(
        "\x00\x00\x00\x02\x00\x04\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00", 20);
    if (!SetAttribute(bytes_, "security.capability", capability)) {
        GTEST_SKIP() << "file capabilities cannot be set here";
    }
    Replace(target_, "new");
    EXPECT_EQ(AttributeOf(bytes_, "security.capability"), std::nullopt);
}

TEST_F(FileReplacementTest, MeasurementsOfTheOldContentAreNotKept) {
    for (const char* const name : {"security.ima", "security.evm"}) {
        MakeOld();
        if (!SetAttribute(bytes_, name, "measured")) {
            GTEST_SKIP() << "measurements cannot be set here";
        }
        Replace(target_, "new");
        EXPECT_EQ(AttributeOf(bytes_, name), std::nullopt) << name;
    }
}

// ---- Links

TEST_F(FileReplacementTest, ALinkStaysAndItsTargetIsReplaced) {
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

TEST_F(FileReplacementTest, TheTemporaryFileLiesBesideTheRealTarget) {
    ASSERT_EQ(mkdir(folder_.Bytes("sub").c_str(), 0777), 0);
    test::WriteFile(folder_.Bytes("sub/real"), "old");
    ASSERT_EQ(symlink("sub/real", bytes_.c_str()), 0);
    File file(target_);
    file.Create();
    EXPECT_THAT(folder_.Names(), ElementsAre(kName, "sub"));
}

TEST_F(FileReplacementTest, ADanglingLinksTargetIsMade) {
    ASSERT_EQ(symlink("real", bytes_.c_str()), 0);
    Replace(target_, "new");
    EXPECT_TRUE(std::filesystem::is_symlink(bytes_));
    EXPECT_EQ(test::ReadFile(folder_.Bytes("real")), "new");
}

TEST_F(FileReplacementTest, SeparatorsBehindTheNameInADanglingLinkAreNoPartOfIt) {
    ASSERT_EQ(symlink("real//", bytes_.c_str()), 0);
    Replace(target_, "new");
    EXPECT_EQ(test::ReadFile(folder_.Bytes("real")), "new");
}

TEST_F(FileReplacementTest, ADanglingLinkIntoNowhereIsRefused) {
    ASSERT_EQ(symlink("nowhere/real", bytes_.c_str()), 0);
    EXPECT_EQ(Refusal(target_), "cannot write \"@0\": its folder does not exist");
}

TEST_F(FileReplacementTest, LinksInACircleAreRefused) {
    ASSERT_EQ(symlink("other", bytes_.c_str()), 0);
    ASSERT_EQ(symlink(kName, folder_.Bytes("other").c_str()), 0);
    EXPECT_EQ(Refusal(target_), "cannot write \"@0\": Too many levels of symbolic links");
}

TEST_F(FileReplacementTest, OtherHardLinksKeepTheOldContent) {
    MakeOld();
    ASSERT_EQ(link(bytes_.c_str(), folder_.Bytes("other").c_str()), 0);
    Replace(target_, "new");
    EXPECT_EQ(test::ReadFile(bytes_), "new");
    EXPECT_EQ(test::ReadFile(folder_.Bytes("other")), "old");
}

// ---- What is refused

TEST_F(FileReplacementTest, AFolderIsRefused) {
    ASSERT_EQ(mkdir(bytes_.c_str(), 0777), 0);
    EXPECT_EQ(Refusal(target_), "cannot write \"@0\": it is a folder");
    ASSERT_EQ(symlink(kName, folder_.Bytes("link").c_str()), 0);
    EXPECT_EQ(Refusal(folder_.Path16("link")), "cannot write \"@0\": it is a folder");
    EXPECT_EQ(Refusal(u"/"), "cannot write \"@0\": it is a folder");
}

TEST_F(FileReplacementTest, APipeIsRefusedWithoutWaiting) {
    ASSERT_EQ(mkfifo(bytes_.c_str(), 0666), 0);
    EXPECT_EQ(Refusal(target_), "cannot write \"@0\": it is not a regular file");
    EXPECT_TRUE(std::filesystem::is_fifo(bytes_));
}

TEST_F(FileReplacementTest, ADeviceIsRefused) {
    EXPECT_EQ(Refusal(u"/dev/null"), "cannot write \"@0\": it is not a regular file");
}

TEST_F(FileReplacementTest, ASocketIsRefused) {
    const Descriptor server(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(bytes_.size(), sizeof(address.sun_path));
    bytes_.copy(address.sun_path, bytes_.size());
    ASSERT_EQ(bind(server.Number(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)),
              0);
    EXPECT_EQ(Refusal(target_), "cannot write \"@0\": it is not a regular file");
}

TEST_F(FileReplacementTest, AWriteProtectedFileIsRefusedWhoeverAsks) {
    MakeOld(0444);
    EXPECT_EQ(Refusal(target_), "cannot write \"@0\": it is write-protected");
    EXPECT_EQ(test::ReadFile(bytes_), "old");
    EXPECT_THAT(folder_.Names(), ElementsAre(kName));
}

TEST_F(FileReplacementTest, AFileThatOthersMayWriteButThisUserMayNotIsRefused) {
    MakeOld(0644);
    if (geteuid() != 0) {
        GTEST_SKIP() << "needs a file of somebody else";
    }
    EXPECT_EQ(test::RunUnprivileged([this] { return Refusal(target_); }),
              "cannot write \"@0\": Permission denied");
}

TEST_F(FileReplacementTest, AFolderThatTakesNoNewFileIsRefused) {
    MakeOld(0666);
    ASSERT_EQ(chmod(folder_.Path().c_str(), 0555), 0);
    EXPECT_EQ(test::RunUnprivileged([this] { return Refusal(target_); }),
              "cannot write \"@0\": no new file can be made in its folder: Permission denied");
    ASSERT_EQ(chmod(folder_.Path().c_str(), 0777), 0);
}

TEST_F(FileReplacementTest, SomebodyElsesFileInAStickyFolderIsRefusedAndKept) {
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

TEST_F(FileReplacementTest, AFolderThatMayBeWrittenButNotReadWillDo) {
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

TEST_F(FileReplacementTest, AMissingFolderIsRefused) {
    EXPECT_EQ(Refusal(folder_.Path16("missing/song.orvo")),
              "cannot write \"@0\": its folder does not exist");
}

TEST_F(FileReplacementTest, AFileInPlaceOfTheFolderIsRefused) {
    MakeOld();
    EXPECT_EQ(Refusal(folder_.Path16("song.orvo/below")), "cannot write \"@0\": Not a directory");
}

TEST_F(FileReplacementTest, ARefusalCarriesTheSystemsErrorNumber) {
    try {
        File file(folder_.Path16("missing/song.orvo"));
        file.Create();
        FAIL() << "not refused";
    } catch (const file_exception& error) {
        EXPECT_EQ(error.SystemError(), ENOENT);
    }
}

// ---- Failures on the way

TEST_F(FileReplacementTest, AWriteThatFailsHalfWayLeavesTheOldFileAndNoStray) {
    MakeOld();
    const std::string outcome = test::RunInChild([this]() -> std::string {
        // A limit on the size of files makes a short write of the first block, and then an error.
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{1000, 1000};
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0) {
            return "no limit";
        }
        File file(target_);
        file.Create();
        OPlatformByteStream stream(file);
        try {
            stream.WriteBlock(std::string(5000, 'x').data(), 5000);
            return "written";
        } catch (const file_exception& error) {
            const bool reported = error.SystemError() == EFBIG;
            try {
                stream.Close();
                return "closed";
            } catch (const file_exception& second) {
                return error.what() + std::string(reported ? "; " : "?; ") + second.what();
            }
        }
    });
    EXPECT_EQ(outcome,
              "cannot write \"@0\": File too large; "
              "cannot write \"@0\": its stream is closed, or failed before");
    EXPECT_EQ(test::ReadFile(bytes_), "old");
    EXPECT_THAT(folder_.Names(), ElementsAre(kName));
}

TEST_F(FileReplacementTest, WantOfMemoryAnywhereLeavesTheOldFileAndNoStray) {
    MakeOld();
    SetAttribute(bytes_, "user.orvo.test", "value");
    ASSERT_EQ(symlink(kName, folder_.Bytes("link").c_str()), 0);
    const std::u16string link = folder_.Path16("link");
    for (std::size_t number = 0;; ++number) {
        bool threw = false;
        bool happened = false;
        {
            const test::FailingAllocation failure(number);
            try {
                Replace(link, "new");
            } catch (const std::bad_alloc&) {
                threw = true;
            }
            happened = failure.Happened();
        }
        ASSERT_EQ(threw, happened) << "allocation " << number;
        ASSERT_THAT(folder_.Names(), ElementsAre("link", kName)) << "allocation " << number;
        ASSERT_EQ(test::ReadFile(bytes_), threw ? "old" : "new") << "allocation " << number;
        if (!threw) {
            EXPECT_GT(number, 5U);
            return;
        }
    }
}

TEST_F(FileReplacementTest, ATargetThatTurnedIntoAFolderFailsAtTheEnd) {
    File file(target_);
    file.Create();
    OPlatformByteStream stream(file);
    stream.WriteBlock("new", 3);
    ASSERT_EQ(mkdir(bytes_.c_str(), 0777), 0);
    EXPECT_THROW(stream.Close(), file_exception);
    EXPECT_THROW(stream.Close(), file_exception) << "a failure stays one";
    EXPECT_THAT(folder_.Names(), ElementsAre(kName));
}

TEST_F(FileReplacementTest, AFolderThatIsRenamedMeanwhileTakesTheFileAlong) {
    ASSERT_EQ(mkdir(folder_.Bytes("before").c_str(), 0777), 0);
    File file(folder_.Path16("before/song.orvo"));
    file.Create();
    OPlatformByteStream stream(file);
    stream.WriteBlock("new", 3);
    ASSERT_EQ(rename(folder_.Bytes("before").c_str(), folder_.Bytes("after").c_str()), 0);
    stream.Close();
    EXPECT_EQ(test::ReadFile(folder_.Bytes("after/song.orvo")), "new");
}

// ---- Strays

TEST_F(FileReplacementTest, AKilledWriterLeavesTheOldFileAndTheNextOneTidiesUp) {
    MakeOld();
    test::RunAndKill([this] {
        File file(target_);
        file.Create();
        OPlatformByteStream stream(file);
        stream.WriteBlock("half", 4);
        kill(getpid(), SIGKILL);
    });
    EXPECT_EQ(test::ReadFile(bytes_), "old");
    ASSERT_THAT(folder_.Names(), SizeIs(2)) << "the stray this test is about";
    Replace(target_, "new");
    EXPECT_THAT(folder_.Names(), ElementsAre(kName));
    EXPECT_EQ(test::ReadFile(bytes_), "new");
}

TEST_F(FileReplacementTest, ARunningWriterKeepsItsTemporaryFile) {
    MakeOld();
    File first(target_);
    first.Create();
    OPlatformByteStream firstStream(first);
    firstStream.WriteBlock("first", 5);
    Replace(target_, "second");
    EXPECT_EQ(test::ReadFile(bytes_), "second");
    firstStream.Close();
    EXPECT_EQ(test::ReadFile(bytes_), "first");
    EXPECT_THAT(folder_.Names(), ElementsAre(kName));
}

TEST_F(FileReplacementTest, ManyWritersAtOnceAllSucceedAndLeaveNoStray) {
    std::vector<std::thread> writers;
    for (int i = 0; i < 4; ++i) {
        writers.emplace_back([this] {
            for (int round = 0; round < 25; ++round) {
                EXPECT_NO_THROW(Replace(target_, "content"));
            }
        });
    }
    for (std::thread& writer : writers) {
        writer.join();
    }
    EXPECT_EQ(test::ReadFile(bytes_), "content");
    EXPECT_THAT(folder_.Names(), ElementsAre(kName));
}

TEST_F(FileReplacementTest, FilesThatOnlyLookLikeStraysAreLeftAlone) {
    const std::vector<std::string> others = {
        ".other.orvo.orvo-tmp-0123456789ab",  // of another file
        ".song.orvo.orvo-tmp-0123456789AB",   // other digits
        ".song.orvo.orvo-tmp-0123456789a",    // one digit short
        ".song.orvo.orvo-tmp-0123456789abc",  // one digit long
        ".song.orvo.orvo-tmp-",               // no digits
        ".song.orvo.orvo-backup",
    };
    for (const std::string& name : others) {
        test::WriteFile(folder_.Bytes(name), "keep");
    }
    ASSERT_EQ(mkdir(folder_.Bytes(".song.orvo.orvo-tmp-0123456789ab").c_str(), 0777), 0);
    ASSERT_EQ(symlink(others[0].c_str(), folder_.Bytes(".song.orvo.orvo-tmp-ffffffffffff").c_str()),
              0);
    ASSERT_EQ(mkfifo(folder_.Bytes(".song.orvo.orvo-tmp-eeeeeeeeeeee").c_str(), 0600), 0);
    const auto before = folder_.Names();
    Replace(target_, "new");
    auto after = folder_.Names();
    std::erase(after, kName);
    EXPECT_EQ(after, before);
}

TEST_F(FileReplacementTest, AStrayIsRemoved) {
    test::WriteFile(folder_.Bytes(".song.orvo.orvo-tmp-0123456789ab"), "stray");
    Replace(target_, "new");
    EXPECT_THAT(folder_.Names(), ElementsAre(kName));
}

// ---- Names

TEST_F(FileReplacementTest, NamesUpToTheSystemsLimitWork) {
    for (const std::size_t length : {1U, 231U, 232U, 233U, 250U, 255U}) {
        const std::string name(length, 'n');
        Replace(folder_.Path16(name), "new");
        Replace(folder_.Path16(name), "newer");
        EXPECT_EQ(test::ReadFile(folder_.Bytes(name)), "newer") << length;
    }
    EXPECT_THAT(folder_.Names(), SizeIs(6)) << "no strays";
}

TEST_F(FileReplacementTest, ALongNameIsNotCutInsideACharacter) {
    std::string name = "n";
    while (name.size() < 253) {
        name += "\xC3\xA9";
    }
    File file(folder_.Path16(name));
    file.Create();
    ASSERT_THAT(folder_.Names(), SizeIs(1));
    const std::string temporary = folder_.Names().front();
    EXPECT_LE(temporary.size(), 255U);
    EXPECT_GE(temporary.size(), 254U);
    EXPECT_THAT(temporary, ContainsRegex("\xC3\xA9\\.orvo-tmp-[0-9a-f]{12}$"));
}

TEST_F(FileReplacementTest, ALongNameThatHasNoPlaceToCutItIsLeftOut) {
    File file(folder_.Path16(std::string(250, '\x80')));
    file.Create();
    EXPECT_THAT(folder_.Names(), ElementsAre(ContainsRegex("^\\.\\.orvo-tmp-[0-9a-f]{12}$")));
}

TEST_F(FileReplacementTest, ANameBeyondTheSystemsLimitIsRefused) {
    EXPECT_EQ(Refusal(folder_.Path16(std::string(256, 'n'))),
              "cannot write \"@0\": File name too long");
}

TEST_F(FileReplacementTest, ANameThatIsNoUtf8Works) {
    Replace(folder_.Path16("s\xFFng.orvo"), "new");
    EXPECT_THAT(folder_.Names(), ElementsAre("s\xFFng.orvo"));
}

}  // namespace
}  // namespace kelcore
