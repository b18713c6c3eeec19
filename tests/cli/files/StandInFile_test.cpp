#include "cli/files/StandInFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "platform/kelcore/File.h"
#include "platform/kelcore/Paths.h"
#include "tests/support/TemporaryFolder.h"

using cli::StandInFile;
using kelcore::PathFromBytes;
using kelcore::PathToBytes;
using testing::HasSubstr;

namespace {

/// Temporary files go to the test's own folder.
class StandInFileTest : public testing::Test {
protected:
    StandInFileTest() { ::setenv("TMPDIR", folder_.Path().c_str(), 1); }
    ~StandInFileTest() override {
        if (before_ != nullptr) {
            ::setenv("TMPDIR", before_, 1);
        } else {
            ::unsetenv("TMPDIR");
        }
    }

    const char* before_ = std::getenv("TMPDIR");
    test::TemporaryFolder folder_;
};

TEST_F(StandInFileTest, ItIsTheOtherFileByNameAndTheTemporaryOneToTheSystem) {
    for (const std::string& place :
         {std::string("/home/ann/show/song.orvo"), std::string("/song.orvo"), std::string("/up"),
          std::string("/up/up"), std::string("/up/on/up"), std::string("/link/tree/up/song.orvo"),
          std::string("/two words/odd\xFF/\xC3\xA4/back\\slash/song.orvo"),
          "/" + std::string(250, 'n') + "/" + std::string(250, 'm') + "/song.orvo"}) {
        const StandInFile file(PathFromBytes(place));
        EXPECT_EQ(PathToBytes(kelcore::File(file.PluginPath()).FullPath()), place);
        std::ofstream(PathToBytes(file.PluginPath())) << place;
        EXPECT_EQ(test::ReadFile(file.Path()), place);
        EXPECT_TRUE(file.Path().starts_with(folder_.Path().string() + "/"));
        EXPECT_FALSE(std::filesystem::exists(place));
    }
}

TEST_F(StandInFileTest, PathsAreRelativeToTheOtherFile) {
    const StandInFile file(u"/home/ann/show/song.orvo");
    EXPECT_EQ(kelcore::MakeFileFromPath(u"../here.wav", file.PluginPath()), u"/home/ann/here.wav");
    EXPECT_EQ(kelcore::MakeNormalizedRelativePath(u"/home/bob/gone.wav", file.PluginPath()),
              u"../../bob/gone.wav");
}

TEST_F(StandInFileTest, CanBeReplacedLikeAnyFile) {
    const StandInFile file(u"/home/ann/show/song.orvo");
    for (const std::string content : {"first", "second"}) {
        kelcore::File target(file.PluginPath());
        target.Create();
        kelcore::OPlatformByteStream stream(target);
        stream.WriteBlock(content.data(), content.size());
        stream.Close();
        EXPECT_EQ(test::ReadFile(file.Path()), content);
    }
}

TEST_F(StandInFileTest, IsRemovedWithEverythingNextToIt) {
    {
        const StandInFile file(u"/home/ann/show/song.orvo");
        const std::filesystem::path folder = std::filesystem::path(file.Path()).parent_path();
        for (int i = 0; i < 300; ++i) {
            std::ofstream(folder / (std::string(100, 'f') + std::to_string(i))) << i;
        }
        std::filesystem::create_directories(folder / "deeper/still");
        std::filesystem::create_directory_symlink("/etc", folder / "elsewhere");
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder_.Path()));
    EXPECT_TRUE(std::filesystem::exists("/etc"));
}

TEST_F(StandInFileTest, TheTemporaryFolderMayBeALinkOrARelativePath) {
    std::filesystem::create_directory(folder_ / "deep");
    std::filesystem::create_directory_symlink(folder_ / "deep", folder_ / "link");
    const std::filesystem::path working = std::filesystem::current_path();
    std::filesystem::current_path(folder_ / "deep");
    for (const std::string& place :
         {(folder_ / "link").string(), std::string(".."), (folder_ / "link/../deep").string()}) {
        ::setenv("TMPDIR", place.c_str(), 1);
        const StandInFile file(u"/home/ann/song.orvo");
        EXPECT_EQ(kelcore::File(file.PluginPath()).FullPath(), u"/home/ann/song.orvo");
        std::ofstream(PathToBytes(file.PluginPath())) << "here";
        EXPECT_EQ(test::ReadFile(file.Path()), "here");
    }
    std::filesystem::current_path(working);
}

TEST_F(StandInFileTest, ATooLongPathIsAFailureWithAdvice) {
    std::string place;
    while (place.size() < PATH_MAX) {
        place += "/" + std::string(250, 'n');
    }
    try {
        const StandInFile file(PathFromBytes(place + "/song.orvo"));
        FAIL() << "it was made";
    } catch (const std::runtime_error& failure) {
        EXPECT_THAT(failure.what(), HasSubstr("File name too long"));
        EXPECT_THAT(failure.what(), HasSubstr("set TMPDIR to"));
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder_.Path()));
}

TEST_F(StandInFileTest, ASignalThatEndsTheProgramRemovesAllOfThem) {
    for (const int signal : {SIGHUP, SIGINT, SIGPIPE, SIGQUIT, SIGTERM, SIGXCPU, SIGUSR1, SIGUSR2,
                             SIGALRM, SIGVTALRM, SIGPROF}) {
        EXPECT_EXIT(
            {
                ::signal(signal, SIG_DFL);
                const StandInFile outer(u"/home/ann/show/a.orvo");
                const StandInFile inner(u"/home/ann/show/b.orvo");
                std::ofstream(outer.Path()) << "outer";
                std::ofstream(inner.Path()) << "inner";
                ::raise(signal);
            },
            testing::KilledBySignal(signal), "");
        EXPECT_TRUE(std::filesystem::is_empty(folder_.Path())) << signal;
    }
}

TEST_F(StandInFileTest, ASignalThatIsIgnoredStaysIgnored) {
    EXPECT_EXIT(
        {
            ::signal(SIGHUP, SIG_IGN);
            const StandInFile file(u"/home/ann/show/a.orvo");
            ::raise(SIGHUP);
            ::_exit(std::filesystem::is_empty(folder_.Path()) ? 1 : 7);
        },
        testing::ExitedWithCode(7), "");
}

TEST_F(StandInFileTest, AMessageNamesTheTemporaryFolderInsteadOfTheOtherFile) {
    const StandInFile file(u"/home/ann/song.orvo");
    EXPECT_EQ(file.Explain("cannot write \"/home/ann/song.orvo\": No space left on device"),
              "cannot write \"" + folder_.Path().string() +
                  "\": No space left on device; make room there, or set TMPDIR to another folder");
    EXPECT_EQ(file.Explain("cannot write \"/home/ann/song.orvo\": File name too long"),
              "cannot write \"/home/ann/song.orvo\": File name too long");
    EXPECT_EQ(file.Explain("the session is larger than 2 GiB"), "the session is larger than 2 GiB");
}

}  // namespace
