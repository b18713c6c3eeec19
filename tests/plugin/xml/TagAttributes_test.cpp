#include "plugin/xml/TagAttributes.h"

#include <gtest/gtest.h>

namespace tses {
namespace {

TEST(TagAttributes, AreFoundByTheirWholeNameInAnyOrder) {
    const TagAttributes tag = {{u"zeta", u"1"}, {u"id", u"2"}, {u"idle", u""}};
    EXPECT_EQ(tag.Find(u"id"), u"2");
    EXPECT_EQ(tag.Find(u"idle"), u"");
    EXPECT_EQ(tag.Find(u"zeta"), u"1");
    EXPECT_EQ(tag.Find(u"i"), std::nullopt);
    EXPECT_EQ(tag.Find(u"idles"), std::nullopt);
    EXPECT_EQ(tag.Find(u"Id"), std::nullopt);
    EXPECT_EQ(tag.Find(u""), std::nullopt);
}

TEST(TagAttributes, AreFoundBeforeThePlaceToo) {
    const TagAttributes tag = {{u"a", u"1"}, {u"b", u"2"}, {u"c", u"3"}};
    std::size_t place = 0;
    EXPECT_EQ(tag.FindNext(u"b", place), u"2");
    EXPECT_EQ(place, 2u);
    EXPECT_EQ(tag.FindNext(u"a", place), u"1");
    EXPECT_EQ(place, 1u);
    EXPECT_EQ(tag.FindNext(u"c", place), u"3");
    EXPECT_EQ(place, 3u);
    EXPECT_EQ(tag.FindNext(u"d", place), std::nullopt);
    EXPECT_EQ(place, 3u);
}

TEST(TagAttributes, ASecondValueOfANameReplacesTheFirst) {
    TagAttributes tag = {{u"id", u"1"}};
    tag.Set(u"id", u"2");
    tag.Set(u"name", u"x");
    EXPECT_EQ(tag.size(), 2u);
    EXPECT_EQ(tag.Find(u"id"), u"2");
    EXPECT_EQ(tag.Find(u"name"), u"x");
}

TEST(TagAttributes, HoldNothingOfTheirLastContentAfterClear) {
    TagAttributes tag = {{u"a", u"1"}};
    tag.Clear();
    EXPECT_TRUE(tag.empty());
    EXPECT_EQ(tag.Find(u"a"), std::nullopt);
}

}  // namespace
}  // namespace tses
