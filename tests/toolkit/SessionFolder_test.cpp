#include "toolkit/SessionFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/TemporaryFolder.h"

using testing::ElementsAre;
using testing::IsEmpty;
using toolkit::FindSessions;

namespace {

TEST(SessionFolder, FindsSessionsOfAnyCaseInAllFoldersSorted) {
    const test::TemporaryFolder folder;
    for (const char* const name : {"b", "b/deep", "a.orvo"}) {
        std::filesystem::create_directory(folder / name);
    }
    for (const char* const name : {"z.orvo", "b/c.ORVO", "b/deep/d.Orvo", "a.orvo/inside.orvo",
                                   "orvo", "x.orvo.bak", "y.json"}) {
        folder.Write(name, "");
    }
    const std::string top = folder.Path();
    EXPECT_THAT(FindSessions(top).sessions,
                ElementsAre(top + "/a.orvo/inside.orvo", top + "/b/c.ORVO", top + "/b/deep/d.Orvo",
                            top + "/z.orvo"));
    EXPECT_THAT(FindSessions(top).unread, IsEmpty());
}

TEST(SessionFolder, FollowsLinksToFilesAndNoneToFolders) {
    const test::TemporaryFolder folder;
    std::filesystem::create_directory(folder / "b");
    folder.Write("b/a.orvo", "");
    std::filesystem::create_symlink("..", folder / "b/loop");
    std::filesystem::create_symlink("b", folder / "again");
    std::filesystem::create_symlink("b/a.orvo", folder / "link.orvo");
    std::filesystem::create_symlink("nowhere", folder / "gone.orvo");
    const std::string top = folder.Path();
    EXPECT_THAT(FindSessions(top).sessions,
                ElementsAre(top + "/b/a.orvo", top + "/gone.orvo", top + "/link.orvo"));
}

TEST(SessionFolder, NamesAFolderThatCannotBeRead) {
    const auto content = FindSessions("/nowhere/at/all");
    EXPECT_THAT(content.sessions, IsEmpty());
    ASSERT_EQ(content.unread.size(), 1u);
    EXPECT_EQ(content.unread[0].path, "/nowhere/at/all");
}

}  // namespace
