#include "plugin/xml/AttributeMap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
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

std::map<std::u16string, std::u16string> Content(const AttributeMap& map) {
    std::map<std::u16string, std::u16string> content;
    for (const auto& attribute : map) {
        content.emplace(attribute.name, attribute.value);
    }
    return content;
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
    EXPECT_EQ(Content(map).at(u"id"), u"2");
}

TEST(AttributeMap, AnEmptyValueIsKept) {
    const AttributeMap map = {{u"name", u""}};
    EXPECT_EQ(Content(map), (std::map<std::u16string, std::u16string>{{u"name", u""}}));
}

TEST(AttributeMap, TakesMoreThanAnyElementHas) {
    std::vector<std::u16string> names;
    for (char16_t letter = u'a'; letter <= u'z'; ++letter) {
        names.push_back({letter, letter});
    }
    AttributeMap map;
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        map.Set(*name, *name + u"!");
    }
    EXPECT_EQ(NamesOf(map), names);
    EXPECT_EQ(Content(map).at(u"qq"), u"qq!");
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
            ASSERT_EQ(Content(map).at(name), name + u"!");
        }
    } while (std::next_permutation(order.begin(), order.end()));
}

}  // namespace
}  // namespace tses
