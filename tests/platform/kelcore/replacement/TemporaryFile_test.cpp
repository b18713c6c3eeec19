#include "platform/kelcore/replacement/TemporaryFile.h"

#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <thread>
#include <vector>

#include "tests/platform/kelcore/replacement/ReplacementFixture.h"
#include "tests/platform/support/OtherProcess.h"

namespace kelcore {
namespace {

using testing::ContainsRegex;
using testing::ElementsAre;
using testing::MatchesRegex;
using testing::SizeIs;

class TemporaryFileTest : public ReplacementTest {};

// ---- Names

TEST_F(TemporaryFileTest, TheTemporaryFileIsHiddenNextToTheTarget) {
    MakeOld();
    File file(target_);
    file.Create();
    EXPECT_THAT(folder_.Names(),
                ElementsAre(MatchesRegex("\\.song\\.orvo\\.orvo-tmp-[0-9a-f]{12}"), kName));
}

TEST_F(TemporaryFileTest, TheTemporaryFileOfAPrivateFileIsAsPrivate) {
    MakeOld(0600);
    File file(target_);
    file.Create();
    for (const std::string& name : folder_.Names()) {
        EXPECT_EQ(ModeOf(folder_.Bytes(name)), 0600U) << name;
    }
}

TEST_F(TemporaryFileTest, NamesUpToTheSystemsLimitWork) {
    for (const std::size_t length : {1U, 231U, 232U, 233U, 250U, 255U}) {
        const std::string name(length, 'n');
        Replace(folder_.Path16(name), "new");
        Replace(folder_.Path16(name), "newer");
        EXPECT_EQ(test::ReadFile(folder_.Bytes(name)), "newer") << length;
    }
    EXPECT_THAT(folder_.Names(), SizeIs(6)) << "no strays";
}

TEST_F(TemporaryFileTest, ALongNameIsNotCutInsideACharacter) {
    std::string name = "n";
    while (name.size() < 253) {
        name += "\xC3\xA9";
    }
    File file(folder_.Path16(name));
    file.Create();
    ASSERT_THAT(folder_.Names(), SizeIs(1));
    const std::string temporary = folder_.Names().front();
    EXPECT_LE(temporary.size(), 255U);
    EXPECT_GE(temporary.size(), 254U);
    EXPECT_THAT(temporary, ContainsRegex("\xC3\xA9\\.orvo-tmp-[0-9a-f]{12}$"));
}

TEST_F(TemporaryFileTest, ALongNameWithoutAPlaceToCutIsOmitted) {
    File file(folder_.Path16(std::string(250, '\x80')));
    file.Create();
    EXPECT_THAT(folder_.Names(), ElementsAre(ContainsRegex("^\\.\\.orvo-tmp-[0-9a-f]{12}$")));
}

TEST_F(TemporaryFileTest, ANameBeyondTheSystemsLimitIsRefused) {
    EXPECT_EQ(Refusal(folder_.Path16(std::string(256, 'n'))),
              "cannot write \"@0\": File name too long");
}

TEST_F(TemporaryFileTest, ANameThatIsNotUtf8Works) {
    Replace(folder_.Path16("s\xFFng.orvo"), "new");
    EXPECT_THAT(folder_.Names(), ElementsAre("s\xFFng.orvo"));
}

// ---- Leftovers

TEST_F(TemporaryFileTest, AKilledWriterKeepsTheOldFileAndTheNextOneCleansUp) {
    MakeOld();
    test::RunAndKill([this] {
        File file(target_);
        file.Create();
        OPlatformByteStream stream(file);
        stream.WriteBlock("half", 4);
        kill(getpid(), SIGKILL);
    });
    EXPECT_EQ(test::ReadFile(bytes_), "old");
    ASSERT_THAT(folder_.Names(), SizeIs(2)) << "the stray this test is about";
    Replace(target_, "new");
    EXPECT_THAT(folder_.Names(), ElementsAre(kName));
    EXPECT_EQ(test::ReadFile(bytes_), "new");
}

TEST_F(TemporaryFileTest, ARunningWriterKeepsItsTemporaryFile) {
    MakeOld();
    File first(target_);
    first.Create();
    OPlatformByteStream firstStream(first);
    firstStream.WriteBlock("first", 5);
    Replace(target_, "second");
    EXPECT_EQ(test::ReadFile(bytes_), "second");
    firstStream.Close();
    EXPECT_EQ(test::ReadFile(bytes_), "first");
    EXPECT_THAT(folder_.Names(), ElementsAre(kName));
}

TEST_F(TemporaryFileTest, ManyConcurrentWritersSucceedAndLeaveNothing) {
    std::vector<std::thread> writers;
    for (int i = 0; i < 4; ++i) {
        writers.emplace_back([this] {
            for (int round = 0; round < 25; ++round) {
                EXPECT_NO_THROW(Replace(target_, "content"));
            }
        });
    }
    for (std::thread& writer : writers) {
        writer.join();
    }
    EXPECT_EQ(test::ReadFile(bytes_), "content");
    EXPECT_THAT(folder_.Names(), ElementsAre(kName));
}

TEST_F(TemporaryFileTest, FilesThatOnlyResembleLeftoversStay) {
    const std::vector<std::string> others = {
        ".other.orvo.orvo-tmp-0123456789ab",  // belongs to another file
        ".song.orvo.orvo-tmp-0123456789AB",   // wrong digits
        ".song.orvo.orvo-tmp-0123456789a",    // one digit too few
        ".song.orvo.orvo-tmp-0123456789abc",  // one digit too many
        ".song.orvo.orvo-tmp-",               // no digits
        ".song.orvo.orvo-backup",
    };
    for (const std::string& name : others) {
        test::WriteFile(folder_.Bytes(name), "keep");
    }
    ASSERT_EQ(mkdir(folder_.Bytes(".song.orvo.orvo-tmp-0123456789ab").c_str(), 0777), 0);
    ASSERT_EQ(symlink(others[0].c_str(), folder_.Bytes(".song.orvo.orvo-tmp-ffffffffffff").c_str()),
              0);
    ASSERT_EQ(mkfifo(folder_.Bytes(".song.orvo.orvo-tmp-eeeeeeeeeeee").c_str(), 0600), 0);
    const auto before = folder_.Names();
    Replace(target_, "new");
    auto after = folder_.Names();
    std::erase(after, kName);
    EXPECT_EQ(after, before);
}

TEST_F(TemporaryFileTest, ALeftoverIsRemoved) {
    test::WriteFile(folder_.Bytes(".song.orvo.orvo-tmp-0123456789ab"), "stray");
    Replace(target_, "new");
    EXPECT_THAT(folder_.Names(), ElementsAre(kName));
}

}  // namespace
}  // namespace kelcore
