#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "platform/kelcore/File.h"
#include "platform/kelcore/Paths.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/trust/saving/Saving.h"
#include "tests/trust/saving/SystemFaults.h"

namespace test {
namespace {

using namespace std::string_view_literals;

/// In the kernel's format: owner rw, user 1234 r, group none, mask r, others none.
constexpr std::string_view kListForAnotherUser =
    "\2\0\0\0"
    "\1\0\6\0\xFF\xFF\xFF\xFF"
    "\2\0\4\0\xD2\4\0\0"
    "\4\0\0\0\xFF\xFF\xFF\xFF"
    "\x10\0\4\0\xFF\xFF\xFF\xFF"
    "\x20\0\0\0\xFF\xFF\xFF\xFF"sv;

class SavingFaultsTest : public testing::Test {
protected:
    SavingFaultsTest() : path_(folder_.Write("song.orvo", "old")) {}

    void Replace() const {
        kelcore::File file(kelcore::PathFromBytes(path_));
        file.Create();
        kelcore::OPlatformByteStream stream(file);
        stream.WriteBlock("new", 3);
        stream.Close();
    }

    void GiveUp() const {
        kelcore::File file(kelcore::PathFromBytes(path_));
        file.Create();
    }

    /// The position of the first call with that name among the calls of `work`.
    template <class Work>
    static std::size_t PlaceOf(const std::string& name, Work work) {
        BeginFaults({});
        work();
        const std::vector<std::string> calls = EndFaults();
        const auto found = std::find(calls.begin(), calls.end(), name);
        EXPECT_NE(found, calls.end()) << name;
        return static_cast<std::size_t>(found - calls.begin());
    }

    std::vector<std::string> CallsOfAReplacement() const {
        BeginFaults({});
        Replace();
        return EndFaults();
    }

    /// The position of the last `name` before the first `next`.
    static std::size_t PlaceBefore(const std::string& next, const std::string& name,
                                   const std::vector<std::string>& calls) {
        const auto end = std::find(calls.begin(), calls.end(), next);
        const auto found = std::find(std::make_reverse_iterator(end), calls.rend(), name);
        EXPECT_NE(found, calls.rend()) << name;
        return static_cast<std::size_t>(std::distance(calls.begin(), found.base())) - 1;
    }

    mode_t Mode() const {
        struct stat status {};
        EXPECT_EQ(::lstat(path_.c_str(), &status), 0);
        return status.st_mode & 07777U;
    }

    bool SetAttribute(const char* name, std::string_view value) const {
        return ::setxattr(path_.c_str(), name, value.data(), value.size(), 0) == 0;
    }

    std::string Attribute(const char* name) const {
        std::string value(100, '\0');
        const ssize_t size = ::getxattr(path_.c_str(), name, value.data(), value.size());
        value.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
        return value;
    }

    TemporaryFolder folder_;
    std::string path_;
};

TEST_F(SavingFaultsTest, ARenameThatWorksButReportsFailureIsASave) {
    const std::size_t place = PlaceOf("renameat", [this] { Replace(); });
    for (const int error : {EIO, EINTR}) {
        folder_.Write("song.orvo", "old");
        BeginFaults({Wrong::FailsAfterwards, error, Extent::Once, place});
        EXPECT_NO_THROW(Replace()) << error;
        const std::vector<std::string> calls = EndFaults();
        EXPECT_EQ(ContentOf(path_), "new");
        EXPECT_EQ(std::count(calls.begin(), calls.end(), "fsync"), 2) << "file and folder";
    }
}

TEST_F(SavingFaultsTest, ARenameThatFailsIsNotASave) {
    const std::size_t place = PlaceOf("renameat", [this] { Replace(); });
    folder_.Write("song.orvo", "old");
    BeginFaults({Wrong::Fails, EIO, Extent::Once, place});
    EXPECT_THROW(Replace(), kelcore::file_exception);
    EndFaults();
    EXPECT_EQ(ContentOf(path_), "old");
    EXPECT_EQ(CountStrays(folder_.Path()), 0U);
}

TEST_F(SavingFaultsTest, ARemovalThatASignalInterruptsIsRepeated) {
    const std::size_t place = PlaceOf("unlinkat", [this] { GiveUp(); });
    BeginFaults({Wrong::Fails, EINTR, Extent::Once, place});
    GiveUp();
    EndFaults();
    EXPECT_EQ(CountStrays(folder_.Path()), 0U);
}

TEST_F(SavingFaultsTest, AStrayThatCannotBeRemovedIsRemovedByTheNextSave) {
    const std::size_t place = PlaceOf("unlinkat", [this] { GiveUp(); });
    BeginFaults({Wrong::Fails, EIO, Extent::Once, place});
    GiveUp();
    EndFaults();
    ASSERT_EQ(CountStrays(folder_.Path()), 1U) << "the stray this test is about";
    Replace();
    EXPECT_EQ(CountStrays(folder_.Path()), 0U);
}

TEST_F(SavingFaultsTest, APropertyThatTheFileSystemRejectsIsLeftBehind) {
    for (const char* const call : {"fchown", "fremovexattr", "flistxattr"}) {
        folder_.Write("song.orvo", "old");
        const std::size_t place = PlaceOf(call, [this] { Replace(); });
        BeginFaults({Wrong::Fails, ENOTSUP, Extent::SameName, place});
        EXPECT_NO_THROW(Replace()) << call;
        EndFaults();
        EXPECT_EQ(ContentOf(path_), "new") << call;
    }
}

TEST_F(SavingFaultsTest, AnAttributeThatCannotBeReadOrSetIsLeftBehind) {
    if (!SetAttribute("user.orvo.test", "value")) {
        GTEST_SKIP() << "no extended attributes here";
    }
    for (const char* const call : {"fgetxattr", "fsetxattr"}) {
        folder_.Write("song.orvo", "old");
        ASSERT_TRUE(SetAttribute("user.orvo.test", "value"));
        const std::size_t place = PlaceOf(call, [this] { Replace(); });
        BeginFaults({Wrong::Fails, ENOTSUP, Extent::SameName, place});
        EXPECT_NO_THROW(Replace()) << call;
        EndFaults();
        EXPECT_EQ(ContentOf(path_), "new") << call;
        EXPECT_EQ(Attribute("user.orvo.test"), "") << call;
    }
}

TEST_F(SavingFaultsTest, AnAttributeThatGrowsWhileItIsReadIsReadAgain) {
    if (!SetAttribute("user.orvo.test", "value")) {
        GTEST_SKIP() << "no extended attributes here";
    }
    const std::size_t place = PlaceOf("fgetxattr", [this] { Replace(); });
    BeginFaults({Wrong::Fails, ERANGE, Extent::Once, place + 1});
    EXPECT_NO_THROW(Replace());
    const std::vector<std::string> calls = EndFaults();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "fgetxattr"), 4);
    EXPECT_EQ(Attribute("user.orvo.test"), "value");
}

// With an access list, the group digit of the mode is the mask, which grants more than the group
// had.
TEST_F(SavingFaultsTest, WithoutItsAccessListAFileGrantsTheGroupWhatItGrantsEverybody) {
    if (!SetAttribute("system.posix_acl_access", kListForAnotherUser)) {
        GTEST_SKIP() << "no access lists here";
    }
    ASSERT_EQ(Mode(), 0640U);
    const std::size_t place = PlaceOf("fsetxattr", [this] { Replace(); });
    ASSERT_EQ(Mode(), 0640U) << "the list was kept";
    BeginFaults({Wrong::Fails, ENOTSUP, Extent::SameName, place});
    Replace();
    EndFaults();
    EXPECT_EQ(Mode(), 0600U);
}

TEST_F(SavingFaultsTest, AnOldFileThatMayNotBeReadIsReplacedWithoutItsAttributes) {
    const std::size_t place = PlaceBefore("fremovexattr", "openat", CallsOfAReplacement());
    for (const int error : {EACCES, EPERM}) {
        folder_.Write("song.orvo", "old");
        BeginFaults({Wrong::Fails, error, Extent::Once, place});
        EXPECT_NO_THROW(Replace()) << error;
        EndFaults();
        EXPECT_EQ(ContentOf(path_), "new");
    }
}

TEST_F(SavingFaultsTest, ATemporaryNameThatIsTakenIsSkipped) {
    const std::size_t place = PlaceBefore("flock", "openat", CallsOfAReplacement());
    BeginFaults({Wrong::Fails, EEXIST, Extent::Once, place});
    EXPECT_NO_THROW(Replace());
    EndFaults();
    EXPECT_EQ(ContentOf(path_), "new");

    folder_.Write("song.orvo", "old");
    BeginFaults({Wrong::Fails, EEXIST, Extent::SameName, place});
    EXPECT_THROW(Replace(), kelcore::file_exception) << "every name is taken";
    EndFaults();
    EXPECT_EQ(ContentOf(path_), "old");
}

TEST_F(SavingFaultsTest, ATemporaryFileThatAnotherTookForAStrayIsMadeAgain) {
    const std::size_t place = PlaceOf("flock", [this] { Replace(); });
    BeginFaults({Wrong::Fails, EWOULDBLOCK, Extent::Once, place});
    EXPECT_NO_THROW(Replace());
    EndFaults();
    EXPECT_EQ(ContentOf(path_), "new");
    EXPECT_EQ(CountStrays(folder_.Path()), 0U);
}

TEST_F(SavingFaultsTest, AFolderThatNeedsNoSyncIsNotAFailure) {
    const std::vector<std::string> calls = CallsOfAReplacement();
    const auto last = std::find(calls.rbegin(), calls.rend(), "fsync");
    const auto place = static_cast<std::size_t>(std::distance(last, calls.rend())) - 1;
    for (const int error : {EINVAL, ENOTSUP}) {
        BeginFaults({Wrong::Fails, error, Extent::Once, place});
        EXPECT_NO_THROW(Replace()) << error;
        EndFaults();
    }
}

TEST_F(SavingFaultsTest, AFileSystemThatStatesNoLimitForNamesHasTheUsualOne) {
    const std::size_t place = PlaceOf("fpathconf", [this] { Replace(); });
    BeginFaults({Wrong::Fails, 0, Extent::Once, place});
    EXPECT_NO_THROW(Replace());
    EndFaults();
    EXPECT_EQ(ContentOf(path_), "new");
}

}  // namespace
}  // namespace test
