// Files that mean no good, and files that are broken.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zip.h>

#include <filesystem>

#include <orvo/Interchange.h>
#include "tests/support/TemporaryFolder.h"
#include "tests/toolkit/interchange/otio/OtioText.h"

namespace {

namespace text = test::otio;
using orvo::ImportResult;
using orvo::InterchangeKind;
using testing::HasSubstr;

struct Hostile {
    const char* name;
    std::string content;
    std::string what;  // in the message
};

std::string Repeated(std::string_view piece, std::size_t count) {
    std::string repeated;
    for (std::size_t i = 0; i < count; ++i) {
        repeated += piece;
    }
    return repeated;
}

std::string OnTrack(const std::string& children) {
    return text::Timeline(text::Track(children));
}

std::string ClipWithRange(const std::string& range) {
    return OnTrack(text::Object("Clip.2", R"(,"name":"a","source_range":)" + range));
}

std::string NestedStacks(std::size_t depth) {
    return Repeated(R"({"OTIO_SCHEMA":"Stack.1","children":[)", depth) + Repeated("]}", depth);
}

std::vector<Hostile> HostileTexts() {
    return {
        {"Empty", "", "no JSON"},
        {"NotJson", "hello", "no JSON"},
        {"CutOff", OnTrack(text::Clip("a", 0, 1)).substr(0, 120), "no JSON"},
        {"UnfinishedText", R"({"OTIO_SCHEMA":"Timel)", "no JSON"},
        {"MalformedUtf8", "{\"OTIO_SCHEMA\":\"\xC3\x28\"}", "no JSON"},
        {"ListOnTop", "[1,2]", "no object"},
        {"NullOnTop", "null", "no object"},
        {"NaNOnTop", "NaN", "no object"},
        {"DepthBomb", Repeated("[", 1'000'000), "levels of nesting"},
        {"ObjectBomb", Repeated(R"({"a":)", 100'000), "levels of nesting"},
        {"StackBomb", text::Timeline(NestedStacks(5000)), "levels of nesting"},
        {"HugeNumber", ClipWithRange(R"({"start_time":{"rate":1,"value":1e999}})"), "too large"},
        {"NoSchema", "{}", "no timeline"},
        {"SchemaIsANumber", R"({"OTIO_SCHEMA":3})", "no timeline"},
        {"OtherSchema", R"({"OTIO_SCHEMA":"Marker.2"})", "no timeline"},
        {"EmptyCollection", R"({"OTIO_SCHEMA":"SerializableCollection.1","children":[]})",
         "no timeline"},
        {"TimelineWithoutTracks", R"({"OTIO_SCHEMA":"Timeline.1"})", "no tracks"},
        {"TracksAreAText", R"({"OTIO_SCHEMA":"Timeline.1","tracks":"x"})", "/tracks: is no object"},
        {"ChildrenAreAnObject", text::Timeline(R"({"OTIO_SCHEMA":"Track.1","children":{}})"),
         "\"children\" is no list"},
        {"ChildIsANumber", OnTrack("7"), "/tracks/children/0/children/0: is no object"},
        {"ClipWithoutAnyRange", OnTrack(R"({"OTIO_SCHEMA":"Clip.2"})"), "neither a source_range"},
        {"GapWithoutAnyRange", OnTrack(R"({"OTIO_SCHEMA":"Gap.1"})"), "neither a source_range"},
        {"RangeIsAList", ClipWithRange("[0,1]"), "/source_range: is no object"},
        {"RangeWithoutDuration", ClipWithRange(R"({"start_time":)" + text::Time(0) + "}"),
         "needs a start_time and a duration"},
        {"TimeIsNaN",
         ClipWithRange(R"({"start_time":{"rate":48000,"value":NaN},"duration":)" + text::Time(1) +
                       "}"),
         "that are numbers"},
        {"RateIsInfinity",
         ClipWithRange(R"({"start_time":{"rate":Infinity,"value":1},"duration":)" + text::Time(1) +
                       "}"),
         "that are numbers"},
        {"RateIsZero", ClipWithRange(text::Range(0, 10, 0)), "neither a source_range"},
        {"RateIsNegative", ClipWithRange(text::Range(0, 10, -48000)), "neither a source_range"},
        {"ValueIsAText",
         ClipWithRange(R"({"start_time":{"rate":1,"value":"1"},"duration":)" + text::Time(1) + "}"),
         "that are numbers"},
        {"DurationIsNegative", ClipWithRange(text::Range(0, -5)), "negative"},
        {"TimeIsTooLarge", ClipWithRange(text::Range(1e300, 1)), "too large"},
        {"OffsetIsNegative",
         OnTrack(text::Clip("a", 0, 9) + "," + text::Dissolve(-5, 1) + "," + text::Clip("b", 0, 9)),
         "the offset is negative"},
        {"SpeedBeyondMeasure",
         OnTrack(
             text::Clip("a", 0, 9, 48000,
                        R"(,"effects":[{"OTIO_SCHEMA":"LinearTimeWarp.1","time_scalar":1e300}])")),
         "speed"},
    };
}

class OtioHostile : public testing::Test {
protected:
    ImportResult Read(std::string_view content) {
        return orvo::ImportSession(folder_.Write("a.otio", content), InterchangeKind::Otio,
                                   {.mediaFolder = folder_ / "media"});
    }

    test::TemporaryFolder folder_;
};

TEST_F(OtioHostile, TextsAreRefusedWithAPlace) {
    for (const Hostile& hostile : HostileTexts()) {
        SCOPED_TRACE(hostile.name);
        const ImportResult result = Read(hostile.content);
        EXPECT_FALSE(result);
        ASSERT_EQ(result.messages.size(), 1u);
        EXPECT_THAT(result.messages[0].what, HasSubstr(hostile.what));
        EXPECT_EQ(result.messages[0].file, (folder_ / "a.otio").string());
        EXPECT_EQ(result.session, orvo::Session());
    }
}

TEST_F(OtioHostile, WhatIsNoJsonHasALineAndAColumn) {
    const ImportResult result = Read("{\n  \"a\": ?");
    ASSERT_EQ(result.messages.size(), 1u);
    EXPECT_EQ(result.messages[0].line, 2u);
    EXPECT_EQ(result.messages[0].column, 8u);
}

// Archives

class OtioHostileArchive : public OtioHostile {
protected:
    /// Adds an entry to the archive.
    void Add(const std::string& name, const std::string& content) {
        zip_t* const zip = zip_open((folder_ / "a.otioz").c_str(), ZIP_CREATE, nullptr);
        ASSERT_NE(zip, nullptr);
        zip_source_t* const source = zip_source_buffer(zip, content.data(), content.size(), 0);
        ASSERT_GE(zip_file_add(zip, name.c_str(), source, ZIP_FL_ENC_UTF_8), 0);
        ASSERT_EQ(zip_close(zip), 0);
    }

    void ReplaceInArchive(const std::string& from, const std::string& to) {
        std::string bytes = test::ReadFile(folder_ / "a.otioz");
        for (std::size_t at = bytes.find(from); at != bytes.npos; at = bytes.find(from, at + 1)) {
            bytes.replace(at, from.size(), to);
        }
        folder_.Write("a.otioz", bytes);
    }

    void ExpectRefusal(const std::string& what) {
        const ImportResult result = orvo::ImportSession(folder_ / "a.otioz", InterchangeKind::Otioz,
                                                        {.mediaFolder = folder_ / "media"});
        EXPECT_FALSE(result);
        ASSERT_EQ(result.messages.size(), 1u);
        EXPECT_THAT(result.messages[0].what, HasSubstr(what));
        EXPECT_FALSE(std::filesystem::exists(folder_ / "media"));
        EXPECT_FALSE(std::filesystem::exists(folder_ / "evil.wav"));
    }

    static std::string Playing(const std::string& url) {
        return OnTrack(text::Clip("a", 0, 9, 48000, text::Media(url)));
    }
};

TEST_F(OtioHostileArchive, AFileThatIsNoArchiveIsRefused) {
    folder_.Write("a.otioz", "PK\3\4 and then nothing");
    ExpectRefusal("no ZIP archive");
}

TEST_F(OtioHostileArchive, AnArchiveWithoutATimelineIsRefused) {
    Add("version.txt", "1.0.0");
    ExpectRefusal("no such entry");
}

TEST_F(OtioHostileArchive, ANameThatClimbsIsRefused) {
    Add("content.otio", Playing("../evil.wav"));
    Add("xx/evil.wav", "sound");
    ReplaceInArchive("xx/evil.wav", "../evil.wav");
    ExpectRefusal("leads out of the archive");
}

TEST_F(OtioHostileArchive, TwoEntriesOfOneNameAreRefused) {
    Add("content.otio", Playing("media/a.wav"));
    Add("media/a.wav", "sound");
    Add("media/b.wav", "sound");
    ReplaceInArchive("media/b.wav", "media/a.wav");
    ExpectRefusal("damaged");
}

TEST_F(OtioHostileArchive, ABombIsRefused) {
    Add("content.otio", Playing("media/a.wav"));
    Add("media/a.wav", std::string(64'000'000, '\0'));
    ExpectRefusal("which no honest file does");
}

TEST_F(OtioHostileArchive, DamagedMediaAreRefusedAndTakenBack) {
    Add("content.otio", OnTrack(text::Clip("a", 0, 9, 48000, text::Media("media/a.wav")) + "," +
                                text::Clip("b", 0, 9, 48000, text::Media("media/b.wav"))));
    Add("media/a.wav", "one sound");
    Add("media/b.wav", "another sound");
    ReplaceInArchive("another sound", "another s0und");
    ExpectRefusal("damaged");
}

TEST_F(OtioHostileArchive, AUrlThatClimbsFindsNothing) {
    Add("content.otio", Playing("media/../../evil.wav"));
    folder_.Write("evil.wav", "outside");
    const ImportResult result = orvo::ImportSession(folder_ / "a.otioz", InterchangeKind::Otioz,
                                                    {.mediaFolder = folder_ / "media"});
    EXPECT_TRUE(result);
    EXPECT_TRUE(result.session.audioTracks.at(0).clips.at(0).offline);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "media"));
}

}  // namespace
