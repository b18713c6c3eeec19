#include "plugin/xml/ContentTarget.h"

#include <gtest/gtest.h>

#include <string>

namespace tses {
namespace {

class ContentTargetTest : public testing::Test {
protected:
    void Write(const std::string& bytes) {
        target.writeChars(reinterpret_cast<const XMLByte*>(bytes.data()), bytes.size(), nullptr);
        written += bytes;
    }

    std::string Content() const {
        std::string content;
        target.ForEachBlock([&](const XMLByte* bytes, std::size_t count) {
            content.append(reinterpret_cast<const char*>(bytes), count);
        });
        return content;
    }

    ContentTarget target;
    std::string written;
};

TEST_F(ContentTargetTest, HoldsNothingAtFirst) {
    EXPECT_EQ(target.Size(), 0u);
    EXPECT_EQ(Content(), "");
}

TEST_F(ContentTargetTest, NothingAddsNothing) {
    Write("");
    EXPECT_EQ(target.Size(), 0u);
    EXPECT_EQ(Content(), "");
}

TEST_F(ContentTargetTest, KeepsPiecesOfEveryLengthInTheirOrder) {
    for (std::size_t length = 0; length < 1200; ++length) {
        Write(std::string(length, static_cast<char>('a' + length % 26)));
        Write("=");
    }
    EXPECT_EQ(target.Size(), written.size());
    EXPECT_TRUE(Content() == written);
}

TEST_F(ContentTargetTest, KeepsSingleBytesAcrossManyBlocks) {
    for (int i = 0; i < 300'000; ++i) {
        Write(std::string(1, static_cast<char>(i % 251)));
    }
    EXPECT_EQ(target.Size(), written.size());
    EXPECT_TRUE(Content() == written);
}

TEST_F(ContentTargetTest, KeepsAPieceThatIsLongerThanSeveralBlocks) {
    Write("begin");
    Write(std::string(1'000'000, 'x'));
    Write("end");
    EXPECT_EQ(target.Size(), written.size());
    EXPECT_TRUE(Content() == written);
}

TEST_F(ContentTargetTest, KeepsPiecesThatEndWhereABlockEnds) {
    for (int i = 0; i < 5; ++i) {
        Write(std::string(std::size_t{1} << 16, static_cast<char>('a' + i)));
        EXPECT_EQ(target.Size(), written.size());
        EXPECT_TRUE(Content() == written);
    }
    Write("z");
    EXPECT_TRUE(Content() == written);
}

TEST_F(ContentTargetTest, BeginsAnewWhenItIsCleared) {
    Write(std::string(100'000, 'x'));
    target.Clear();
    EXPECT_EQ(target.Size(), 0u);
    EXPECT_EQ(Content(), "");
    written.clear();
    Write("new");
    EXPECT_EQ(Content(), "new");
}

}  // namespace
}  // namespace tses
