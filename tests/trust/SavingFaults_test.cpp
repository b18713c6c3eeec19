#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

#include "platform/kelcore/File.h"
#include "platform/kelcore/Paths.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/trust/Saving.h"
#include "tests/trust/SystemFaults.h"

namespace test {
namespace {

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

    /// Where among the calls of `work` the first one of that name is.
    template <class Work>
    static std::size_t PlaceOf(const std::string& name, Work work) {
        BeginFaults({});
        work();
        const std::vector<std::string> calls = EndFaults();
        const auto found = std::find(calls.begin(), calls.end(), name);
        EXPECT_NE(found, calls.end()) << name;
        return static_cast<std::size_t>(found - calls.begin());
    }

    TemporaryFolder folder_;
    std::string path_;
};

TEST_F(SavingFaultsTest, ARenameThatIsDoneThoughReportedAsFailedIsASave) {
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

TEST_F(SavingFaultsTest, ARenameThatFailsIsNoSave) {
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

}  // namespace
}  // namespace test
