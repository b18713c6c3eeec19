#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::ClipGroup;
using orvo::Session;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ClipGroups : public test::ElementFixture {
protected:
    std::vector<std::string> CallsOfGroups(const std::string& content,
                                           const test::HostSetup& host = {}) {
        return CallsIn("<clipGroups>" + content + "</clipGroups>", host);
    }

    static Session With(std::vector<ClipGroup> groups) {
        Session session;
        session.clipGroups = std::move(groups);
        return session;
    }
};

TEST_F(ClipGroups, TheHueComesFirstAndTheNameLast) {
    EXPECT_THAT(
        CallsOfGroups(
            "<clipGroup id='3' hue='30,5'><name> Chorus </name>"
            "<item trackID='7' clipID='12'/><item clipID='4294967295' trackID='4294967294'/>"
            "</clipGroup>"),
        ElementsAre("IEditSession#1.CreateClipGroup(3) -> IEditClipGroup#2",
                    "IEditClipGroup#2.SetHue(30.5)", "IEditClipGroup#2.AddItem(7,12)",
                    "IEditClipGroup#2.AddItem(4294967294,4294967295)",
                    "IEditClipGroup#2.SetName(\"Chorus\")"));
}

TEST_F(ClipGroups, AGroupWithoutAttributesIsZero) {
    EXPECT_THAT(CallsOfGroups("<clipGroup/>"),
                ElementsAre("IEditSession#1.CreateClipGroup(0) -> IEditClipGroup#2",
                            "IEditClipGroup#2.SetHue(0)", "IEditClipGroup#2.SetName(\"\")"));
}

TEST_F(ClipGroups, AGroupWithoutANameGetsAnEmptyOneAtItsEnd) {
    EXPECT_THAT(CallsOf(CallsOfGroups("<clipGroup><name>a</name></clipGroup>"
                                      "<clipGroup><item/></clipGroup>"),
                        "SetName"),
                ElementsAre("IEditClipGroup#2.SetName(\"a\")", "IEditClipGroup#3.SetName(\"\")"));
}

TEST_F(ClipGroups, AnItemWithoutAttributesAddsTwoZeros) {
    EXPECT_THAT(CallsOf(CallsOfGroups("<clipGroup><item/></clipGroup>"), "AddItem"),
                ElementsAre("IEditClipGroup#2.AddItem(0,0)"));
}

TEST_F(ClipGroups, WhatAnItemLacksIsZero) {
    EXPECT_THAT(CallsOf(CallsOfGroups("<clipGroup><item trackID='7'/><item clipID='12'/>"
                                      "<item trackID='x' clipID='y'/></clipGroup>"),
                        "AddItem"),
                ElementsAre("IEditClipGroup#2.AddItem(7,0)", "IEditClipGroup#2.AddItem(0,12)",
                            "IEditClipGroup#2.AddItem(0,0)"));
}

TEST_F(ClipGroups, AnItemMayNameWhatDoesNotExist) {
    const auto session = ReadInSession(
                             "<clipGroups><clipGroup><item trackID='1' clipID='2'/></clipGroup>"
                             "</clipGroups>")
                             .session;
    EXPECT_THAT(session.audioTracks, IsEmpty());
    EXPECT_THAT(session.clipGroups.at(0).items, ElementsAre(orvo::ClipGroupItem{1, 2}));
}

TEST_F(ClipGroups, AGroupThatTheHostDoesNotMakeIsDropped) {
    EXPECT_THAT(CallsOfGroups("<clipGroup id='3'><name>a</name><item/></clipGroup>",
                              Null("IEditSession.CreateClipGroup")),
                ElementsAre("IEditSession#1.CreateClipGroup(3) -> null"));
}

TEST_F(ClipGroups, NameAndItemsOfAGroupThatTheHostDoesNotMakeDoNotReachTheGroupBefore) {
    EXPECT_THAT(
        CallsOfGroups("<clipGroup id='3'><name>a</name></clipGroup>"
                      "<clipGroup id='4' hue='30'><name>b</name><item trackID='7'/></clipGroup>",
                      NullAtTheSecond("IEditSession.CreateClipGroup")),
        ElementsAre("IEditSession#1.CreateClipGroup(3) -> IEditClipGroup#2",
                    "IEditClipGroup#2.SetHue(0)", "IEditClipGroup#2.SetName(\"a\")",
                    "IEditSession#1.CreateClipGroup(4) -> null"));
}

TEST_F(ClipGroups, AreAMilestoneOfTheRead) {
    const auto without = ReadInSession("").progress.size();
    EXPECT_EQ(ReadInSession("<clipGroups/>").progress.size(), without + 1);
}

TEST_F(ClipGroups, AreWrittenWithNameAndItems) {
    EXPECT_EQ(
        WrittenElement("clipGroups", With({{3, "A & B", 30.5, {{7, 12}, {4294967294, 4294967295}}},
                                           {4294967295, "", 0, {}}})),
        "<clipGroups>\n"
        "  <clipGroup hue=\"30.5\" id=\"3\">\n"
        "    <name>A &amp; B</name>\n"
        "    <item clipID=\"12\" trackID=\"7\"/>\n"
        "    <item clipID=\"4294967295\" trackID=\"4294967294\"/>\n"
        "  </clipGroup>\n"
        "  <clipGroup hue=\"0\" id=\"4294967295\">\n"
        "    <name></name>\n"
        "  </clipGroup>\n"
        "</clipGroups>");
}

TEST_F(ClipGroups, ASessionWithoutGroupsWritesAnEmptyElement) {
    EXPECT_THAT(WrittenElement("clipGroups", Session{}), "<clipGroups/>");
}

TEST_F(ClipGroups, ANameThatTheHostDoesNotHaveIsWrittenEmpty) {
    EXPECT_THAT(
        WrittenElement("clipGroup", With({{3, "a", 0, {}}}), Null("IQueryClipGroup.GetName")),
        HasSubstr("<name></name>"));
}

TEST_F(ClipGroups, AGroupThatTheHostReportsAsNullIsSkipped) {
    EXPECT_THAT(
        WrittenElement("clipGroups", With({{3, "a", 0, {}}}), Null("IQuerySession.GetClipGroup")),
        "<clipGroups/>");
}

TEST_F(ClipGroups, SurviveAWriteAndARead) {
    const Session session =
        With({{0, "", -1.5, {}}, {4294967295, "<\u00e4>", 1e300, {{0, 0}, {0, 0}, {9, 1}}}});
    EXPECT_EQ(ThroughFile(session).clipGroups, session.clipGroups);
}

TEST_F(ClipGroups, ANameLosesItsOuterBlanksByAWriteAndARead) {
    EXPECT_EQ(ThroughFile(With({{1, " a b ", 0, {}}})).clipGroups.at(0).name, "a b");
}

}  // namespace
}  // namespace tses
