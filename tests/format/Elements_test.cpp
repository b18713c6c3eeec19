#include "format/Elements.h"

#include <gtest/gtest.h>

#include <set>

#include "platform/kelcore/Strings.h"

namespace tses {
namespace {

TEST(Elements, AreFoundByNameAndPlace) {
    const Element* const fade = FindElement(names::fadeIn, states::audioClip);
    ASSERT_NE(fade, nullptr);
    EXPECT_EQ(fade->state, states::fadeIn);
    EXPECT_NE(fade->FindAttribute(names::shape), nullptr);
    EXPECT_EQ(fade->FindAttribute(names::hue), nullptr);
    EXPECT_EQ(FindElement(names::fadeIn, states::videoClip), nullptr);
    EXPECT_EQ(FindElement(names::orvo, states::unknown), nullptr);
}

TEST(Elements, AreOnceAtEachPlace) {
    std::set<std::pair<std::u16string_view, State>> places;
    for (const Element& element : kElements) {
        for (const State parent : element.parents) {
            EXPECT_TRUE(places.emplace(element.name, parent).second)
                << kelcore::UTF16to8(element.name) << " in " << parent;
        }
    }
}

TEST(Elements, HaveParentsThatExist) {
    std::set<State> pushed;
    for (const Element& element : kElements) {
        pushed.insert(element.state);
    }
    for (const Element& element : kElements) {
        for (const State parent : element.parents) {
            EXPECT_TRUE(pushed.contains(parent)) << kelcore::UTF16to8(element.name);
        }
    }
}

TEST(Elements, HaveTheAttributesThatDistinguishThem) {
    for (const Element& element : kElements) {
        const std::u16string_view key = element.occurrence.key;
        EXPECT_TRUE(key.empty() || element.FindAttribute(key) != nullptr)
            << kelcore::UTF16to8(element.name);
    }
}

TEST(Elements, OfOneNameHaveEachAttributeOnce) {
    for (const Element& element : kElements) {
        std::set<std::u16string_view> names;
        for (const Attribute& attribute : element.attributes) {
            EXPECT_TRUE(names.insert(attribute.name).second)
                << kelcore::UTF16to8(element.name) << " " << kelcore::UTF16to8(attribute.name);
        }
    }
}

}  // namespace
}  // namespace tses
