#include "toolkit/SessionFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

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

TEST(SessionFolder, FollowsLinksToFilesButNotToFolders) {
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

/// Limits this process to a few open files at a time.
class FewDescriptors {
public:
    FewDescriptors() {
        ::getrlimit(RLIMIT_NOFILE, &before_);
        const rlimit few{.rlim_cur = 64, .rlim_max = before_.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &few);
    }
    ~FewDescriptors() { ::setrlimit(RLIMIT_NOFILE, &before_); }
    FewDescriptors(const FewDescriptors&) = delete;
    FewDescriptors& operator=(const FewDescriptors&) = delete;

private:
    rlimit before_{};
};

TEST(SessionFolder, FoldersMayNestDeeperThanAProcessMayHaveFilesOpen) {
    const test::TemporaryFolder folder;
    std::string deep = "f";
    for (int level = 0; level < 100; ++level) {
        deep += "/f";
    }
    std::filesystem::create_directories(folder / deep);
    const std::string session = folder.Write(deep + "/a.orvo", "");
    const FewDescriptors few;
    const auto content = FindSessions(folder.Path());
    EXPECT_THAT(content.sessions, ElementsAre(session));
    EXPECT_THAT(content.unread, IsEmpty());
}

}  // namespace
