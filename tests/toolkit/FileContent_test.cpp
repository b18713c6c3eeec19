#include "toolkit/FileContent.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/TemporaryFolder.h"

namespace toolkit {
namespace {

class FileBlocksTest : public ::testing::Test {
protected:
    ::test::TemporaryFolder folder_;
};

std::string AllOf(FileBlocks& blocks, std::size_t& count) {
    std::string content;
    for (std::string_view block = blocks.Next(); !block.empty(); block = blocks.Next()) {
        content += block;
        ++count;
    }
    return content;
}

TEST_F(FileBlocksTest, TheBlocksOfAFileAreItsContent) {
    const std::string content(300'000, 'x');
    FileBlocks blocks(folder_.Write("a", content).string());
    EXPECT_EQ(blocks.Size(), content.size());
    std::size_t count = 0;
    EXPECT_EQ(AllOf(blocks, count), content);
    EXPECT_GT(count, 2U);
    EXPECT_FALSE(blocks.Failure());
}

TEST_F(FileBlocksTest, WhatIsOpenIsReadAndStaysOpen) {
    int ends[2] = {};
    ASSERT_EQ(::pipe(ends), 0);
    ASSERT_EQ(::write(ends[1], "ab", 2), 2);
    ::close(ends[1]);
    {
        FileBlocks blocks(ends[0]);
        std::size_t count = 0;
        EXPECT_EQ(AllOf(blocks, count), "ab");
    }
    EXPECT_EQ(::close(ends[0]), 0);
}

TEST_F(FileBlocksTest, WhatCannotBeReadHasNoBlocksAndAReason) {
    const std::string pipe = (folder_ / "pipe").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const auto& [path, what] :
         {std::pair(pipe, "this is a pipe"), std::pair((folder_ / "none").string(), "no such file"),
          std::pair(folder_.Path().string(), "this is a folder")}) {
        FileBlocks blocks(path);
        EXPECT_TRUE(blocks.Next().empty());
        ASSERT_TRUE(blocks.Failure()) << path;
        EXPECT_EQ(blocks.Failure()->what, what);
    }
    FileBlocks closed(-1);
    EXPECT_TRUE(closed.Next().empty());
    ASSERT_TRUE(closed.Failure());
    EXPECT_EQ(closed.Failure()->what, "cannot be read");
}

}  // namespace
}  // namespace toolkit
