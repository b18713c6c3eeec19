#include "format/Rows.h"

#include <gtest/gtest.h>

namespace tses {
namespace {

constexpr Keyword<kelcore::uint32> kColours[] = {{u"red", 4}, {u"blue", 7}};
constexpr std::u16string_view kShapes[] = {u"round", u"square"};
constexpr kelcore::uint32 kBlue = 7;

struct Thing {
    kelcore::uint32 count = 3;
    std::optional<kelcore::int32> place{};
    std::optional<kelcore::uint32> known{};
    kelcore::uint32 colour = 4;
    bool on = false;
    std::u16string text{};
    std::u16string_view shape = u"";
};

std::optional<std::u16string> Written(const auto& row, const Thing& thing) {
    ValueText text;
    return row.Write(thing, text) ? std::optional(text.ToString()) : std::nullopt;
}

Thing ReadInto(const auto& row, std::u16string_view text) {
    Thing thing;
    row.Read(text, thing);
    return thing;
}

TEST(Rows, TextThatIsNotANumberLeavesTheDefault) {
    constexpr auto kRow = Number<&Thing::count>(u"count");
    EXPECT_EQ(ReadInto(kRow, u"12").count, 12u);
    EXPECT_EQ(ReadInto(kRow, u"12 ").count, 3u);
    EXPECT_EQ(Written(kRow, {.count = 12}), u"12");
}

TEST(Rows, AnOptionalMemberDistinguishesAnAbsentAttributeFromAnyValue) {
    constexpr auto kRow = Number<&Thing::place>(u"place");
    EXPECT_EQ(ReadInto(kRow, u"5").place, 5);
    EXPECT_EQ(ReadInto(kRow, u"no number").place, 0);
    EXPECT_EQ(Written(kRow, {}), std::nullopt);
    EXPECT_EQ(Written(kRow, {.place = 0}), u"0");
}

TEST(Rows, AnUnknownWordLeavesAnOptionalMemberAsItIs) {
    constexpr auto kRow = KnownWordOr<&Thing::known, kColours, kBlue>(u"known");
    EXPECT_EQ(ReadInto(kRow, u"red").known, 4u);
    EXPECT_EQ(ReadInto(kRow, u"green").known, std::nullopt);
    Thing thing{.known = 7};
    kRow.Read(u"green", thing);
    EXPECT_EQ(thing.known, 7u);
    EXPECT_EQ(Written(kRow, {.known = 1}), u"blue");
}

TEST(Rows, OnlyItsExactTextGivesTheFirstOfTwoWords) {
    constexpr auto kRow = FirstOfTwo<&Thing::colour, kColours>(u"colour");
    EXPECT_EQ(ReadInto(kRow, u"red").colour, 4u);
    EXPECT_EQ(ReadInto(kRow, u"Red").colour, 7u);
    EXPECT_EQ(Written(kRow, {.colour = 4}), u"red");
    EXPECT_EQ(Written(kRow, {.colour = 5}), u"blue");
}

TEST(Rows, AValueWithoutAWordIsNotWritten) {
    constexpr auto kRow = KnownWord<&Thing::colour, kColours>(u"colour");
    EXPECT_EQ(ReadInto(kRow, u"green").colour, 4u);
    EXPECT_EQ(Written(kRow, {.colour = 7}), u"blue");
    EXPECT_EQ(Written(kRow, {.colour = 5}), std::nullopt);
}

TEST(Rows, AValueWithoutAWordIsWrittenAsANumberIfTheRowSaysSo) {
    constexpr auto kRow = KnownWordElseNumber<&Thing::colour, kColours>(u"colour");
    EXPECT_EQ(ReadInto(kRow, u"7").colour, 4u);
    EXPECT_EQ(Written(kRow, {.colour = 5}), u"5");
}

TEST(Rows, AWordOrItsNumberIsReadAndANumberWithoutAWordIsWrittenAsTheLast) {
    constexpr auto kRow = WordOrNumber<&Thing::colour, kColours>(u"colour");
    EXPECT_EQ(ReadInto(kRow, u"blue").colour, 7u);
    EXPECT_EQ(ReadInto(kRow, u"9").colour, 9u);
    EXPECT_EQ(ReadInto(kRow, u"green").colour, 4u);
    EXPECT_EQ(Written(kRow, {.colour = 9}), u"blue");
}

TEST(Rows, AWordThatIsKeptAsTextMayBeAnyWord) {
    constexpr auto kRow = WordAsText<&Thing::shape, kShapes>(u"shape");
    EXPECT_EQ(ReadInto(kRow, u"oval").shape, u"oval");
    EXPECT_EQ(kRow.Describe().words.size(), 2u);
}

TEST(Rows, UnlessEmptyAndIfTrueDecideWhatIsWritten) {
    constexpr auto kText = UnlessEmpty(Text<&Thing::text>(u"text"));
    EXPECT_EQ(Written(kText, {}), std::nullopt);
    EXPECT_EQ(Written(kText, {.text = u"a"}), u"a");
    constexpr auto kOn = IfTrue(StrictBool<&Thing::on>(u"on"));
    EXPECT_EQ(Written(kOn, {}), std::nullopt);
    EXPECT_EQ(Written(kOn, {.on = true}), u"true");
    EXPECT_FALSE(ReadInto(kOn, u"1").on);
    EXPECT_TRUE(ReadInto(LenientBool<&Thing::on>(u"on"), u"1").on);
}

TEST(Rows, ADescriptionSaysWhatARowDoes) {
    const Attribute count = Number<&Thing::count>(u"count").Describe();
    EXPECT_EQ(count.name, u"count");
    EXPECT_EQ(count.kind, ValueKind::Unsigned);
    EXPECT_EQ(count.defaultText(), u"3");
    EXPECT_EQ(Number<&Thing::place>(u"place").Describe().defaultText(), std::nullopt);
    const Attribute dropped = Dropped(StrictBool<&Thing::on>(u"on")).Describe();
    EXPECT_TRUE(dropped.isDropped);
    EXPECT_EQ(dropped.written, tses::Written::Never);
    EXPECT_EQ(dropped.defaultText, nullptr);
    const Attribute writeOnly = WriteOnly(Text<&Thing::text>(u"text")).Describe();
    EXPECT_FALSE(writeOnly.isRead);
    EXPECT_EQ(writeOnly.written, tses::Written::Always);
}

}  // namespace
}  // namespace tses
