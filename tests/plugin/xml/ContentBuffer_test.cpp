#include "plugin/xml/ContentBuffer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace tses {
namespace {

class ContentBufferTest : public testing::Test {
protected:
    void Append(std::string_view bytes) {
        buffer.Append(reinterpret_cast<const kelcore::byte*>(bytes.data()), bytes.size());
        appended += bytes;
    }

    /// Makes room for `count` bytes and puts fewer there.
    void Put(std::size_t count, std::string_view bytes) {
        kelcore::byte* const room = buffer.Room(count);
        buffer.SetEnd(std::ranges::copy(bytes, room).out);
        appended += bytes;
    }

    void Truncate(std::size_t size) {
        buffer.Truncate(size);
        appended.resize(size);
    }

    static std::string TextOf(const ContentBuffer& buffer) {
        return {buffer.Bytes().begin(), buffer.Bytes().end()};
    }

    std::string Content() const { return TextOf(buffer); }

    ContentBuffer buffer;
    std::string appended;
};

TEST_F(ContentBufferTest, HoldsNothingAtFirst) {
    EXPECT_EQ(Content(), "");
}

TEST_F(ContentBufferTest, AnEmptyPieceAddsNothing) {
    Append("");
    EXPECT_EQ(Content(), "");
}

TEST_F(ContentBufferTest, KeepsPiecesOfEveryLengthInTheirOrder) {
    for (std::size_t length = 0; length < 1200; ++length) {
        Append(std::string(length, static_cast<char>('a' + length % 26)));
        Append("=");
    }
    EXPECT_TRUE(Content() == appended);
}

TEST_F(ContentBufferTest, KeepsManySingleBytes) {
    for (int i = 0; i < 300'000; ++i) {
        Append(std::string(1, static_cast<char>(i % 251)));
    }
    EXPECT_TRUE(Content() == appended);
}

TEST_F(ContentBufferTest, KeepsAPieceThatIsMuchLongerThanWhatItHolds) {
    Append("begin");
    Append(std::string(1'000'000, 'x'));
    Append("end");
    EXPECT_TRUE(Content() == appended);
}

TEST_F(ContentBufferTest, RoomAloneAddsNothing) {
    Append("begin");
    buffer.Room(1'000'000);
    EXPECT_EQ(Content(), "begin");
    Append("end");
    EXPECT_EQ(Content(), "beginend");
}

TEST_F(ContentBufferTest, KeepsOfItsRoomWhatWasPutThere) {
    Put(100, "");
    Put(100, "begin");
    Put(1'000'000, std::string(999'999, 'x'));
    Put(3, "end");
    EXPECT_TRUE(Content() == appended);
}

TEST_F(ContentBufferTest, TheRoomIsAsLargeAsAskedForWhateverItHolds) {
    for (std::size_t count = 1; count < 100'000; count += count / 3 + 1) {
        Put(count, std::string(count, static_cast<char>('a' + count % 26)));
    }
    EXPECT_TRUE(Content() == appended);
}

TEST_F(ContentBufferTest, DropsWhatComesAfterTheLengthItIsTruncatedTo) {
    Append("beginning");
    Truncate(5);
    EXPECT_EQ(Content(), "begin");
    Append("end");
    EXPECT_EQ(Content(), "beginend");
    Truncate(8);
    EXPECT_EQ(Content(), "beginend");
}

TEST_F(ContentBufferTest, KeepsWhatRemainsWhenItGrowsAfterItWasTruncated) {
    Append(std::string(100'000, 'x'));
    Truncate(70'000);
    Append(std::string(1'000'000, 'y'));
    EXPECT_TRUE(Content() == appended);
}

TEST_F(ContentBufferTest, StartsOverWhenItIsTruncatedToNothing) {
    Append(std::string(100'000, 'x'));
    Truncate(0);
    EXPECT_EQ(Content(), "");
    Append("new");
    EXPECT_EQ(Content(), "new");
}

TEST_F(ContentBufferTest, ItsBytesCanBeChangedInPlace) {
    Append("begin");
    buffer.Bytes()[0] = 'B';
    EXPECT_EQ(Content(), "Begin");
}

TEST_F(ContentBufferTest, MovesWithWhatItHolds) {
    Append("begin");
    ContentBuffer other = std::move(buffer);
    other.Append(reinterpret_cast<const kelcore::byte*>("end"), 3);
    EXPECT_EQ(TextOf(other), "beginend");
}

}  // namespace
}  // namespace tses
