#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/cli/Tool.h"

// Losses of media paths, and of values that only one kind of file can hold.

using nlohmann::json;
using test::Outcome;
using test::ReadFile;
using test::RunTool;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class ConvertLossesTest : public test::ToolTest {
protected:
    /// Converts "a.orvo" to "b.json", without a loss.
    json ConvertedToJson() const {
        RunQuietly({"convert", "a.orvo", "b.json"});
        return json::parse(ReadFile(folder_ / "b.json"));
    }

    /// The first media path in a JSON file.
    std::string PathIn(const char* name) const {
        return json::parse(ReadFile(folder_ / name)).at("files").at(0).at("path");
    }
};

constexpr const char* kMovedSession =
    "<orvo>\n <files>\n  <file id='3' absolutePath='D:\\Jobs\\Show\\Media\\drum.wav' "
    "relativePath='Media/drum.wav'/>\n </files>\n</orvo>";

TEST_F(ConvertLossesTest, ARelativePathThatWouldBeLostIsNamedAndNothingIsWritten) {
    folder_.Write("a.orvo", kMovedSession);
    for (const char* const out : {"b.orvo", "b.json"}) {
        const Outcome outcome = RunTool({"convert", "a.orvo", out}, folder_);
        EXPECT_THAT(outcome.errors,
                    StartsWith("orvo: a.orvo:3:3: cannot be carried over: the value "
                               "\"Media/drum.wav\" of the attribute relativePath of <file>"));
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_FALSE(Exists(out));
    }
}

TEST_F(ConvertLossesTest, MediaThatMovedWithTheSessionGetTheirNewPath) {
    folder_.Write("a.orvo", kMovedSession);
    std::filesystem::create_directory(folder_ / "Media");
    folder_.Write("Media/drum.wav", "RIFF");
    for (const char* const out : {"b.orvo", "b.json"}) {
        const Outcome outcome = RunTool({"convert", "a.orvo", out}, folder_);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
    }
    EXPECT_THAT(ReadFile(folder_ / "b.orvo"), HasSubstr("relativePath=\"Media/drum.wav\""));
    EXPECT_EQ(PathIn("b.json"), (folder_ / "Media/drum.wav").string());
}

TEST_F(ConvertLossesTest, RelativePathsInAStreamCountFromTheWorkingDirectory) {
    const std::string path = (folder_ / "Media/drum.wav").string();
    const std::string session = "<orvo><files><file id='3' absolutePath='" + path +
                                "' relativePath='Media/drum.wav'/></files></orvo>";
    for (const char* const kind : {"orvo", "json"}) {
        const Outcome outcome =
            RunTool({"convert", "-", "-", "--from", "orvo", "--to", kind}, folder_, session);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
        EXPECT_THAT(outcome.output, HasSubstr(path));
    }
}

TEST_F(ConvertLossesTest, ARelativePathInJsonCountsFromTheFolderOfTheJson) {
    std::filesystem::create_directory(folder_ / "song");
    folder_.Write("song/a.json", R"({"files": [{"id": 1, "path": "Media/drum.wav"}]})");
    const std::string path = (folder_ / "song/Media/drum.wav").string();
    ASSERT_EQ(RunTool({"convert", "song/a.json", "b.orvo"}, folder_).exitCode, 0);
    EXPECT_THAT(ReadFile(folder_ / "b.orvo"),
                AllOf(HasSubstr("absolutePath=\"" + path + "\""),
                      HasSubstr("relativePath=\"song/Media/drum.wav\"")));
    ASSERT_EQ(RunTool({"convert", "song/a.json", "b.json"}, folder_).exitCode, 0);
    EXPECT_EQ(PathIn("b.json"), path);
}

TEST_F(ConvertLossesTest, ARelativePathInJsonFromAStreamCountsFromTheWorkingDirectory) {
    const Outcome outcome = RunTool({"convert", "-", "b.json", "--from", "json"}, folder_,
                                    R"({"files": [{"id": 1, "path": "Media/drum.wav"}]})");
    ASSERT_EQ(outcome.exitCode, 0) << outcome.errors;
    EXPECT_EQ(PathIn("b.json"), (folder_ / "Media/drum.wav").string());
}

TEST_F(ConvertLossesTest, AUrlInJsonThatNamesAnotherHostIsRefusedWithItsPlace) {
    folder_.Write("a.json", R"({"files": [{"id": 1, "path": "file:///a%20b.wav"},
                                          {"id": 2, "path": "file://nas/a.wav"}]})");
    const Outcome outcome = RunTool({"convert", "a.json", "b.orvo"}, folder_);
    EXPECT_EQ(outcome.errors,
              "orvo: a.json: /files/1/path: this URL names the host \"nas\": name a file of this "
              "machine\n");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_FALSE(Exists("b.orvo"));
}

TEST_F(ConvertLossesTest, AValueThatOnlyJsonHoldsIsALossForASessionFileAlone) {
    folder_.Write("a.orvo",
                  "<orvo><session><tracks><audioTrack id='1'><clip id='1'>"
                  "<clipStretch stretchMode='7' stretchQuality='4294967295'/>"
                  "</clip></audioTrack></tracks></session></orvo>");
    const json stretch =
        ConvertedToJson().at("audioTracks").at(0).at("audioClips").at(0).at("clipStretch");
    EXPECT_EQ(stretch.at("stretchMode"), 7);
    EXPECT_EQ(stretch.at("stretchQuality"), 4294967295U);
    EXPECT_EQ(RunTool({"convert", "a.orvo", "b.orvo"}, folder_).exitCode, 1);
    EXPECT_FALSE(Exists("b.orvo"));
}

TEST_F(ConvertLossesTest, TheHighestParameterIndexSurvivesInJsonButSavingItFailsWithAMessage) {
    for (const std::string index : {"4294967295", "-1"}) {
        folder_.Write("a.orvo",
                      "<orvo><session><tracks><busTrack id='1'><trackAudioParameters>"
                      "<component id='trackFader'><parameter index='" +
                          index +
                          "' parameterValue='0.5'><parameterKeyframes><parameterKeyframe "
                          "value='0.25' sampleOffset='7' type='hold'/></parameterKeyframes>"
                          "</parameter></component></trackAudioParameters></busTrack></tracks>"
                          "</session></orvo>");
        const json parameter = ConvertedToJson()
                                   .at("audioTracks")
                                   .at(0)
                                   .at("trackFader")
                                   .at("parameters")
                                   .at("4294967295");
        EXPECT_EQ(parameter.at("parameterValue"), 0.5);
        EXPECT_EQ(parameter.at("parameterKeyframes").at("keyframes").at(0),
                  (json{{"value", 0.25}, {"sampleOffset", 7}, {"type", "hold"}}));
        for (const char* const in : {"a.orvo", "b.json"}) {
            const Outcome toSession = RunTool({"convert", in, "b.orvo"}, folder_);
            EXPECT_THAT(toSession.errors, HasSubstr("b.orvo: was not saved: the lists of the "
                                                    "session have more than"));
            EXPECT_EQ(toSession.exitCode, 1);
            EXPECT_FALSE(Exists("b.orvo"));
        }
    }
}

}  // namespace
