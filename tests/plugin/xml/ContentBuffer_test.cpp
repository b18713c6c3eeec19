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

    std::string Content() const { return {target.Bytes().begin(), target.Bytes().end()}; }

    ContentTarget target;
    std::string written;
};

TEST_F(ContentTargetTest, HoldsNothingAtFirst) {
    EXPECT_EQ(Content(), "");
}

TEST_F(ContentTargetTest, AnEmptyPieceAddsNothing) {
    Write("");
    EXPECT_EQ(Content(), "");
}

TEST_F(ContentTargetTest, KeepsPiecesOfEveryLengthInTheirOrder) {
    for (std::size_t length = 0; length < 1200; ++length) {
        Write(std::string(length, static_cast<char>('a' + length % 26)));
        Write("=");
    }
    EXPECT_TRUE(Content() == written);
}

TEST_F(ContentTargetTest, KeepsManySingleBytes) {
    for (int i = 0; i < 300'000; ++i) {
        Write(std::string(1, static_cast<char>(i % 251)));
    }
    EXPECT_TRUE(Content() == written);
}

TEST_F(ContentTargetTest, KeepsAPieceThatIsMuchLongerThanWhatItHolds) {
    Write("begin");
    Write(std::string(1'000'000, 'x'));
    Write("end");
    EXPECT_TRUE(Content() == written);
}

TEST_F(ContentTargetTest, StartsOverWhenItIsCleared) {
    Write(std::string(100'000, 'x'));
    target.Clear();
    EXPECT_EQ(Content(), "");
    written.clear();
    Write("new");
    EXPECT_EQ(Content(), "new");
}

}  // namespace
}  // namespace tses
