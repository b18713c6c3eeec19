#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "tests/cli/Tool.h"

using nlohmann::json;
using test::Outcome;
using test::ReadFile;
using test::RunTool;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class GenerateTest : public test::ToolTest {
protected:
    void Generate(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "generate");
        RunQuietly(std::move(arguments));
    }
};

TEST_F(GenerateTest, WhatItWritesIsConvertedToTheSameBytesAndLosesNothing) {
    for (const char* const tracks : {"1", "2", "7", "16"}) {
        Generate({"--tracks", tracks, "--clips", "9", "--keyframes", "4", "a.orvo"});
        for (const auto& [from, to] :
             {std::pair("a.orvo", "b.orvo"), {"a.orvo", "a.json"}, {"a.json", "c.orvo"}}) {
            RunQuietly({"convert", from, to});
        }
        EXPECT_EQ(ReadFile(folder_ / "a.orvo"), ReadFile(folder_ / "b.orvo"));
        EXPECT_EQ(ReadFile(folder_ / "a.orvo"), ReadFile(folder_ / "c.orvo"));
    }
}

TEST_F(GenerateTest, TheDefaultSessionHasAMegabyte) {
    Generate({"a.orvo"});
    const std::uintmax_t size = std::filesystem::file_size(folder_ / "a.orvo");
    EXPECT_GT(size, 950'000u);
    EXPECT_LT(size, 1'050'000u);
}

TEST_F(GenerateTest, TheSameNumbersGiveTheSameFileAndAnotherSeedAnother) {
    Generate({"--tracks", "3", "--seed", "7", "a.orvo"});
    Generate({"--tracks", "3", "--seed", "7", "b.orvo"});
    Generate({"--tracks", "3", "--seed", "8", "c.orvo"});
    EXPECT_EQ(ReadFile(folder_ / "a.orvo"), ReadFile(folder_ / "b.orvo"));
    EXPECT_NE(ReadFile(folder_ / "a.orvo"), ReadFile(folder_ / "c.orvo"));
}

TEST_F(GenerateTest, TheNumbersOfTheCommandLineAreThoseOfTheSession) {
    Generate({"--tracks", "9", "--clips", "5", "--slots", "2", "--keyframes", "3", "a.orvo"});
    const json tracks =
        json::parse(RunTool({"info", "--json", "a.orvo"}, folder_).output).at(0).at("tracks");
    ASSERT_EQ(tracks.size(), 9u);
    const json& video = tracks.front();
    EXPECT_EQ(video.at("kind"), "video");
    EXPECT_EQ(video.at("clips"), 5);
    const json& voice = tracks.at(1);
    EXPECT_EQ(voice.at("kind"), "audio");
    EXPECT_EQ(voice.at("clips"), 5);
    EXPECT_EQ(voice.at("effects").size(), 2u);
    EXPECT_EQ(voice.at("lanes"), 3);  // one for the fader, two for the effects
    EXPECT_EQ(voice.at("keyframes"), 9);
    EXPECT_EQ(tracks.back().at("kind"), "master");
    EXPECT_EQ(tracks.back().at("clips"), 0);
}

TEST_F(GenerateTest, ADashIsStandardOutput) {
    Generate({"--tracks", "2", "a.orvo"});
    const Outcome outcome = RunTool({"generate", "--tracks", "2", "-"}, folder_);
    EXPECT_EQ(outcome.output, ReadFile(folder_ / "a.orvo"));
    EXPECT_EQ(outcome.exitCode, 0);
}

TEST_F(GenerateTest, AJsonNameGetsJson) {
    Generate({"--tracks", "2", "a.orvo"});
    Generate({"--tracks", "2", "a.json"});
    Generate({"--tracks", "2", "B.JSON"});
    Generate({"--tracks", "2", "--to", "json", "c.txt"});
    Generate({"--tracks", "2", "--to", "orvo", "d.json"});
    EXPECT_EQ(json::parse(ReadFile(folder_ / "a.json")).at("audioTracks").size(), 2u);
    EXPECT_EQ(ReadFile(folder_ / "B.JSON"), ReadFile(folder_ / "a.json"));
    EXPECT_EQ(ReadFile(folder_ / "c.txt"), ReadFile(folder_ / "a.json"));
    EXPECT_EQ(ReadFile(folder_ / "d.json"), ReadFile(folder_ / "a.orvo"));
}

TEST_F(GenerateTest, NumbersOutOfRangeAreUsageErrorsThatNameThem) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"generate", "--tracks", "0", "a.orvo"},
          {"generate", "--clips", "1000001", "a.orvo"},
          {"generate", "--seed", "now", "a.orvo"}}) {
        const Outcome outcome = RunTool(arguments, folder_);
        EXPECT_THAT(outcome.errors, HasSubstr(arguments.at(1)));
        EXPECT_EQ(outcome.exitCode, 2);
    }
    const Outcome outcome =
        RunTool({"generate", "--tracks", "10000", "--clips", "1000000", "a.orvo"}, folder_);
    EXPECT_THAT(outcome.errors, HasSubstr("reduce one of the numbers"));
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_TRUE(std::filesystem::is_empty(folder_.Path()));
}

TEST_F(GenerateTest, AnythingButAWholeNumberInRangeIsRefusedWithTheRange) {
    for (const auto& [option, range] : {std::pair("--tracks", "1 to 10000"),
                                        {"--clips", "0 to 1000000"},
                                        {"--slots", "0 to 1000000"},
                                        {"--keyframes", "0 to 1000000"},
                                        {"--seed", "0 to 18446744073709551615"}}) {
        for (const std::string number :
             {"-1", "+1", "1e3", "1.5", "0x10", " 1", "1 ", "", "-18446744073709551615",
              "18446744073709551616", "99999999999999999999999999"}) {
            const Outcome outcome = RunTool({"generate", option, number, "a.orvo"}, folder_);
            EXPECT_EQ(outcome.errors, "orvo: " + std::string(option) + ": \"" + number +
                                          "\" is not a whole number from " + range +
                                          ": try \"orvo generate --help\"\n");
            EXPECT_EQ(outcome.exitCode, 2);
        }
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder_.Path()));
}

TEST_F(GenerateTest, RangesIncludeBothEnds) {
    for (const char* const seed : {"0", "18446744073709551614", "18446744073709551615"}) {
        Generate({"--tracks", "1", "--clips", "0", "--seed", seed, std::string(seed) + ".orvo"});
    }
    EXPECT_NE(ReadFile(folder_ / "18446744073709551614.orvo"),
              ReadFile(folder_ / "18446744073709551615.orvo"));
}

TEST_F(GenerateTest, ANumberWithLeadingZerosIsDecimal) {
    Generate({"--tracks", "010", "a.orvo"});
    Generate({"--tracks", "10", "b.orvo"});
    EXPECT_EQ(ReadFile(folder_ / "a.orvo"), ReadFile(folder_ / "b.orvo"));
}

TEST_F(GenerateTest, AFileThatCannotBeWrittenIsAFailureThatSaysWhy) {
    const Outcome outcome = RunTool({"generate", "nowhere/a.orvo"}, folder_);
    EXPECT_THAT(outcome.errors, StartsWith("orvo: nowhere/a.orvo: was not saved: "));
    EXPECT_EQ(outcome.exitCode, 1);
}

}  // namespace
