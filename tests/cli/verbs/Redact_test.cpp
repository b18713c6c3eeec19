#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "tests/cli/Tool.h"

using nlohmann::json;
using test::Outcome;
using test::ReadFile;
using testing::HasSubstr;

namespace {

constexpr const char* kNamed = "<orvo><audioDevice inputID='Desk' outputID='Desk'/></orvo>";
constexpr const char* kRedacted =
    "<orvo><audioDevice inputID='Device 1' outputID='Device 1'/></orvo>";

class RedactTool : public test::ToolTest {
protected:
    RedactTool() { std::ofstream(folder_ / "a.orvo") << kNamed; }

    Outcome Redact(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "redact");
        return test::RunTool(std::move(arguments), folder_);
    }
};

TEST_F(RedactTool, ASessionIsSavedWithoutItsTexts) {
    const Outcome outcome = Redact({"a.orvo", "-o", "b.orvo", "--key", "key.json"});
    EXPECT_EQ(outcome.output, "a.orvo: 2 texts redacted in b.orvo\n");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(ReadFile(folder_ / "a.orvo"), kNamed);
    EXPECT_EQ(ReadFile(folder_ / "b.orvo"), kRedacted);
    EXPECT_EQ(json::parse(ReadFile(folder_ / "key.json")), json::parse(R"({"Device 1": "Desk"})"));
}

TEST_F(RedactTool, TheKeyNeverReplacesASession) {
    std::filesystem::create_symlink("a.orvo", folder_ / "link.json");
    std::filesystem::create_symlink("b.orvo", folder_ / "later.json");
    for (const char* const key : {"a.orvo", "link.json", "b.orvo", "./b.orvo", "later.json"}) {
        const Outcome outcome = Redact({"a.orvo", "-o", "b.orvo", "--key", key});
        EXPECT_EQ(outcome.exitCode, 1) << key;
        EXPECT_THAT(outcome.errors, HasSubstr(std::string(key) + ": the session is there, "))
            << key;
        EXPECT_EQ(ReadFile(folder_ / "a.orvo"), kNamed) << key;
        EXPECT_FALSE(std::filesystem::exists(folder_ / "b.orvo")) << key;
    }
}

TEST_F(RedactTool, TheOldFileIsKeptIfAskedFor) {
    EXPECT_EQ(Redact({"a.orvo", "--in-place", "--backup"}).exitCode, 0);
    EXPECT_EQ(ReadFile(folder_ / "a.orvo"), kRedacted);
    EXPECT_EQ(ReadFile(folder_ / "a.orvo.bak"), kNamed);
}

TEST_F(RedactTool, AFolderIsRedactedFileByFile) {
    std::filesystem::create_directories(folder_ / "in/deep");
    std::filesystem::copy(folder_ / "a.orvo", folder_ / "in/b.orvo");
    std::filesystem::copy(folder_ / "a.orvo", folder_ / "in/deep/c.orvo");
    EXPECT_EQ(Redact({"-r", "in", "--in-place"}).exitCode, 0);
    EXPECT_EQ(ReadFile(folder_ / "in/b.orvo"), kRedacted);
    EXPECT_EQ(ReadFile(folder_ / "in/deep/c.orvo"), kRedacted);
}

TEST_F(RedactTool, WhatIsNamedIsKept) {
    EXPECT_EQ(Redact({"a.orvo", "-o", "b.orvo", "--keep", "texts,names"}).exitCode, 0);
    EXPECT_EQ(ReadFile(folder_ / "b.orvo"), kNamed);
    EXPECT_EQ(Redact({"a.orvo", "-o", "b.orvo", "--keep", "everything"}).exitCode, 2);
}

TEST_F(RedactTool, WithoutATargetTheCommandLineMakesNoSense) {
    const Outcome outcome = Redact({"a.orvo"});
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_THAT(outcome.errors, HasSubstr("-o OUT or --in-place"));
}

TEST_F(RedactTool, AFileThatCannotBeReadOrSavedIsAFailureThatSaysWhy) {
    const Outcome gone = Redact({"gone.orvo", "a.orvo", "--in-place"});
    EXPECT_EQ(gone.exitCode, 1);
    EXPECT_EQ(gone.errors, "orvo: gone.orvo: no such file: check the path\n");
    EXPECT_EQ(ReadFile(folder_ / "a.orvo"), kRedacted);
    const Outcome nowhere = Redact({"a.orvo", "-o", "nowhere/b.orvo"});
    EXPECT_EQ(nowhere.exitCode, 1);
    EXPECT_THAT(nowhere.errors, HasSubstr("nowhere/b.orvo: was not saved: "));
    EXPECT_EQ(Redact({"-", "-o", "b.orvo"}).exitCode, 1);
    EXPECT_FALSE(Exists("b.orvo"));
}

}  // namespace
