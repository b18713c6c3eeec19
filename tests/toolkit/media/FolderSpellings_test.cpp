#include "toolkit/media/FolderSpellings.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>

#include "tests/support/TemporaryFolder.h"

namespace {

class FolderSpellingsTest : public testing::Test {
protected:
    FolderSpellingsTest() {
        std::filesystem::create_directories(folder_ / "Caf\xC3\xA9/Song");
        folder_.Write("Caf\xC3\xA9/Song/Kick.wav", "");
    }

    std::optional<std::string> Find(const std::vector<std::string>& names) {
        return spellings_.Find(folder_.Path().string(), names);
    }
    std::string Path(const std::string& name) const { return (folder_ / name).string(); }

    test::TemporaryFolder folder_;
    toolkit::FolderSpellings spellings_;
};

TEST_F(FolderSpellingsTest, FindsEachNameInAnotherSpelling) {
    EXPECT_EQ(Find({"cafe\xCC\x81", "SONG", "kick.WAV"}), Path("Caf\xC3\xA9/Song/Kick.wav"));
}

TEST_F(FolderSpellingsTest, PrefersTheSpellingThatWasAskedFor) {
    folder_.Write("Caf\xC3\xA9/Song/kick.wav", "");
    EXPECT_EQ(Find({"caf\xC3\xA9", "song", "kick.wav"}), Path("Caf\xC3\xA9/Song/kick.wav"));
    EXPECT_EQ(Find({"caf\xC3\xA9", "song", "KICK.wav"}), std::nullopt) << "there are two";
}

TEST_F(FolderSpellingsTest, FindsNothingWhereANameIsMissing) {
    EXPECT_EQ(Find({"caf\xC3\xA9", "other", "Kick.wav"}), std::nullopt);
    EXPECT_EQ(spellings_.Find(Path("gone"), {"Kick.wav"}), std::nullopt);
}

}  // namespace
