#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/cli/Tool.h"

using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

const std::vector<std::string> kContenders = {"floor", "plugin_null_host", "plugin_reference_host"};
const std::vector<std::string> kWriters = {"floor",
                                           "plugin_null_host",
                                           "plugin_reference_host",
                                           "streamed_null_host",
                                           "streamed_reference_host",
                                           "copy"};

class BenchTest : public testing::Test {
protected:
    test::Outcome Run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(),
                         std::filesystem::path(test::ToolPath()).replace_filename("orvo-bench"));
        return test::Run({.arguments = std::move(arguments), .folder = folder_.Path().string()});
    }

    json RunForJson(std::vector<std::string> arguments) const {
        arguments.emplace_back("--json");
        const test::Outcome outcome = Run(std::move(arguments));
        EXPECT_EQ(outcome.errors, "");
        EXPECT_EQ(outcome.exitCode, 0);
        return json::parse(outcome.output);
    }

    void Generate() const {
        const test::Outcome outcome = test::RunTool(
            {"generate", "--tracks", "3", "--clips", "4", "--keyframes", "4", "a.orvo"}, folder_);
        ASSERT_EQ(outcome.exitCode, 0) << outcome.errors;
    }

    test::TemporaryFolder folder_;
};

void ExpectPositive(const json& numbers, const std::vector<std::string>& keys) {
    for (const std::string& key : keys) {
        ASSERT_TRUE(numbers.contains(key)) << key;
        EXPECT_GT(numbers.at(key).get<double>(), 0) << key;
    }
}

TEST_F(BenchTest, AReadIsMeasuredBesideTheBareParserAndOthers) {
    Generate();
    const json report = RunForJson({"read", "--rounds", "1", "a.orvo"});
    std::vector<std::string> all = kContenders;
    all.insert(all.end(), {"expat", "libxml2", "pugixml"});
    ExpectPositive(report, all);
    ExpectPositive(report.at("ratio"), all);
    ExpectPositive(report.at("allocations"), all);
    EXPECT_EQ(report.at("peak_kib").size(), all.size());
    EXPECT_EQ(report.at("user_ms").size(), all.size());
    EXPECT_EQ(report.at("ratio").at("floor"), 1);
    EXPECT_EQ(report.at("bytes"), std::filesystem::file_size(folder_ / "a.orvo"));
    EXPECT_GT(report.at("elements"), 100);
    EXPECT_EQ(report.at("steady_allocations_per_element").size(), all.size());
}

TEST_F(BenchTest, AWriteIsMeasuredBesideTheBareDomAndAllWriteTheSameBytes) {
    Generate();
    const json report = RunForJson({"write", "--rounds", "1", "a.orvo"});
    ExpectPositive(report, kWriters);
    ExpectPositive(report.at("ratio"), kWriters);
    ExpectPositive(report.at("allocations"), kWriters);
    EXPECT_EQ(report.at("peak_kib").size(), kWriters.size());
    EXPECT_EQ(report.at("same_bytes"), json({{"floor", true},
                                             {"plugin_null_host", true},
                                             {"streamed_null_host", true},
                                             {"streamed_reference_host", true},
                                             {"copy", true}}));
}

TEST_F(BenchTest, APictureIsMeasuredBesideTheRead) {
    Generate();
    const json report = RunForJson({"view", "--rounds", "1", "a.orvo"});
    ExpectPositive(report, {"read", "layout", "picture"});
    EXPECT_EQ(report.at("ratio").at("read"), 1);
    const test::Outcome outcome = Run({"view", "absent.orvo"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.errors, StartsWith("orvo-bench: absent.orvo"));
}

TEST_F(BenchTest, TheLifeOfThePlugInIsItsLoadAndManySmallSessions) {
    const json report = RunForJson({"life", "--rounds", "1", "--sessions", "5"});
    ExpectPositive(report, kContenders);
    ExpectPositive(report, {"load_ms", "load_floor_ms"});
    EXPECT_EQ(report.at("sessions"), 5);
    const double sessionBytes = report.at("bytes").get<double>() / 5;
    EXPECT_GT(sessionBytes, 1800);
    EXPECT_LT(sessionBytes, 2400);
}

TEST_F(BenchTest, WithoutJsonThereIsATableForPeople) {
    Generate();
    const test::Outcome outcome = Run({"write", "--rounds", "1", "a.orvo"});
    EXPECT_THAT(outcome.output, StartsWith("writing a.orvo: "));
    for (const std::string& name : kWriters) {
        EXPECT_THAT(outcome.output, HasSubstr("\n" + name + " "));
    }
}

TEST_F(BenchTest, WhatCannotBeMeasuredIsAFailureThatNamesIt) {
    folder_.Write("b.orvo", "<orvo>");
    for (const char* const verb : {"read", "write"}) {
        for (const char* const file : {"b.orvo", "c.orvo"}) {
            const test::Outcome outcome = Run({verb, file});
            EXPECT_EQ(outcome.exitCode, 1);
            EXPECT_THAT(outcome.errors, StartsWith(std::string("orvo-bench: ") + file));
            EXPECT_EQ(outcome.output, "");
        }
    }
    EXPECT_EQ(Run({"read"}).exitCode, 2);
}

TEST_F(BenchTest, NothingIsLeftInTheFolderThatWasNamed) {
    Generate();
    std::filesystem::create_directory(folder_ / "work");
    RunForJson({"write", "--rounds", "1", "--folder", "work", "a.orvo"});
    RunForJson({"read", "--rounds", "1", "--folder", "work", "a.orvo"});
    EXPECT_TRUE(std::filesystem::is_empty(folder_ / "work"));
}

}  // namespace
