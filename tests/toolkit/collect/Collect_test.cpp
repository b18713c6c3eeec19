#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <orvo/Collect.h>
#include <orvo/Session.h>
#include "tests/support/TemporaryFolder.h"

namespace {

using orvo::CollectPlan;
using orvo::CollectResult;
using orvo::VerifiedFile;
using orvo::VerifiedState;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class CollectTest : public testing::Test {
protected:
    CollectTest() {
        Write("m/1/a.wav", "one");
        Write("m/2/a.wav", "two");
        WriteSession({Path("m/1/a.wav"), Path("m/2/a.wav"), Path("m/1/a.wav")});
    }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }

    void Write(const std::string& name, std::string_view content) const {
        std::filesystem::create_directories((folder_ / name).parent_path());
        folder_.Write(name.c_str(), content);
    }

    void WriteSession(const std::vector<std::string>& paths) const {
        std::string text = "<orvo><!-- mine --><files>";
        for (std::size_t i = 0; i < paths.size(); ++i) {
            text +=
                "<file id=\"" + std::to_string(i + 1) + "\" absolutePath=\"" + paths[i] + "\"/>";
        }
        Write("s/song.orvo", text + "</files></orvo>");
    }

    CollectPlan Plan(const orvo::CollectOptions& options = {}) const {
        return orvo::PlanCollection(folder_ / "s/song.orvo", folder_ / "c", options);
    }

    CollectResult Collect(const orvo::CollectOptions& options = {}) const {
        return orvo::Collect(Plan(options), options);
    }

    std::string Content(const std::string& name) const { return test::ReadFile(folder_ / name); }

    bool Exists(const std::string& name) const { return std::filesystem::exists(folder_ / name); }

    test::TemporaryFolder folder_;
};

TEST_F(CollectTest, PlansEachPathOnceUnderANameOfItsOwn) {
    const CollectPlan plan = Plan();
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan.sessionName, "song.orvo");
    EXPECT_THAT(
        plan.media,
        ElementsAre(
            orvo::CollectedFile{
                .ids = {1, 3}, .source = Path("m/1/a.wav"), .name = "media/a.wav", .size = 3},
            orvo::CollectedFile{
                .ids = {2}, .source = Path("m/2/a.wav"), .name = "media/a-2.wav", .size = 3}));
    EXPECT_EQ(plan.bytes, 6U);
    EXPECT_EQ(plan.bytesToCopy, 6U);
    EXPECT_TRUE(plan.bytesFree);
    EXPECT_FALSE(Exists("c"));
}

TEST_F(CollectTest, MakesAFolderThatOpensAnywhere) {
    const CollectResult result = Collect();
    ASSERT_TRUE(result) << result.messages.at(0).what;
    EXPECT_EQ(result.copied + result.cloned, 2U);
    EXPECT_EQ(Content("c/song.orvo"),
              "<orvo><!-- mine --><files>"
              "<file id=\"1\" absolutePath=\"" +
                  Path("c/media/a.wav") +
                  "\" relativePath=\"media/a.wav\"/>"
                  "<file id=\"2\" absolutePath=\"" +
                  Path("c/media/a-2.wav") +
                  "\" relativePath=\"media/a-2.wav\"/>"
                  "<file id=\"3\" absolutePath=\"" +
                  Path("c/media/a.wav") + "\" relativePath=\"media/a.wav\"/></files></orvo>");
    std::filesystem::remove_all(folder_ / "m");
    std::filesystem::rename(folder_ / "c", folder_ / "elsewhere");
    const orvo::ReadResult read = orvo::ReadSession(folder_ / "elsewhere/song.orvo");
    ASSERT_TRUE(read);
    EXPECT_EQ(test::ReadFile(read.session.files.at(0).path), "one");
    EXPECT_EQ(test::ReadFile(read.session.files.at(1).path), "two");
    EXPECT_TRUE(orvo::VerifyCollection(folder_ / "elsewhere"));
    EXPECT_FALSE(Exists("elsewhere/.orvo-journal"));
    EXPECT_FALSE(Exists("elsewhere/.orvo-part"));
}

TEST_F(CollectTest, WritesAManifestAsSha256sumDoes) {
    ASSERT_TRUE(Collect());
    EXPECT_THAT(
        Content("c/manifest-sha256.txt"),
        testing::StartsWith(
            "7692c3ad3540bb803c020b3aee66cd8887123234ea0c6e7143c0add73ff431ed  media/a.wav\n"
            "3fc4ccfe745870e2c0d99f71f30ff0656c8dedd41cc1d7d3d376b0dbe685e2f3  media/a-2.wav\n"));
}

TEST_F(CollectTest, GoesOnAfterAnInterruption) {
    int calls = 0;
    const CollectResult first = Collect({.progress = [&](double) { return ++calls < 2; }});
    EXPECT_TRUE(first.cancelled);
    EXPECT_FALSE(first);
    EXPECT_TRUE(Exists("c/media/a.wav"));
    EXPECT_FALSE(Exists("c/media/a-2.wav"));
    EXPECT_FALSE(Exists("c/song.orvo"));
    Write("c/.orvo-part", "half of a file");

    EXPECT_EQ(Plan().bytesToCopy, 3U);
    const CollectResult second = Collect();
    ASSERT_TRUE(second);
    EXPECT_EQ(second.kept, 1U);
    EXPECT_EQ(second.copied + second.cloned, 1U);
    EXPECT_TRUE(orvo::VerifyCollection(folder_ / "c"));
    EXPECT_EQ(Collect().kept, 2U) << "it is complete";
}

TEST_F(CollectTest, LooksIntoAFileOfTheSameNameWithoutAJournal) {
    Write("c/media/a.wav", "one");
    EXPECT_EQ(Collect().kept, 1U);
    EXPECT_TRUE(orvo::VerifyCollection(folder_ / "c"));
}

TEST_F(CollectTest, NeverReplacesAFile) {
    Write("c/media/a-2.wav", "six");
    const CollectResult media = Collect();
    EXPECT_FALSE(media);
    EXPECT_EQ(media.messages.at(0).file, Path("c/media/a-2.wav"));
    EXPECT_EQ(media.messages.at(0).what, "exists with another content, and nothing is replaced");
    EXPECT_EQ(Content("c/media/a-2.wav"), "six");

    std::filesystem::remove_all(folder_ / "c");
    Write("c/song.orvo", "mine");
    EXPECT_FALSE(Collect());
    EXPECT_EQ(Content("c/song.orvo"), "mine");
    EXPECT_FALSE(Exists("c/media"));

    std::filesystem::remove_all(folder_ / "c");
    Write("c/manifest-sha256.txt", "");
    EXPECT_THAT(Collect().messages.at(0).what, HasSubstr("another session"));
    EXPECT_FALSE(Exists("c/.orvo-journal"));
    EXPECT_FALSE(Exists("c/media"));
}

TEST_F(CollectTest, MakesHardLinksIfAskedTo) {
    const orvo::CollectOptions options{.link = true};
    EXPECT_EQ(Plan(options).bytesToCopy, 0U);
    EXPECT_EQ(Collect(options).linked, 2U);
    EXPECT_TRUE(std::filesystem::equivalent(folder_ / "m/1/a.wav", folder_ / "c/media/a.wav"));
    EXPECT_TRUE(orvo::VerifyCollection(folder_ / "c"));
    EXPECT_EQ(Collect(options).kept, 2U);
}

TEST_F(CollectTest, LeavesThePathsOfMissingMedia) {
    ASSERT_EQ(::mkfifo(Path("pipe.wav").c_str(), 0600), 0);
    WriteSession({Path("m/1/a.wav"), "/gone/b.wav", Path("pipe.wav")});
    EXPECT_EQ(Plan().MissingCount(), 2U);
    EXPECT_TRUE(Collect());
    EXPECT_THAT(Content("c/song.orvo"), HasSubstr("<file id=\"2\" absolutePath=\"/gone/b.wav\"/>"));
}

TEST_F(CollectTest, RemarksOnPreRenderedFiles) {
    Write("s/song.orvo",
          "<orvo><session><tracks><audioTrack id=\"1\" preRendered=\"true\" "
          "preRenderedFile=\"/p.wav\">"
          "<trackParameters><name>Keys</name></trackParameters></audioTrack></tracks></session></"
          "orvo>");
    const CollectPlan plan = Plan();
    EXPECT_TRUE(plan);
    ASSERT_EQ(plan.messages.size(), 1U);
    EXPECT_EQ(plan.messages[0].severity, orvo::Severity::Warning);
    EXPECT_THAT(plan.messages[0].what, HasSubstr("\"Keys\" plays a pre-rendered file, /p.wav"));
}

TEST_F(CollectTest, SaysWhyThereIsNoPlan) {
    const CollectPlan deep = orvo::PlanCollection(folder_ / "s/song.orvo", folder_ / "x/y");
    EXPECT_FALSE(deep);
    EXPECT_EQ(deep.messages.at(0).file, Path("x"));
    EXPECT_FALSE(orvo::PlanCollection(folder_ / "none.orvo", folder_ / "c"));
}

TEST_F(CollectTest, VerifiesEachFile) {
    ASSERT_TRUE(Collect());
    Write("c/media/a.wav", "ONE");
    std::filesystem::remove(folder_ / "c/media/a-2.wav");
    Write("c/extra/note.txt", "");
    const orvo::VerifyResult result = orvo::VerifyCollection(folder_ / "c");
    EXPECT_FALSE(result);
    EXPECT_THAT(result.files,
                ElementsAre(VerifiedFile{"media/a.wav", VerifiedState::Changed, ""},
                            VerifiedFile{"media/a-2.wav", VerifiedState::Missing, ""},
                            VerifiedFile{"song.orvo", VerifiedState::Good, ""},
                            VerifiedFile{"extra/note.txt", VerifiedState::Unlisted, ""}));
}

TEST_F(CollectTest, DoesNotWaitForAPipeInPlaceOfAFile) {
    ASSERT_TRUE(Collect());
    std::filesystem::remove(folder_ / "c/media/a.wav");
    ASSERT_EQ(::mkfifo(Path("c/media/a.wav").c_str(), 0600), 0);
    EXPECT_EQ(orvo::VerifyCollection(folder_ / "c").files.at(0).state, VerifiedState::Unreadable);
    EXPECT_FALSE(Collect());
}

TEST_F(CollectTest, RefusesToVerifyWithoutAWholeManifest) {
    EXPECT_EQ(orvo::VerifyCollection(folder_ / "c").messages.at(0).what, "no such folder");
    Write("c/song.orvo", "");
    EXPECT_EQ(orvo::VerifyCollection(folder_ / "c").messages.at(0).what,
              "is no collection: it has no manifest-sha256.txt");
    Write("c/manifest-sha256.txt", std::string(64, 'a') + "  media/a.w");
    EXPECT_EQ(orvo::VerifyCollection(folder_ / "c").messages.at(0).what,
              "is not a complete list of SHA-256 sums");
}

}  // namespace
