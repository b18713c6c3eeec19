#include "plugin/xml/AttributeMap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace tses {
namespace {

std::vector<std::u16string> NamesOf(const AttributeMap& map) {
    std::vector<std::u16string> names;
    for (const auto& attribute : map) {
        names.emplace_back(attribute.name);
    }
    return names;
}

TEST(AttributeMap, OrdersNamesByCodeUnitSoThatUpperCaseComesFirst) {
    AttributeMap map;
    map.Set(u"zeta", u"1");
    map.Set(u"Alpha", u"2");
    map.Set(u"beta", u"3");
    EXPECT_EQ(NamesOf(map), (std::vector<std::u16string>{u"Alpha", u"beta", u"zeta"}));
}

TEST(AttributeMap, APrefixComesBeforeTheLongerName) {
    const AttributeMap map = {{u"mediaHandlerID", u"b"}, {u"mediaHandler", u"a"}};
    EXPECT_EQ(NamesOf(map), (std::vector<std::u16string>{u"mediaHandler", u"mediaHandlerID"}));
}

TEST(AttributeMap, ASecondValueOfANameReplacesTheFirst) {
    AttributeMap map = {{u"id", u"1"}, {u"name", u"x"}};
    map.Set(u"id", u"2");
    EXPECT_EQ(map.size(), 2u);
    EXPECT_EQ(*map.Find(u"id"), u"2");
}

TEST(AttributeMap, AnEmptyValueIsThereAndAnAbsentNameIsNot) {
    const AttributeMap map = {{u"name", u""}};
    ASSERT_NE(map.Find(u"name"), nullptr);
    EXPECT_EQ(*map.Find(u"name"), u"");
    EXPECT_EQ(map.Find(u"nam"), nullptr);
    EXPECT_EQ(map.Find(u"names"), nullptr);
}

TEST(AttributeMap, EveryOrderOfInsertionGivesTheSameMap) {
    const std::vector<std::u16string> sorted = {u"A", u"a", u"aa", u"b"};
    std::vector<std::u16string> order = sorted;
    do {
        AttributeMap map;
        for (const std::u16string& name : order) {
            map.Set(name, name + u"!");
        }
        ASSERT_EQ(NamesOf(map), sorted);
        for (const std::u16string& name : sorted) {
            ASSERT_EQ(*map.Find(name), name + u"!");
        }
    } while (std::next_permutation(order.begin(), order.end()));
}

}  // namespace
}  // namespace tses
