#include "plugin/serializer/HostText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace tses {
namespace {

/// The test owns it; the last release does not destroy it.
class HostString final : public IHostString {
public:
    HostString(const kelcore::char16* data, kelcore::uint32 length)
        : data_(data), length_(length) {}

    void AddReference() override { ++references; }
    void Release() override { --references; }
    void UnusedSlot3() override {}
    const kelcore::char16* GetData() override { return data_; }
    kelcore::uint32 GetLength() override { return length_; }

    int references = 0;

private:
    const kelcore::char16* data_;
    kelcore::uint32 length_;
};

TEST(HostText, IsAsLongAsTheHostSays) {
    HostString shorter(u"abc", 2);
    EXPECT_EQ(TextOf(&shorter), u"ab");
    HostString withNul(u"a\0b", 3);
    EXPECT_EQ(TextOf(&withNul), std::u16string(u"a\0b", 3));
    EXPECT_EQ(withNul.references, 0);
}

TEST(HostText, IsEmptyWithoutAStringOrWithoutItsData) {
    EXPECT_EQ(TextOf(nullptr), u"");
    HostString noData(nullptr, 5);
    EXPECT_EQ(TextOf(&noData), u"");
    EXPECT_EQ(noData.references, 0);
}

TEST(HostText, LongerThanAnyTextIsRefusedUnread) {
    for (const kelcore::uint32 length : {536870913u, 4294967295u}) {
        HostString text(u"abc", length);
        EXPECT_THAT([&] { TextOf(&text); }, testing::ThrowsMessage<std::length_error>(
                                                "a text is longer than 536870912 UTF-16 units"))
            << length;
        EXPECT_EQ(text.references, 0);
    }
}

}  // namespace
}  // namespace tses
