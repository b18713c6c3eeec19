#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>

#include "tests/cli/Tool.h"

using test::Outcome;
using test::ReadFile;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr const char* kSong = R"(<orvo><session sampleRate="1000" duration="20000"><tracks>
<audioTrack id="1"><trackParameters><name>Voice</name></trackParameters>
<audioClip id="5" name="Hello" startPoint="2500" sourceInPoint="0" sourceOutPoint="5000"/></audioTrack>
<busTrack id="2"><trackParameters><name>Room</name></trackParameters></busTrack>
</tracks></session></orvo>)";

class ViewTool : public test::ToolTest {
protected:
    ViewTool() { folder_.Write("song.orvo", kSong); }

    Outcome View(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "view");
        return test::RunTool(std::move(arguments), folder_);
    }
};

TEST_F(ViewTool, DrawsAnSvg) {
    const Outcome outcome = View({"song.orvo", "-o", "song.svg"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.output + outcome.errors, "");
    const std::string svg = ReadFile(folder_ / "song.svg");
    EXPECT_THAT(svg, HasSubstr(">song.orvo</text>"));
    EXPECT_THAT(svg, HasSubstr(">Hello</text>"));
    EXPECT_THAT(svg, HasSubstr(">Room</text>"));
}

TEST_F(ViewTool, SavesAPage) {
    const Outcome outcome = View({"song.orvo", "-o", "song.html", "--title", "A & <B>"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.output + outcome.errors, "");
    const std::string page = ReadFile(folder_ / "song.html");
    EXPECT_THAT(page, StartsWith("<!doctype html>"));
    EXPECT_THAT(page, HasSubstr("<title>A &amp; &lt;B></title>"));
    EXPECT_THAT(page, HasSubstr("\"Hello\""));
    EXPECT_EQ(View({"song.orvo", "-o", "-", "--as", "html", "--title", "A & <B>"}).output, page);
}

TEST_F(ViewTool, APageShowsWhatChanged) {
    folder_.Write("later.orvo",
                  std::regex_replace(std::string(kSong), std::regex("Hello"), "Goodbye"));
    const Outcome outcome = View({"song.orvo", "later.orvo", "-o", "song.html"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.output + outcome.errors, "");
    const std::string page = ReadFile(folder_ / "song.html");
    EXPECT_THAT(page, HasSubstr("<title>song.orvo → later.orvo</title>"));
    EXPECT_THAT(page, HasSubstr("renamed to \\u0022Goodbye\\u0022"));
}

TEST_F(ViewTool, SaysWhatAPageCannotShow) {
    const Outcome outcome = View({"song.orvo", "--contact-sheet", "-o", "song.html"});
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_THAT(outcome.errors, HasSubstr("a contact sheet is a picture"));
    EXPECT_THAT(View({"song.orvo", "-o", "song.svg", "--open"}).errors,
                HasSubstr("--open shows a page"));
}

/// A session that plays the media, which lie beside it.
std::string SongThatPlays(const std::filesystem::path& media) {
    return R"({"sampleRate": 48000, "duration": 1000, "files": [{"id": 1, "path": ")" +
           media.string() +
           R"("}], "audioTracks": [{"audioClips": [{"fileID": 1, "duration": 1000}]}]})";
}

TEST_F(ViewTool, APageIsHeard) {
    folder_.Write("song.json", SongThatPlays(folder_.Write("a b.wav", "RIFF")));
    std::filesystem::create_directory(folder_ / "pages");
    EXPECT_EQ(View({"song.json", "--audio", "embed", "-o", "song.html"}).exitCode, 0);
    EXPECT_THAT(ReadFile(folder_ / "song.html"), HasSubstr("id=\"sound-0\">UklGRg=="));
    EXPECT_EQ(View({"song.json", "--audio", "link", "-o", "pages/song.html"}).exitCode, 0);
    EXPECT_THAT(ReadFile(folder_ / "pages/song.html"), HasSubstr("\"sound\":\"../a%20b.wav\""));
    EXPECT_THAT(View({"song.json", "--audio", "link", "-o", "-", "--as", "html"}).output,
                HasSubstr("\"sound\":\"a%20b.wav\""));
}

TEST_F(ViewTool, RefusesToEmbedMoreThanAPageTakes) {
    const std::filesystem::path media = folder_.Write("a.wav", "RIFF");
    std::filesystem::resize_file(media, (std::uintmax_t{256} << 20) + 1);
    folder_.Write("song.json", SongThatPlays(media));
    const Outcome outcome =
        View({"song.json", "--audio", "embed", "-o", "song.html", "--no-waveforms"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("the media have 257 MiB, and a page takes 256 MiB"));
    EXPECT_THAT(outcome.errors, HasSubstr("--audio link"));
    EXPECT_FALSE(std::filesystem::exists(folder_ / "song.html"));
}

TEST_F(ViewTool, OnlyThePageOfOneSessionIsHeard) {
    for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{
             {"song.orvo", "-o", "song.svg", "--audio", "embed"},
             {"song.orvo", "song.orvo", "-o", "song.html", "--audio", "embed"}}) {
        const Outcome outcome = View(words);
        EXPECT_EQ(outcome.exitCode, 2);
        EXPECT_THAT(outcome.errors, HasSubstr("--audio is for the page of one session"));
    }
    EXPECT_EQ(View({"song.orvo", "-o", "song.html", "--audio", "loud"}).exitCode, 2);
}

TEST_F(ViewTool, ReportsThatTheSystemShowsNoPages) {
    const auto opener = folder_.Write("xdg-open", "#!/bin/sh\nexit 3\n");
    std::filesystem::permissions(opener, std::filesystem::perms::owner_all);
    const char* const path = std::getenv("PATH");
    const std::string before = path != nullptr ? path : "";
    setenv("PATH", opener.parent_path().c_str(), 1);
    const Outcome outcome = View({"song.orvo", "-o", "song.html", "--open"});
    setenv("PATH", before.c_str(), 1);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("song.html: saved, but the system could not show it"));
    EXPECT_TRUE(std::filesystem::exists(folder_ / "song.html"));
}

TEST_F(ViewTool, DrawsAPngOfTwicePixels) {
    EXPECT_EQ(View({"song.orvo", "-o", "song.png", "--width", "500", "--height", "300"}).exitCode,
              0);
    const std::string png = ReadFile(folder_ / "song.png");
    EXPECT_THAT(png, StartsWith("\x89PNG"));
    EXPECT_EQ(png.substr(16, 8), std::string("\0\0\x03\xE8\0\0\x02\x58", 8)) << "1000 by 600";
}

TEST_F(ViewTool, ShowsAPartOfTheTimelineAndOfTheTracks) {
    EXPECT_EQ(
        View({"song.orvo", "-o", "a.svg", "--from", "0:10", "--to", "15", "--title", ""}).exitCode,
        0);
    EXPECT_THAT(ReadFile(folder_ / "a.svg"), Not(HasSubstr(">Hello</text>")));
    EXPECT_EQ(View({"song.orvo", "-o", "b.svg", "--tracks", "ro*"}).exitCode, 0);
    EXPECT_THAT(ReadFile(folder_ / "b.svg"), Not(HasSubstr(">Voice</text>")));
}

TEST_F(ViewTool, WritesToStandardOutputInTheFormThatIsNamed) {
    const Outcome outcome = View({"song.orvo", "-o", "-", "--as", "svg"});
    EXPECT_THAT(outcome.output, StartsWith("<svg "));
    EXPECT_EQ(outcome.exitCode, 0);
}

TEST_F(ViewTool, DrawsJson) {
    ASSERT_EQ(test::RunTool({"convert", "song.orvo", "song.json", "--lossy"}, folder_).exitCode, 0);
    EXPECT_EQ(View({"song.json", "-o", "a.svg", "--title", "x"}).exitCode, 0);
    EXPECT_EQ(View({"song.orvo", "-o", "b.svg", "--title", "x"}).exitCode, 0);
    EXPECT_EQ(ReadFile(folder_ / "a.svg"), ReadFile(folder_ / "b.svg"));
}

TEST_F(ViewTool, DrawsWhatChangedBetweenTwoSessions) {
    std::string changed = kSong;
    changed.replace(changed.find("Hello"), 5, "Howdy");
    folder_.Write("later.orvo", changed);
    EXPECT_EQ(View({"song.orvo", "later.orvo", "-o", "a.svg"}).exitCode, 0);
    const std::string svg = ReadFile(folder_ / "a.svg");
    EXPECT_THAT(svg, HasSubstr(">song.orvo → later.orvo</text>"));
    EXPECT_THAT(svg, HasSubstr("renamed to &quot;Howdy&quot;"));
}

TEST_F(ViewTool, AContactSheetLeavesOutWhatCannotBeRead) {
    folder_.Write("bad.orvo", "<orvo>");
    const Outcome outcome =
        View({"--contact-sheet", "song.orvo", "bad.orvo", "song.orvo", "-o", "a.svg"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("bad.orvo:1:7:"));
    EXPECT_THAT(ReadFile(folder_ / "a.svg"), HasSubstr(">song.orvo</text>"));
}

TEST_F(ViewTool, KeepsPeaksInAFolderThatItMakes) {
    EXPECT_EQ(View({"song.orvo", "-o", "a.svg", "--cache", "kept/here"}).exitCode, 0);
    EXPECT_TRUE(std::filesystem::is_directory(folder_ / "kept/here"));
    EXPECT_EQ(View({"song.orvo", "-o", "b.svg"}).exitCode, 0);
    EXPECT_EQ(ReadFile(folder_ / "a.svg"), ReadFile(folder_ / "b.svg"));
}

TEST_F(ViewTool, ReportsThatTheFolderForPeaksCannotBeMade) {
    folder_.Write("file", "");
    const Outcome outcome = View({"song.orvo", "-o", "a.svg", "--cache", "file/kept"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("--cache file/kept: the folder cannot be made"));
    EXPECT_FALSE(std::filesystem::exists(folder_ / "a.svg"));
}

TEST_F(ViewTool, ThreeSessionsNeedAContactSheet) {
    const Outcome outcome = View({"a.orvo", "b.orvo", "c.orvo", "-o", "a.svg"});
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_THAT(outcome.errors, HasSubstr("add --contact-sheet for more"));
}

TEST_F(ViewTool, AnUnknownFormIsAUsageError) {
    const Outcome outcome = View({"song.orvo", "-o", "song.bmp"});
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_THAT(outcome.errors, HasSubstr("\"song.bmp\" does not end in .svg, .png or .html"));
}

TEST_F(ViewTool, ATimeThatIsNoneIsReportedAndNothingIsWritten) {
    const Outcome outcome = View({"song.orvo", "-o", "a.svg", "--from", "noon"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.errors,
                HasSubstr("--from noon: not a time of this session: write it like 0:00:20.000"));
    EXPECT_FALSE(std::filesystem::exists(folder_ / "a.svg"));
}

TEST_F(ViewTool, AnEndBeforeTheBeginIsReportedAndNothingIsWritten) {
    for (const char* const end : {"0:05", "0:04"}) {
        const Outcome outcome = View({"song.orvo", "-o", "a.svg", "--from", "0:05", "--to", end});
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_THAT(outcome.errors, HasSubstr(std::string("--to ") + end +
                                              ": not after --from 0:05: choose a later time"));
        EXPECT_FALSE(std::filesystem::exists(folder_ / "a.svg"));
    }
}

TEST_F(ViewTool, ANameThatNoTrackHasIsReportedAndNothingIsWritten) {
    const Outcome outcome = View({"song.orvo", "-o", "a.svg", "--tracks", "Drum*"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("--tracks Drum*: no track has such a name: see \"orvo "
                                          "info --tracks song.orvo\""));
    EXPECT_FALSE(std::filesystem::exists(folder_ / "a.svg"));
    EXPECT_EQ(View({"--contact-sheet", "song.orvo", "-o", "a.svg", "--tracks", "Drum*"}).exitCode,
              0)
        << "other sessions may have such a track";
}

TEST_F(ViewTool, AutomationCanBeLeftOut) {
    folder_.Write("lanes.json",
                  R"({"audioTracks":[{"id":1,"name":"Voice","trackFader":{"parameters":
{"0":{"parameterKeyframes":{"keyframes":[{"value":0},{"value":-6,"sampleOffset":100}]}}}}}]})");
    const auto drawn = [this](std::vector<std::string> options) {
        options.insert(options.end(), {"lanes.json", "-o", "-", "--as", "svg"});
        return View(options).output;
    };
    EXPECT_THAT(drawn({}), HasSubstr(">Volume</text>"));
    EXPECT_THAT(drawn({"--lanes"}), HasSubstr(">Volume</text>"));
    EXPECT_THAT(drawn({"--no-lanes"}), Not(HasSubstr(">Volume</text>")));
    EXPECT_THAT(drawn({"--contact-sheet"}), Not(HasSubstr(">Volume</text>")));
    for (const char* const other : {"--no-lanes", "--contact-sheet"}) {
        EXPECT_EQ(View({"lanes.json", "-o", "a.svg", "--lanes", other}).exitCode, 2) << other;
    }
}

TEST_F(ViewTool, ASessionWithoutTracksIsDrawn) {
    folder_.Write("empty.json", "{}");
    EXPECT_EQ(View({"empty.json", "-o", "a.svg"}).exitCode, 0);
    EXPECT_THAT(ReadFile(folder_ / "a.svg"), HasSubstr(">No tracks</text>"));
}

TEST_F(ViewTool, AContactSheetOfNothingIsNotSaved) {
    folder_.Write("a.png", "old");
    folder_.Write("bad.orvo", "<orvo>");
    EXPECT_EQ(View({"--contact-sheet", "bad.orvo", "absent.orvo", "-o", "a.png"}).exitCode, 1);
    EXPECT_EQ(ReadFile(folder_ / "a.png"), "old");
}

TEST_F(ViewTool, APngThatIsTooLargeSaysWhatToDo) {
    const Outcome wide = View({"song.orvo", "-o", "a.png", "--width", "20000", "--scale", "2"});
    EXPECT_EQ(wide.exitCode, 1);
    EXPECT_THAT(wide.errors, HasSubstr("40000 pixels wide, and a PNG has 32767 at most: choose a "
                                       "smaller --width or --scale"));
    const Outcome high = View({"song.orvo", "-o", "a.png", "--height", "20000", "--scale", "2"});
    EXPECT_THAT(high.errors, HasSubstr("40000 pixels high, and a PNG has 32767 at most: choose a "
                                       "smaller --height or --scale, or draw an SVG"));
    EXPECT_FALSE(std::filesystem::exists(folder_ / "a.png"));
}

TEST_F(ViewTool, AFileThatCannotBeReadLeavesTheOldPicture) {
    folder_.Write("a.svg", "old");
    folder_.Write("bad.orvo", "<orvo>");
    EXPECT_EQ(View({"bad.orvo", "-o", "a.svg"}).exitCode, 1);
    EXPECT_EQ(ReadFile(folder_ / "a.svg"), "old");
}

TEST_F(ViewTool, ASessionIsNeverReplacedByItsPicture) {
    std::filesystem::create_symlink("song.orvo", folder_ / "link.svg");
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"song.orvo", "-o", "song.orvo", "--as", "png"},
          {"song.orvo", "-o", "./song.orvo", "--as", "html"},
          {"song.orvo", "-o", "link.svg"},
          {"--contact-sheet", "absent.orvo", "song.orvo", "-o", "link.svg"}}) {
        const Outcome outcome = View(arguments);
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_THAT(outcome.errors,
                    HasSubstr("the session is there, and a file of another kind would "
                              "replace it: choose another name"));
        EXPECT_EQ(ReadFile(folder_ / "song.orvo"), kSong);
    }
}

TEST_F(ViewTool, AFolderThatIsAbsentIsReported) {
    const Outcome outcome = View({"song.orvo", "-o", "absent/a.svg"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("absent/a.svg: was not saved"));
}

}  // namespace
