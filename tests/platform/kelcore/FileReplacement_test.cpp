#include "platform/kelcore/FileReplacement.h"

#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <fstream>
#include <thread>

#include "tests/platform/kelcore/replacement/ReplacementFixture.h"
#include "tests/platform/support/FailingAllocations.h"
#include "tests/platform/support/OtherProcess.h"

namespace kelcore {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class FileReplacementTest : public ReplacementTest {};

TEST_F(FileReplacementTest, MakesANewFile) {
    Replace(target_, "new");
    EXPECT_EQ(test::ReadFile(bytes_), "new");
    EXPECT_THAT(folder_.Names(), ElementsAre(kName));
}

TEST_F(FileReplacementTest, ReplacesAnOldFile) {
    MakeOld();
    Replace(target_, "new content");
    EXPECT_EQ(test::ReadFile(bytes_), "new content");
    EXPECT_THAT(folder_.Names(), ElementsAre(kName));
}

TEST_F(FileReplacementTest, BlocksAreAppended) {
    File file(target_);
    file.Create();
    OPlatformByteStream stream(file);
    stream.WriteBlock("ab", 2);
    stream.WriteBlock(nullptr, 0);
    stream.WriteBlock("\0c", 2);
    stream.Close();
    EXPECT_EQ(test::ReadFile(bytes_), std::string("ab\0c", 4));
}

TEST_F(FileReplacementTest, WithoutAnyBlockTheFileIsEmpty) {
    MakeOld();
    Replace(target_, "");
    EXPECT_EQ(test::ReadFile(bytes_), "");
}

TEST_F(FileReplacementTest, ALargeBlockIsWrittenWhole) {
    const std::string content(20'000'000, 'x');
    Replace(target_, content);
    EXPECT_EQ(test::ReadFile(bytes_), content);
}

TEST_F(FileReplacementTest, TheOldFileStaysWholeUntilTheStreamIsClosed) {
    MakeOld();
    File file(target_);
    file.Create();
    EXPECT_EQ(test::ReadFile(bytes_), "old");
    OPlatformByteStream stream(file);
    stream.WriteBlock("new", 3);
    EXPECT_EQ(test::ReadFile(bytes_), "old");
    stream.Close();
    EXPECT_EQ(test::ReadFile(bytes_), "new");
}

TEST_F(FileReplacementTest, TheNewContentHasATemporaryNameUntilTheStreamIsClosed) {
    File file(target_);
    file.Create();
    OPlatformByteStream stream(file);
    stream.WriteBlock("new", 3);
    const std::string temporary = stream.TemporaryPath();
    EXPECT_EQ(test::ReadFile(temporary), "new");
    stream.Close();
    EXPECT_THAT(folder_.Names(), ElementsAre(kName));
}

TEST_F(FileReplacementTest, ThereIsNoTemporaryPathOnceTheContentHasItsName) {
    FileReplacement replacement(bytes_);
    EXPECT_EQ(std::filesystem::path(replacement.TemporaryPath()).parent_path(),
              std::filesystem::path(bytes_).parent_path());
    replacement.Commit();
    EXPECT_EQ(replacement.TemporaryPath(), "");
}

TEST_F(FileReplacementTest, AProgramThatHasTheOldFileOpenCanContinueToReadIt) {
    MakeOld();
    std::ifstream reader(bytes_);
    Replace(target_, "new");
    std::string content;
    reader >> content;
    EXPECT_EQ(content, "old");
}

TEST_F(FileReplacementTest, AReaderSeesTheOldOrTheNewContentOnly) {
    const std::string first(300'000, 'a');
    const std::string second(300'000, 'b');
    test::WriteFile(bytes_, first);
    std::atomic<bool> done = false;
    std::atomic<int> mixed = 0;
    std::thread reader([&] {
        while (!done) {
            const std::string seen = test::ReadFile(bytes_);
            mixed += seen != first && seen != second ? 1 : 0;
        }
    });
    for (int i = 0; i < 20; ++i) {
        Replace(target_, i % 2 == 0 ? second : first);
    }
    done = true;
    reader.join();
    EXPECT_EQ(mixed, 0);
}

TEST_F(FileReplacementTest, AnAbandonedStreamKeepsTheOldFileAndLeavesNothing) {
    MakeOld();
    {
        File file(target_);
        file.Create();
        OPlatformByteStream stream(file);
        stream.WriteBlock("new", 3);
        EXPECT_THAT(folder_.Names(), SizeIs(2));
    }
    EXPECT_EQ(test::ReadFile(bytes_), "old");
    EXPECT_THAT(folder_.Names(), ElementsAre(kName));
}

TEST_F(FileReplacementTest, AnAbandonedNewFileDoesNotExist) {
    {
        File file(target_);
        file.Create();
    }
    EXPECT_THAT(folder_.Names(), IsEmpty());
}

TEST_F(FileReplacementTest, CreatingAgainStartsOver) {
    File file(target_);
    file.Create();
    file.Create();
    EXPECT_THAT(folder_.Names(), SizeIs(1));
    OPlatformByteStream stream(file);
    stream.WriteBlock("new", 3);
    stream.Close();
    EXPECT_THAT(folder_.Names(), ElementsAre(kName));
}

// ---- Failures halfway

TEST_F(FileReplacementTest, AWriteThatFailsHalfwayKeepsTheOldFileAndLeavesNothing) {
    MakeOld();
    const std::string outcome = test::RunInChild([this]() -> std::string {
        // The limit on file sizes cuts the first block short, then causes an error and a signal
        // that would end the process. The signal must not get through.
        const rlimit limit{1000, 1000};
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0) {
            return "no limit";
        }
        File file(target_);
        file.Create();
        OPlatformByteStream stream(file);
        try {
            stream.WriteBlock(std::string(5000, 'x').data(), 5000);
            return "written";
        } catch (const file_exception& error) {
            const bool reported = error.SystemError() == EFBIG;
            try {
                stream.Close();
                return "closed";
            } catch (const file_exception& second) {
                return error.what() + std::string(reported ? "; " : "?; ") + second.what();
            }
        }
    });
    EXPECT_EQ(outcome,
              "cannot write \"@0\": File too large; "
              "cannot write \"@0\": its stream is closed, or failed before");
    EXPECT_EQ(test::ReadFile(bytes_), "old");
    EXPECT_THAT(folder_.Names(), ElementsAre(kName));
}

TEST_F(FileReplacementTest, OutOfMemoryAnywhereKeepsTheOldFileAndLeavesNothing) {
    MakeOld();
    SetAttribute(bytes_, "user.orvo.test", "value");
    ASSERT_EQ(symlink(kName, folder_.Bytes("link").c_str()), 0);
    const std::u16string link = folder_.Path16("link");
    for (std::size_t number = 0;; ++number) {
        bool threw = false;
        bool happened = false;
        {
            const test::FailingAllocation failure(number);
            try {
                Replace(link, "new");
            } catch (const std::bad_alloc&) {
                threw = true;
            }
            happened = failure.Happened();
        }
        ASSERT_EQ(threw, happened) << "allocation " << number;
        ASSERT_THAT(folder_.Names(), ElementsAre("link", kName)) << "allocation " << number;
        ASSERT_EQ(test::ReadFile(bytes_), threw ? "old" : "new") << "allocation " << number;
        if (!threw) {
            EXPECT_GT(number, 5U);
            return;
        }
    }
}

TEST_F(FileReplacementTest, ATargetThatBecomesAFolderFailsAtTheEnd) {
    File file(target_);
    file.Create();
    OPlatformByteStream stream(file);
    stream.WriteBlock("new", 3);
    ASSERT_EQ(mkdir(bytes_.c_str(), 0777), 0);
    EXPECT_THROW(stream.Close(), file_exception);
    EXPECT_THROW(stream.Close(), file_exception) << "a failure stays one";
    EXPECT_THAT(folder_.Names(), ElementsAre(kName));
}

TEST_F(FileReplacementTest, AFolderThatIsRenamedMeanwhileGetsTheFile) {
    ASSERT_EQ(mkdir(folder_.Bytes("before").c_str(), 0777), 0);
    File file(folder_.Path16("before/song.orvo"));
    file.Create();
    OPlatformByteStream stream(file);
    stream.WriteBlock("new", 3);
    ASSERT_EQ(rename(folder_.Bytes("before").c_str(), folder_.Bytes("after").c_str()), 0);
    stream.Close();
    EXPECT_EQ(test::ReadFile(folder_.Bytes("after/song.orvo")), "new");
}

}  // namespace
}  // namespace kelcore
