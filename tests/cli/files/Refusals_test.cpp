#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "tests/cli/Tool.h"

using test::IdlePluginPath;
using test::kSmallSession;
using test::Outcome;
using test::RunTool;
using test::RunToolUnprivileged;
using test::ToolPath;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class RefusalTest : public test::ToolTest {};

// Bad input must end with status 1 and a message, with a place if there is one.

struct BadFile {
    const char* description;
    const char* content;
    const char* message;
};

void PrintTo(const BadFile& file, std::ostream* stream) {
    *stream << file.description;
}

class BadContentTest : public testing::TestWithParam<BadFile> {};

TEST_P(BadContentTest, IsRefusedWithAMessage) {
    const test::TemporaryFolder folder;
    folder.Write("a.orvo", GetParam().content);
    const Outcome outcome = RunTool({"info", "a.orvo"}, folder);
    EXPECT_THAT(outcome.errors, StartsWith(GetParam().message));
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_FALSE(outcome.timedOut);
}

INSTANTIATE_TEST_SUITE_P(
    , BadContentTest,
    testing::Values(
        BadFile{"Empty", "", "orvo: a.orvo: the file is empty: not a session file\n"},
        BadFile{"Truncated", "<orvo>\n<session sampleRate='48000'>\n<tra", "orvo: a.orvo:3:"},
        BadFile{"WrongRoot", "<?xml version='1.0'?>\n<foo/>",
                "orvo: a.orvo:2:1: the root element is <foo>, not <orvo>: not a session file\n"},
        BadFile{"NotXml", "once upon a time", "orvo: a.orvo:1:1: not well-formed XML: "},
        BadFile{"Gzip", "\x1F\x8B\x08 and so on",
                "orvo: a.orvo: this is a gzip file: unpack it first (gunzip)\n"},
        BadFile{"Bzip2", "BZh91AY",
                "orvo: a.orvo: this is a bzip2 file: unpack it first (bunzip2)\n"},
        BadFile{"Zip", "PK\x03\x04 and so on",
                "orvo: a.orvo: this is a zip file: unpack it first (unzip)\n"},
        BadFile{"Wav", "RIFF....WAVEfmt ",
                "orvo: a.orvo: this is a WAV file: name the session that uses it\n"},
        BadFile{"OtherRiff", "RIFF....AVI LIST", "orvo: a.orvo:1:1: not well-formed XML: "},
        BadFile{"Aiff", "FORM....AIFCFVER",
                "orvo: a.orvo: this is an AIFF file: name the session that uses it\n"},
        BadFile{"Json", "\n {\"sampleRate\": 48000}",
                "orvo: a.orvo: this is JSON: make a session of it first (orvo convert --from "
                "json)\n"},
        BadFile{"NotUtf8", "<orvo>\n<files><file id='1' absolutePath='\xFF\xFE'/></files></orvo>",
                "orvo: a.orvo:2:35: not UTF-8: "},
        BadFile{"DocumentType", "<?xml version='1.0'?>\n <!DOCTYPE orvo [<!ENTITY a 'b'>]><orvo/>",
                "orvo: a.orvo:2:2: refused: a session has no document type declaration: remove it "
                "to read the file\n"},
        BadFile{"TrackWithoutId",
                "<orvo><session>\n<tracks><audioTrack/></tracks></session></orvo>",
                "orvo: a.orvo:2:9: <audioTrack> without an id: give it an id attribute"},
        BadFile{"TrackWithoutIdBesideWhatIsNotCarried",
                "<orvo><glow/><session>\n<tracks><busTrack/></tracks></session></orvo>",
                "orvo: a.orvo:2:9: <busTrack> without an id: give it an id attribute"},
        BadFile{"Unclosed", "<orvo>\n<session>\n</orvo>", "orvo: a.orvo:3:"}),
    [](const auto& instance) { return std::string(instance.param.description); });

TEST_F(RefusalTest, FindsATrackWithoutAnIdAfterAnyNumberOfOtherLosses) {
    std::string document = "<orvo>\n<session>\n<tracks><videoTrack/>";
    for (int i = 0; i < 100; ++i) {
        document += "<glow/>";
    }
    folder_.Write("a.orvo", document + "\n <busTrack id='-1'/></tracks></session></orvo>");
    EXPECT_EQ(
        RunTool({"info", "a.orvo"}, folder_).errors,
        "orvo: a.orvo:4:2: <busTrack> with the id \"-1\", which means \"no id\": give it an id "
        "attribute with a unique number\n");
}

TEST_F(RefusalTest, RefusesEndlessNestingAtOnce) {
    std::string document = "<orvo>";
    for (int i = 0; i < 100000; ++i) {
        document += "<a>";
    }
    folder_.Write("deep.orvo", document);
    for (const char* const verb : {"info", "convert"}) {
        const Outcome outcome = RunTool({verb, "deep.orvo", "out.json"}, folder_);
        EXPECT_THAT(outcome.errors, HasSubstr("orvo: deep.orvo:1:775: refused: elements are nested "
                                              "deeper than the 256 levels"));
        EXPECT_FALSE(outcome.timedOut);
    }
}

/// In a path, each of these looks like the end of the path in the plug-in's message.
TEST_F(RefusalTest, ARefusedFileIsParsedOnceWhateverItsName) {
    std::string document = "<orvo>";
    for (int i = 0; i < 1000; ++i) {
        document += "<a>";
    }
    for (const char* const name : {"a] b.orvo", "] .orvo", "[x] [ y] z.orvo", "\xFF] .orvo"}) {
        folder_.Write(name, document);
        for (const char* const prefix : {"", "./", "../"}) {
            const bool isAbove = std::string_view(prefix) == "../";
            const std::string path =
                prefix + (isAbove ? folder_.Path().filename().string() + "/" : "") + name;
            // The scan would report too deep nesting instead, in other words and at another place.
            EXPECT_THAT(RunTool({"info", path}, folder_).errors,
                        HasSubstr(":1:775: refused: elements are nested deeper than the 256 levels "
                                  "that a session may have\n"))
                << path;
        }
    }
}

struct BadPlace {
    const char* description;
    std::string content;
    const char* place;
};

void PrintTo(const BadPlace& bad, std::ostream* stream) {
    *stream << bad.description;
}

class BadPlaceTest : public testing::TestWithParam<BadPlace> {};

TEST_P(BadPlaceTest, CountsInCharacters) {
    const test::TemporaryFolder folder;
    folder.Write("a.orvo", GetParam().content);
    for (const char* const verb : {"info", "trace"}) {
        EXPECT_THAT(RunTool({verb, "a.orvo"}, folder).errors,
                    StartsWith(std::string("orvo: a.orvo:") + GetParam().place + ": "));
    }
}

std::string InUtf16(std::u16string_view text) {
    std::string bytes = "\xFF\xFE";
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

INSTANTIATE_TEST_SUITE_P(
    , BadPlaceTest,
    testing::Values(
        BadPlace{"NotWellFormed",
                 "<orvo>\n<files><!--\U0001F600\U0001F600--><file =/></files></orvo>", "2:23"},
        BadPlace{"NotWellFormedInUtf16",
                 InUtf16(u"<orvo>\n<files><!--\U0001F600\U0001F600--><file =/></files></orvo>"),
                 "2:23"},
        BadPlace{"WrongRootInUtf16", InUtf16(u"<!--\U0001F600\U0001F600--><foo/>"), "1:16"},
        BadPlace{"DocumentType", "<!--\U0001F600\U0001F600--><!DOCTYPE orvo><orvo/>", "1:10"},
        BadPlace{"DocumentTypeInUtf16",
                 InUtf16(u"<!--\U0001F600\U0001F600\u97f3--><!DOCTYPE orvo><orvo/>"), "1:11"},
        BadPlace{"RefusedName", "<orvo>\n<!--\U0001F600--><" + std::string(1025, 'a') + "/></orvo>",
                 "2:1037"}),
    [](const auto& instance) { return std::string(instance.param.description); });

TEST_F(RefusalTest, SaysWhatIsWrongWithAVeryLongName) {
    const std::string name(900000, 'a');
    folder_.Write("long.orvo", "<orvo><" + name + "></b></orvo>");
    const Outcome outcome = RunTool({"info", "long.orvo"}, folder_);
    EXPECT_EQ(outcome.errors,
              "orvo: long.orvo:1:900009: refused: a name is longer than the 1024 characters that "
              "one may have\n");
    EXPECT_EQ(outcome.exitCode, 1);
}

TEST_F(RefusalTest, SaysThatStandardInputCannotBeRead) {
    const Outcome outcome =
        test::Run({.arguments = {"sh", "-c", "exec " + ToolPath() + " info - <."},
                   .folder = folder_.Path().string()});
    EXPECT_EQ(outcome.errors, "orvo: standard input: cannot be read: Is a directory\n");
    EXPECT_EQ(outcome.exitCode, 1);
}

TEST_F(RefusalTest, SaysThatThePlugInRefusesAFileWithoutAnError) {
    folder_.Write("a.orvo", "<orvo/>");
    const Outcome outcome = test::Run(
        {.arguments = {ToolPath(), "info", "a.orvo"},
         .folder = folder_.Path().string(),
         .environment = {{"ORVO_PLUGIN", IdlePluginPath()}, {"ORVO_REFUSES", "ReadSession"}}});
    EXPECT_EQ(outcome.errors,
              "orvo: a.orvo: the plug-in refused the file: try again; if it happens again, report "
              "it with the file\n");
    EXPECT_EQ(outcome.exitCode, 1);
}

TEST_F(RefusalTest, RefusesAFolder) {
    const Outcome outcome = RunTool({"info", "."}, folder_);
    EXPECT_EQ(outcome.errors,
              "orvo: .: this is a folder: name a session file in it, or add --recursive\n");
    EXPECT_EQ(outcome.exitCode, 1);
}

TEST_F(RefusalTest, RefusesAPipeWithoutWaitingForAWriter) {
    ASSERT_EQ(::mkfifo((folder_ / "pipe.orvo").c_str(), 0600), 0);
    const Outcome outcome = RunTool({"info", "pipe.orvo"}, folder_);
    EXPECT_FALSE(outcome.timedOut);
    EXPECT_EQ(outcome.errors,
              "orvo: pipe.orvo: this is a pipe: put its content into a file first\n");
    EXPECT_EQ(outcome.exitCode, 1);
}

TEST_F(RefusalTest, RefusesADevice) {
    const Outcome outcome = RunTool({"info", "/dev/zero"}, folder_);
    EXPECT_FALSE(outcome.timedOut);
    EXPECT_THAT(outcome.errors, StartsWith("orvo: /dev/zero: this is a device"));
    EXPECT_EQ(outcome.exitCode, 1);
}

TEST_F(RefusalTest, ReportsAFileWithoutReadPermission) {
    folder_.Write("a.orvo", kSmallSession);
    ASSERT_EQ(::chmod((folder_ / "a.orvo").c_str(), 0), 0);
    const Outcome outcome = RunToolUnprivileged({"info", "a.orvo"}, folder_);
    EXPECT_EQ(outcome.errors,
              "orvo: a.orvo: you may not read this file: check its permissions and its folder's\n");
    EXPECT_EQ(outcome.exitCode, 1);
}

TEST_F(RefusalTest, ReportsAMissingFile) {
    std::filesystem::create_symlink("gone.orvo", folder_ / "a.orvo");
    const Outcome outcome = RunTool({"info", "a.orvo"}, folder_);
    EXPECT_EQ(outcome.errors, "orvo: a.orvo: no such file: check the path\n");
    EXPECT_EQ(outcome.exitCode, 1);
}

}  // namespace
