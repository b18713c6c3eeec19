#include "cli/files/Output.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <stdexcept>

#include "tests/support/TemporaryFolder.h"

using cli::ExitCode;
using cli::Output;

namespace {

class OutputTest : public testing::Test {
protected:
    OutputTest() { folder_.Write("a.json", "old"); }

    std::string Name() const { return (folder_ / "a.json").string(); }
    std::string Content() const { return test::ReadFile(folder_ / "a.json"); }
    std::ptrdiff_t FileCount() const {
        return std::distance(std::filesystem::directory_iterator(folder_.Path()), {});
    }

    test::TemporaryFolder folder_;
};

TEST_F(OutputTest, AFileIsReplacedWhenTheContentIsComplete) {
    const Output out(Name());
    const ExitCode code = out.Save([&](const Output::Sink& sink) {
        sink("one ");
        EXPECT_EQ(Content(), "old");
        sink("two");
    });
    EXPECT_EQ(code, ExitCode::Good);
    EXPECT_EQ(Content(), "one two");
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(OutputTest, AFailureOfTheProducerKeepsTheFile) {
    const Output out(Name());
    EXPECT_THROW(out.Save([](const Output::Sink& sink) {
        sink("one ");
        throw std::runtime_error("no more");
    }),
                 std::runtime_error);
    EXPECT_EQ(Content(), "old");
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(OutputTest, ASignalKeepsTheFileAndLeavesNothingElse) {
    EXPECT_EXIT(Output(Name()).Save([](const Output::Sink& sink) {
        sink("one ");
        ::raise(SIGTERM);
    }),
                testing::KilledBySignal(SIGTERM), "");
    EXPECT_EQ(Content(), "old");
    EXPECT_EQ(FileCount(), 1);
}

}  // namespace
