#include "bench/NullHost.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "reference_host/Plugin.h"
#include "reference_host/Sessions.h"
#include "tests/support/TemporaryFolder.h"

namespace bench {
namespace {

class NullHostTest : public testing::Test {
protected:
    NullHostTest() { TakeNullHostTally(); }

    tses::SessionResult Read(const std::filesystem::path& path) {
        return plugin_.Read(path.u16string(), NullHost());
    }

private:
    refhost::Plugin plugin_;
};

TEST_F(NullHostTest, TakesTheGoldenFilesWhole) {
    for (const char* const name : {"everything.orvo", "read-only.orvo"}) {
        EXPECT_EQ(Read(std::filesystem::path(ORVO_SOURCE_DIR) / "tests/golden" / name),
                  tses::SessionResult::Ok);
        const NullHostTally tally = TakeNullHostTally();
        EXPECT_GT(tally.calls, 50u) << name;
        EXPECT_EQ(tally.references, 0) << name;
        EXPECT_EQ(tally.messages, 0u) << name;
    }
}

TEST_F(NullHostTest, CountsEachCallOnce) {
    const test::TemporaryFolder folder;
    ASSERT_EQ(Read(folder.Write("a.orvo", "<orvo><files/></orvo>")), tses::SessionResult::Ok);
    const std::uint64_t empty = TakeNullHostTally().calls;
    const auto file = folder.Write("b.orvo",
                                   "<orvo><files><file id='1' absolutePath='/a.wav'/>"
                                   "<file id='2' absolutePath='/b.wav'/></files></orvo>");
    ASSERT_EQ(Read(file), tses::SessionResult::Ok);
    EXPECT_EQ(TakeNullHostTally().calls, empty + 4);  // for each file GetFile and SetPath
}

TEST_F(NullHostTest, CountsWhatTheParserSays) {
    const test::TemporaryFolder folder;
    EXPECT_EQ(Read(folder.Write("a.orvo", "<orvo>")), tses::SessionResult::ReadFailed);
    EXPECT_EQ(TakeNullHostTally().messages, 1u);
}

TEST_F(NullHostTest, ATallyThatWasTakenBeginsAnew) {
    Read(std::filesystem::path(ORVO_SOURCE_DIR) / "tests/golden/everything.orvo");
    EXPECT_GT(TakeNullHostTally().calls, 0u);
    EXPECT_EQ(TakeNullHostTally().calls, 0u);
}

}  // namespace
}  // namespace bench
