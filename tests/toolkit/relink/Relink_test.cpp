#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sndfile.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <orvo/Relink.h>
#include <orvo/Session.h>
#include "tests/support/TemporaryFolder.h"

namespace {

using orvo::RelinkedMedia;
using orvo::Relinker;
using orvo::RelinkOutcome;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class RelinkTest : public testing::Test {
protected:
    std::string Path(const std::string& name) const { return (folder_ / name).string(); }

    std::string Write(const std::string& name, std::string_view content) const {
        std::filesystem::create_directories((folder_ / name).parent_path());
        return folder_.Write(name.c_str(), content).string();
    }

    void WriteSound(const std::string& name, int frames, int rate, int channels) const {
        std::filesystem::create_directories((folder_ / name).parent_path());
        SF_INFO info{};
        info.samplerate = rate;
        info.channels = channels;
        info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
        SNDFILE* const file = sf_open(Path(name).c_str(), SFM_WRITE, &info);
        const std::vector<short> samples(static_cast<std::size_t>(frames * channels));
        sf_writef_short(file, samples.data(), frames);
        sf_close(file);
    }

    /// A session with one "file" element for each path, with ids from 1.
    std::string Session(const std::vector<std::string>& paths, std::string_view tracks = "") const {
        std::string text =
            "<?xml version=\"1.0\"?>\n<!-- mine -->\n<orvo><session sampleRate=\"1000\">";
        text += tracks;
        text += "</session>\n<files>";
        for (std::size_t i = 0; i < paths.size(); ++i) {
            text +=
                "\n  <file id='" + std::to_string(i + 1) + "'  absolutePath=\"" + paths[i] + "\"/>";
        }
        return text + "\n</files></orvo>";
    }

    /// Relinks "s/a.orvo" in place, without saving it.
    orvo::RelinkResult Relink(const std::string& session, orvo::RelinkOptions options = {}) const {
        const std::string path = Write("s/a.orvo", session);
        Relinker relinker(std::move(options));
        std::filesystem::create_directories(folder_ / "m");
        EXPECT_TRUE(relinker.Search(folder_ / "m"));
        return relinker.Relink(path, path);
    }

    test::TemporaryFolder folder_;
};

TEST_F(RelinkTest, WritesBothPathsAndNothingElse) {
    Write("m/a.wav", "a");
    const orvo::RelinkResult result = Relink(Session({"/gone/a.wav", "/gone/b.wav"}));
    EXPECT_THAT(result.media,
                ElementsAre(RelinkedMedia{.id = 1,
                                          .path = "/gone/a.wav",
                                          .outcome = RelinkOutcome::Found,
                                          .newPath = Path("m/a.wav")},
                            RelinkedMedia{.id = 2,
                                          .path = "/gone/b.wav",
                                          .outcome = RelinkOutcome::Missing,
                                          .why = "no searched folder has a file of this name"}));
    ASSERT_TRUE(result.edit);
    ASSERT_TRUE(result.edit->Save(folder_ / "s/a.orvo"));
    std::string expected = Session({Path("m/a.wav"), "/gone/b.wav"});
    const std::string addedBefore = Path("m/a.wav") + "\"";
    expected.insert(expected.find(addedBefore) + addedBefore.size(),
                    " relativePath=\"../m/a.wav\"");
    EXPECT_EQ(test::ReadFile(folder_ / "s/a.orvo"), expected);
}

TEST_F(RelinkTest, LeavesASessionThatMissesNothing) {
    const std::string here = Write("here.wav", "");
    const orvo::RelinkResult result = Relink(Session({here}));
    EXPECT_TRUE(result);
    EXPECT_FALSE(result.edit);
    EXPECT_EQ(result.Count(RelinkOutcome::Present), 1U);
}

TEST_F(RelinkTest, TakesAPipeForAMissingFile) {
    ASSERT_EQ(::mkfifo(Path("pipe.wav").c_str(), 0600), 0);
    const orvo::RelinkResult result = Relink(Session({Path("pipe.wav"), ""}));
    EXPECT_EQ(result.Count(RelinkOutcome::Missing), 2U);
    EXPECT_EQ(result.media.at(1).why, "the session has no path for it");
}

TEST_F(RelinkTest, FollowsTheFirstMappingThatLeadsToAFile) {
    Write("new/song/A.wav", "");
    Write("m/a.wav", "");
    const orvo::RelinkResult result =
        Relink(Session({"D:\\Jobs\\Song\\a.wav", "D:\\Jobs\\b.wav"}),
               {.mappings = {{"D:\\Jobs", Path("nowhere")}, {"d:\\jobs", Path("new")}}});
    EXPECT_EQ(result.media.at(0).newPath, Path("new/song/A.wav"));
    EXPECT_EQ(result.media.at(0).why, "d:\\jobs is now " + Path("new"));
    EXPECT_EQ(result.media.at(1).why,
              "no searched folder has a file of this name; nor is it at " + Path("nowhere/b.wav"));
}

TEST_F(RelinkTest, SaysWhyNoMappingFoundAFileIfNoFolderWasSearched) {
    const std::string session = Write("s/a.orvo", Session({"D:\\Jobs\\b.wav", "/other/c.wav"}));
    Relinker relinker({.mappings = {{"D:\\Jobs", Path("nowhere")}}});
    const orvo::RelinkResult result = relinker.Relink(session, session);
    EXPECT_EQ(result.media.at(0).why, "it is not at " + Path("nowhere/b.wav"));
    EXPECT_EQ(result.media.at(1).why, "its path begins with none that was mapped");
}

TEST_F(RelinkTest, ChoosesByTheFoldersAround) {
    Write("m/Song/Audio/a.wav", "");
    Write("m/Other/Audio/a.wav", "");
    const orvo::RelinkResult result = Relink(Session({"/old/Song/Audio/a.wav"}));
    EXPECT_EQ(result.media.at(0).newPath, Path("m/Song/Audio/a.wav"));
    EXPECT_THAT(result.media.at(0).why, HasSubstr("of 2 files of this name"));
}

TEST_F(RelinkTest, DoesNotChooseAmongFilesThatFitEquallyWell) {
    Write("m/1/a.wav", "");
    Write("m/2/a.wav", "");
    const orvo::RelinkResult result = Relink(Session({"/old/a.wav"}));
    EXPECT_FALSE(result.edit);
    EXPECT_EQ(result.media.at(0).outcome, RelinkOutcome::Ambiguous);
    EXPECT_EQ(result.media.at(0).why, "2 files have this name");
    EXPECT_THAT(result.media.at(0).candidates, ElementsAre(Path("m/1/a.wav"), Path("m/2/a.wav")));
}

TEST_F(RelinkTest, TakesHardLinksForOneFile) {
    Write("m/1/a.wav", "");
    std::filesystem::create_directories(folder_ / "m/2");
    std::filesystem::create_hard_link(folder_ / "m/1/a.wav", folder_ / "m/2/a.wav");
    EXPECT_EQ(Relink(Session({"/old/a.wav"})).media.at(0).newPath, Path("m/1/a.wav"));
}

TEST_F(RelinkTest, GivesOneFileToOneOfSeveralMissingOnes) {
    Write("m/Song/a.wav", "");
    const orvo::RelinkResult best = Relink(Session({"/x/Song/a.wav", "/x/Other/a.wav"}));
    EXPECT_EQ(best.media.at(0).newPath, Path("m/Song/a.wav"));
    EXPECT_EQ(best.media.at(1).outcome, RelinkOutcome::Ambiguous);
    EXPECT_THAT(best.media.at(1).candidates, ElementsAre(Path("m/Song/a.wav")));

    const orvo::RelinkResult equal = Relink(Session({"/x/1/a.wav", "/x/2/a.wav"}));
    EXPECT_EQ(equal.Count(RelinkOutcome::Ambiguous), 2U);
    EXPECT_EQ(equal.media.at(0).why,
              "one file has this name, and 2 missing files of the session have it");
}

TEST_F(RelinkTest, DoesNotTakeAFileThatTheSessionHasAlready) {
    const std::string here = Write("m/a.wav", "");
    const orvo::RelinkResult result = Relink(Session({here, "/gone/a.wav"}));
    EXPECT_EQ(result.media.at(1).outcome, RelinkOutcome::Ambiguous);
    EXPECT_THAT(result.media.at(1).why, HasSubstr("file 1 already"));
}

TEST_F(RelinkTest, ByHashTakesFilesOfTheSameContentForOne) {
    Write("m/1/a.wav", "same");
    Write("m/2/a.wav", "same");
    Write("m/1/b.wav", "this");
    Write("m/2/b.wav", "that");
    Write("m/2/c.wav", "longer");
    Write("m/x/c.wav", "long");
    const orvo::RelinkResult result = Relink(Session({"/old/a.wav", "/old/b.wav", "/x/c.wav"}),
                                             {.match = orvo::MediaMatch::Hash});
    EXPECT_EQ(result.media.at(0).newPath, Path("m/1/a.wav"));
    EXPECT_EQ(result.media.at(0).why, "2 files have this name and the same content");
    EXPECT_EQ(result.media.at(1).outcome, RelinkOutcome::Ambiguous);
    EXPECT_EQ(result.media.at(2).outcome, RelinkOutcome::Ambiguous);
}

TEST_F(RelinkTest, ByHashRequiresTheContentThatAManifestStates) {
    Write("s/manifest-sha256.txt",
          "7692c3ad3540bb803c020b3aee66cd8887123234ea0c6e7143c0add73ff431ed  media/a.wav\n"
          "3fc4ccfe745870e2c0d99f71f30ff0656c8dedd41cc1d7d3d376b0dbe685e2f3  media/b.wav\n");
    Write("m/1/a.wav", "two");
    Write("m/2/a.wav", "one");
    Write("m/b.wav", "one");
    const orvo::RelinkResult result =
        Relink(Session({"/old/show/media/a.wav", "/old/show/media/b.wav"}),
               {.match = orvo::MediaMatch::Hash});
    EXPECT_EQ(result.media.at(0).newPath, Path("m/2/a.wav"));
    EXPECT_EQ(result.media.at(0).why, "has the content that manifest-sha256.txt states");
    EXPECT_EQ(result.media.at(1).outcome, RelinkOutcome::Missing);
    EXPECT_EQ(result.media.at(1).why,
              "a file has this name, but not the content that manifest-sha256.txt states");
}

TEST_F(RelinkTest, ByLengthRefusesFilesThatAreTooShortOrLackChannels) {
    WriteSound("m/1/a.wav", 99, 1000, 2);
    WriteSound("m/2/a.wav", 100, 1000, 1);
    WriteSound("m/3/a.wav", 50, 500, 2);  // as long at half the rate
    Write("m/4/a.wav", "no sound");
    WriteSound("m/b.wav", 1, 1000, 1);
    const std::string session = Session(
        {"/old/a.wav", "/old/b.wav", "/old/c.mov"},
        R"(<tracks><audioTrack id="1"><audioClip id="1" fileID="1" sourceInPoint="60" sourceOutPoint="100" startPoint="0" endPoint="40">
<channelMap><channel index="0" sourceIndex="1"/></channelMap></audioClip>
<audioClip id="2" fileID="2" sourceInPoint="0" sourceOutPoint="2" startPoint="0" endPoint="2"/></audioTrack></tracks>)");
    Write("m/c.mov", "a picture");
    const orvo::RelinkResult result = Relink(session, {.match = orvo::MediaMatch::NameAndLength});
    EXPECT_EQ(result.media.at(0).newPath, Path("m/3/a.wav")) << result.media.at(0).why;
    EXPECT_EQ(result.media.at(1).outcome, RelinkOutcome::Missing);
    EXPECT_EQ(
        result.media.at(1).why,
        "a file has this name, but it has not the length or the channels that the clips need");
    EXPECT_EQ(result.media.at(2).newPath, Path("m/c.mov"));
}

TEST_F(RelinkTest, AdaptsAllRelativePathsToAnotherFolder) {
    const std::string here = Write("s/here.wav", "");
    Write("m/a.wav", "");
    const std::string session = Write(
        "s/a.orvo",
        "<orvo><files><file id=\"1\" absolutePath=\"/old/here.wav\" relativePath=\"here.wav\"/>"
        "<file id=\"2\" absolutePath=\"/gone/b.wav\" relativePath=\"sub/b.wav\"/>"
        "<file id=\"3\" absolutePath=\"/gone/a.wav\"/></files></orvo>");
    Relinker relinker;
    relinker.Search(folder_ / "m");
    const orvo::RelinkResult result = relinker.Relink(session, folder_ / "t/u/a.orvo");
    ASSERT_TRUE(result.edit);
    std::filesystem::create_directories(folder_ / "t/u");
    ASSERT_TRUE(result.edit->Save(folder_ / "t/u/a.orvo"));
    EXPECT_EQ(test::ReadFile(folder_ / "t/u/a.orvo"),
              "<orvo><files><file id=\"1\" absolutePath=\"" + here +
                  "\" relativePath=\"../../s/here.wav\"/>"
                  "<file id=\"2\" absolutePath=\"/gone/b.wav\" relativePath=\"../../s/sub/b.wav\"/>"
                  "<file id=\"3\" absolutePath=\"" +
                  Path("m/a.wav") + "\" relativePath=\"../../m/a.wav\"/></files></orvo>");
}

TEST_F(RelinkTest, SaysWhyASessionCannotBeRelinked) {
    const orvo::RelinkResult result = Relink("<orvo><session></orvo>");
    EXPECT_FALSE(result);
    EXPECT_FALSE(result.edit);
    EXPECT_THAT(result.messages, testing::Not(IsEmpty()));
}

TEST_F(RelinkTest, LeavesAFileWhosePathXmlCannotCarryMissing) {
    Write("m/\x01/a.wav", "");
    const orvo::RelinkResult result = Relink(Session({"/gone/a.wav"}));
    EXPECT_EQ(result.media.at(0).outcome, RelinkOutcome::Missing);
    EXPECT_THAT(result.media.at(0).why, HasSubstr("found at " + Path("m/\x01/a.wav")));
    EXPECT_FALSE(result.edit);
}

}  // namespace
