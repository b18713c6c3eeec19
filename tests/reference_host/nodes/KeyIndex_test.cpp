#include "reference_host/nodes/KeyIndex.h"

#include <gtest/gtest.h>

#include <orvo/File.h>

namespace refhost {
namespace {

using FileIndex = KeyIndex<&orvo::File::id>;

TEST(KeyIndexTest, FindsTheFirstOfAKey) {
    const std::vector<orvo::File> files{{.id = 4}, {.id = 9}, {.id = 9}};
    FileIndex index;
    EXPECT_EQ(index.Find(files, 9), 1U);
    EXPECT_EQ(index.Find(files, 5), std::nullopt);
}

TEST(KeyIndexTest, AddsWhatItDoesNotFind) {
    std::vector<orvo::File> files{{.id = 4}};
    FileIndex index;
    EXPECT_EQ(index.FindOrAdd(files, 7), 1U);
    EXPECT_EQ(index.FindOrAdd(files, 7), 1U);
    EXPECT_EQ(index.FindOrAdd(files, 4), 0U);
    EXPECT_EQ(files, (std::vector<orvo::File>{{.id = 4}, {.id = 7}}));
}

TEST(KeyIndexTest, FindsWhatOthersAppended) {
    std::vector<orvo::File> files;
    FileIndex index;
    EXPECT_EQ(index.Find(files, 3), std::nullopt);
    files.push_back({.id = 3});
    EXPECT_EQ(index.Find(files, 3), 0U);
}

}  // namespace
}  // namespace refhost
