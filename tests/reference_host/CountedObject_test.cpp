#include "reference_host/CountedObject.h"

#include <gtest/gtest.h>

#include "reference_host/HostString.h"
#include "reference_host/Ref.h"
#include "tests/reference_host/support/NoLiveNodes.h"

namespace refhost {
namespace {

class CountedObjectTest : public test::NoLiveNodes {};

TEST_F(CountedObjectTest, IsAliveUntilItsMakerReleasesIt) {
    auto string = Ref<HostString>::Adopt(new HostString(u"text"));
    EXPECT_EQ(LiveNodes(), 1U);
    string.Reset();
    EXPECT_EQ(LiveNodes(), 0U);
}

TEST_F(CountedObjectTest, IsAliveWhileAnotherHoldsIt) {
    auto string = Ref<HostString>::Adopt(new HostString(u"text"));
    const auto other = Ref<tses::IHostString>::Retain(string.Get());
    string.Reset();
    EXPECT_EQ(TextOf(other.Get()), u"text");
}

TEST_F(CountedObjectTest, ACopiedReferenceCounts) {
    auto string = Ref<HostString>::Adopt(new HostString(u"text"));
    const Ref<HostString> copy = string;
    string.Reset();
    EXPECT_EQ(LiveNodes(), 1U);
    EXPECT_EQ(TextOf(copy.Get()), u"text");
}

TEST_F(CountedObjectTest, ACopyOfANullReferenceIsNull) {
    const Ref<HostString> none;
    const Ref<HostString> copy = none;
    EXPECT_FALSE(copy);
}

TEST_F(CountedObjectTest, AHostStringKeepsZerosAndSurrogatesOfItsText) {
    const std::u16string text{u'a', 0, 0xD800, u'b'};
    const auto string = Ref<HostString>::Adopt(new HostString(text));
    EXPECT_EQ(string->GetLength(), 4U);
    EXPECT_EQ(TextOf(string.Get()), text);
}

TEST_F(CountedObjectTest, ANullHostStringCountsAsEmpty) {
    EXPECT_EQ(TextOf(nullptr), u"");
}

}  // namespace
}  // namespace refhost
