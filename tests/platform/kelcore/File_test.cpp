#include "platform/kelcore/File.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "platform/kelcore/Paths.h"
#include "tests/platform/support/FileFolder.h"
#include "tests/platform/support/OtherProcess.h"

namespace kelcore {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

class FileTest : public testing::Test {
protected:
    test::FileFolder folder_;
};

TEST_F(FileTest, AFullPathIsAbsoluteAndResolvedByName) {
    const std::u16string here = PathFromBytes(std::filesystem::current_path().native());
    EXPECT_EQ(File(u"song.orvo").FullPath(), here + u"/song.orvo");
    EXPECT_EQ(File(u"x/../song.orvo").FullPath(), here + u"/song.orvo");
    EXPECT_EQ(File(u"/a/./b//../song.orvo").FullPath(), u"/a/song.orvo");
}

TEST_F(FileTest, AFullPathStaysWhenTheWorkingDirectoryChanges) {
    const std::string outcome = test::RunInChild([this]() -> std::string {
        const File file(u"song.orvo");
        const std::u16string before = file.FullPath();
        return chdir(folder_.Path().c_str()) == 0 && file.FullPath() == before ? "same" : "other";
    });
    EXPECT_EQ(outcome, "same");
}

TEST_F(FileTest, ARelativePathInARemovedWorkingDirectoryNamesNothing) {
    const std::string gone = folder_.Bytes("gone");
    const std::string outcome = test::RunInChild([&gone]() -> std::string {
        if (mkdir(gone.c_str(), 0777) != 0 || chdir(gone.c_str()) != 0 ||
            rmdir(gone.c_str()) != 0) {
            return "not set up";
        }
        File file(u"song.orvo");
        if (file.Exists()) {
            return "exists";
        }
        file.Create();
        return "created";
    });
    EXPECT_EQ(outcome, "exception: cannot write \"@0\": its folder does not exist");
}

TEST_F(FileTest, EveryKindOfFileExists) {
    test::WriteFile(folder_.Bytes("file"), "");
    ASSERT_EQ(mkfifo(folder_.Bytes("pipe").c_str(), 0600), 0);
    EXPECT_TRUE(File(folder_.Path16("file")).Exists());
    EXPECT_TRUE(File(folder_.Path16("pipe")).Exists());
    EXPECT_TRUE(File(u"/dev/null").Exists());
}

TEST_F(FileTest, AFolderIsNotAFile) {
    ASSERT_EQ(symlink(".", folder_.Bytes("link").c_str()), 0);
    EXPECT_FALSE(File(folder_.Path16("")).Exists());
    EXPECT_FALSE(File(folder_.Path16("link")).Exists());
    EXPECT_FALSE(File(u"/").Exists());
}

TEST_F(FileTest, AMissingFileDoesNotExist) {
    test::WriteFile(folder_.Bytes("file"), "");
    EXPECT_FALSE(File(folder_.Path16("other")).Exists());
    EXPECT_FALSE(File(folder_.Path16("file/below")).Exists());
}

TEST_F(FileTest, OnlyAFolderIsAFolder) {
    test::WriteFile(folder_.Bytes("file"), "");
    ASSERT_EQ(symlink(".", folder_.Bytes("link").c_str()), 0);
    EXPECT_TRUE(File(folder_.Path16("")).IsFolder());
    EXPECT_TRUE(File(folder_.Path16("link")).IsFolder());
    EXPECT_FALSE(File(folder_.Path16("file")).IsFolder());
    EXPECT_FALSE(File(folder_.Path16("other")).IsFolder());
    EXPECT_FALSE(File(u"/dev/null").IsFolder());
    EXPECT_FALSE(File(u"").IsFolder());
}

TEST_F(FileTest, ALinkExistsIfItsTargetDoes) {
    ASSERT_EQ(symlink("target", folder_.Bytes("link").c_str()), 0);
    EXPECT_FALSE(File(folder_.Path16("link")).Exists());
    test::WriteFile(folder_.Bytes("target"), "");
    EXPECT_TRUE(File(folder_.Path16("link")).Exists());
    EXPECT_TRUE(File(folder_.Path16("link")).IsRegularFile());
}

TEST_F(FileTest, DotDotAfterALinkLeadsWhereTheSystemGoes) {
    std::filesystem::create_directories(folder_.Bytes("real/below"));
    ASSERT_EQ(symlink("real/below", folder_.Bytes("link").c_str()), 0);
    test::WriteFile(folder_.Bytes("song.orvo"), "other");
    File file(folder_.Path16("link/../song.orvo"));
    EXPECT_EQ(file.FullPath(), folder_.Path16("song.orvo"));
    EXPECT_FALSE(file.Exists());
    EXPECT_FALSE(file.IsRegularFile());
    file.Create();
    OPlatformByteStream(file).Close();
    EXPECT_TRUE(file.IsRegularFile());
    EXPECT_EQ(test::ReadFile(folder_.Bytes("real/song.orvo")), "");
    EXPECT_EQ(test::ReadFile(folder_.Bytes("song.orvo")), "other");
}

TEST_F(FileTest, OnlyARegularFileIsARegularFile) {
    test::WriteFile(folder_.Bytes("file"), "");
    ASSERT_EQ(mkfifo(folder_.Bytes("pipe").c_str(), 0600), 0);
    EXPECT_TRUE(File(folder_.Path16("file")).IsRegularFile());
    EXPECT_FALSE(File(folder_.Path16("pipe")).IsRegularFile());
    EXPECT_FALSE(File(folder_.Path16("")).IsRegularFile());
    EXPECT_FALSE(File(u"/dev/null").IsRegularFile());
    EXPECT_FALSE(File(folder_.Path16("other")).IsRegularFile());
}

TEST_F(FileTest, AFileWhoseNameIsNotUtf8IsFound) {
    test::WriteFile(folder_.Bytes("kick\xFF.wav"), "");
    EXPECT_TRUE(File(folder_.Path16("kick\xFF.wav")).IsRegularFile());
}

TEST_F(FileTest, APathWithAZeroInItNamesNothing) {
    test::WriteFile(folder_.Bytes("file"), "old");
    File file(folder_.Path16("file\0.orvo"sv));
    EXPECT_FALSE(file.Exists());
    EXPECT_FALSE(file.IsRegularFile());
    EXPECT_THROW(file.Create(), file_exception);
    EXPECT_EQ(test::ReadFile(folder_.Bytes("file")), "old");
}

TEST_F(FileTest, AnEmptyPathNamesNothing) {
    File file(u"");
    EXPECT_EQ(file.FullPath(), u"");
    EXPECT_FALSE(file.Exists());
    EXPECT_FALSE(file.IsRegularFile());
    EXPECT_THROW(file.Create(), file_exception);
}

TEST_F(FileTest, CanBeMoved) {
    File first(folder_.Path16("first"));
    first.Create();
    File second(u"/elsewhere");
    second = std::move(first);
    EXPECT_EQ(second.FullPath(), folder_.Path16("first"));
    File third(std::move(second));
    OPlatformByteStream stream(third);
    stream.WriteBlock("abc", 3);
    stream.Close();
    EXPECT_EQ(test::ReadFile(folder_.Bytes("first")), "abc");
}

TEST_F(FileTest, AStreamNeedsACreatedFile) {
    File file(folder_.Path16("file"));
    EXPECT_THROW(OPlatformByteStream{file}, file_exception);
    file.Create();
    OPlatformByteStream stream(file);
    EXPECT_THROW(OPlatformByteStream{file}, file_exception) << "the first stream has it";
}

TEST_F(FileTest, AClosedStreamAcceptsNothing) {
    File file(folder_.Path16("file"));
    file.Create();
    OPlatformByteStream stream(file);
    stream.WriteBlock("abc", 3);
    stream.Close();
    EXPECT_THROW(stream.WriteBlock("d", 1), file_exception);
    EXPECT_THROW(stream.Close(), file_exception);
    EXPECT_EQ(test::ReadFile(folder_.Bytes("file")), "abc");
}

TEST(FileException, ReplacesThePlaceholderByThePath) {
    const file_exception error("cannot write \"@0\": No space left on device", 28);
    EXPECT_STREQ(error.what(), "cannot write \"@0\": No space left on device");
    EXPECT_EQ(error.SystemError(), 28);
    EXPECT_EQ(error.MessageFor(u"/m/S\u00F6ng @0.orvo"),
              "cannot write \"/m/S\xC3\xB6ng @0.orvo\": No space left on device");
    EXPECT_EQ(error.MessageFor(PathFromBytes("/\xFF")),
              "cannot write \"/\xFF\": No space left on device");
}

TEST(FileException, ShowsAZeroInThePath) {
    EXPECT_EQ(file_exception("\"@0\"", 0).MessageFor(std::u16string(u"/a\0b", 4)), "\"/a\\0b\"");
}

TEST(FileException, AMessageWithoutPlaceholderStaysAsItIs) {
    EXPECT_EQ(file_exception("no path here", 0).MessageFor(u"/x"), "no path here");
}

}  // namespace
}  // namespace kelcore
