#include "toolkit/relink/PathNames.h"

#include <gtest/gtest.h>

#include <optional>
#include <string_view>
#include <vector>

namespace {

using toolkit::LastNameOf;
using toolkit::NamesBehind;
using toolkit::SharedFolders;

TEST(PathNames, TakesTheLastNameOfAPathOfAnySystem) {
    EXPECT_EQ(LastNameOf("/a/b.wav"), "b.wav");
    EXPECT_EQ(LastNameOf("/a/b\\c.wav"), "b\\c.wav");
    EXPECT_EQ(LastNameOf("D:\\a\\b.wav"), "b.wav");
    EXPECT_EQ(LastNameOf("D:/a/b.wav"), "b.wav");
    EXPECT_EQ(LastNameOf("\\\\server\\share\\b.wav"), "b.wav");
    EXPECT_EQ(LastNameOf("b.wav"), "b.wav");
    EXPECT_EQ(LastNameOf("/"), "");
}

TEST(PathNames, CountsTheFoldersThatTwoPathsShareFromTheirEnds) {
    EXPECT_EQ(SharedFolders("/x/Song/Audio/a.wav", "/y/Song/Audio/a.wav"), 2U);
    EXPECT_EQ(SharedFolders("D:\\Song\\audio\\a.wav", "/y/Song/Audio/A.WAV"), 2U);
    EXPECT_EQ(SharedFolders("/Song/x/a.wav", "/Song/y/a.wav"), 0U);
    EXPECT_EQ(SharedFolders("a.wav", "/y/a.wav"), 0U);
    EXPECT_EQ(SharedFolders("", "/y/a.wav"), 0U);
}

using Names = std::optional<std::vector<std::string_view>>;

TEST(PathNames, GivesTheNamesBehindABeginning) {
    EXPECT_EQ(NamesBehind("/Volumes/Media/x/a.wav", "/Volumes/Media"), (Names{{"x", "a.wav"}}));
    EXPECT_EQ(NamesBehind("/Volumes/Media/x/a.wav", "/Volumes/Media/"), (Names{{"x", "a.wav"}}));
    EXPECT_EQ(NamesBehind("/a.wav", "/"), (Names{{"a.wav"}}));
}

TEST(PathNames, TakesWindowsPathsInAnyCaseAndWithAnySlash) {
    EXPECT_EQ(NamesBehind("d:/jobs/Song\\a.wav", "D:\\Jobs"), (Names{{"Song", "a.wav"}}));
    EXPECT_EQ(NamesBehind("D:\\a.wav", "d:"), (Names{{"a.wav"}}));
    EXPECT_EQ(NamesBehind("\\\\nas\\Share\\a.wav", "\\\\NAS\\share"), (Names{{"a.wav"}}));
}

TEST(PathNames, TakesOnlyWholeNamesForABeginning) {
    EXPECT_EQ(NamesBehind("/Volumes/Media2/a.wav", "/Volumes/Media"), std::nullopt);
    EXPECT_EQ(NamesBehind("/volumes/media/a.wav", "/Volumes/Media"), std::nullopt);
    EXPECT_EQ(NamesBehind("/a.wav", "D:\\"), std::nullopt);
    EXPECT_EQ(NamesBehind("/a/b.wav", "a"), std::nullopt);
    EXPECT_EQ(NamesBehind("/a/b.wav", "/a/b.wav"), std::nullopt);
}

}  // namespace
