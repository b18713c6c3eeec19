#include "toolkit/media/MediaIndex.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/TemporaryFolder.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MediaIndexTest : public testing::Test {
protected:
    void Write(const std::string& name) const {
        std::filesystem::create_directories((folder_ / name).parent_path());
        folder_.Write(name.c_str(), "");
    }
    std::string Path(const std::string& name) const { return (folder_ / name).string(); }
    toolkit::MediaIndex::Added Add(const std::string& name) {
        return index_.Add(folder_ / name, {});
    }

    test::TemporaryFolder folder_;
    toolkit::MediaIndex index_;
};

TEST_F(MediaIndexTest, FindsFilesOfOneNameInAllFoldersBelow) {
    Write("m/b/a.wav");
    Write("m/a.wav");
    Write("m/c/d/a.wav");
    Write("m/other.wav");
    EXPECT_TRUE(Add("m").isRead);
    EXPECT_EQ(index_.FileCount(), 4U);
    EXPECT_THAT(index_.Find("a.wav"),
                ElementsAre(Path("m/a.wav"), Path("m/b/a.wav"), Path("m/c/d/a.wav")));
    EXPECT_THAT(index_.Find("b"), IsEmpty());
}

TEST_F(MediaIndexTest, KnowsAFolderOnce) {
    Write("m/b/a.wav");
    Add("m/b");
    Add("m");
    Add("m");
    EXPECT_THAT(index_.Find("a.wav"), ElementsAre(Path("m/b/a.wav")));
}

TEST_F(MediaIndexTest, PrefersTheExactSpellingToAnother) {
    Write("m/Kick.WAV");
    Add("m");
    EXPECT_THAT(index_.Find("kick.wav"), ElementsAre(Path("m/Kick.WAV")));
    Write("n/kick.wav");
    Add("n");
    EXPECT_THAT(index_.Find("kick.wav"), ElementsAre(Path("n/kick.wav")));
}

TEST_F(MediaIndexTest, TakesCombinedAndSeparateAccentsForTheSame) {
    Write("m/Caf\xC3\xA9.wav");
    Add("m");
    EXPECT_THAT(index_.Find("cafe\xCC\x81.wav"), ElementsAre(Path("m/Caf\xC3\xA9.wav")));
}

TEST_F(MediaIndexTest, FindsANameThatIsNotUtf8) {
    Write("m/\xFF.wav");
    Add("m");
    EXPECT_THAT(index_.Find("\xFF.wav"), ElementsAre(Path("m/\xFF.wav")));
}

TEST_F(MediaIndexTest, PassesOverPipesAndLinksToFolders) {
    Write("m/a.wav");
    ASSERT_EQ(::mkfifo(Path("m/pipe.wav").c_str(), 0600), 0);
    std::filesystem::create_directory_symlink(folder_ / "m", folder_ / "m/round");
    std::filesystem::create_symlink(folder_ / "m/a.wav", folder_ / "m/link.wav");
    Add("m");
    EXPECT_EQ(index_.FileCount(), 2U);
    EXPECT_THAT(index_.Find("link.wav"), ElementsAre(Path("m/link.wav")));
}

TEST_F(MediaIndexTest, ReportsAFolderThatIsNotThere) {
    const auto added = Add("gone");
    EXPECT_FALSE(added.isRead);
    ASSERT_EQ(added.unread.size(), 1U);
    EXPECT_EQ(added.unread[0].path, Path("gone"));
    EXPECT_EQ(added.unread[0].problem.what, "this folder cannot be read");
}

TEST_F(MediaIndexTest, StopsWhenItIsCancelled) {
    Write("m/b/a.wav");
    EXPECT_TRUE(index_.Add(folder_ / "m", [](std::size_t) { return false; }).cancelled);
    EXPECT_THAT(index_.Find("a.wav"), IsEmpty());
}

}  // namespace
