#include "platform/kelcore/Localizer.h"

#include <gtest/gtest.h>

namespace kelcore {
namespace {

class LocalizerTest : public testing::Test {
protected:
    ~LocalizerTest() override { Localizer::Clear(); }
};

TEST_F(LocalizerTest, WithoutTranslationTheDefaultAfterTheEqualsSignApplies) {
    EXPECT_EQ(Localizer::Lookup("$$$/Group/Name=A text"), u"A text");
    EXPECT_EQ(Localizer::Lookup("$$$/Group/Name=Gr\xC3\xBC\xC3\x9F"
                                "e"),
              u"Gr\u00FC\u00DFe");
    EXPECT_EQ(Localizer::Lookup("$$$/Group/Name="), u"");
}

TEST_F(LocalizerTest, OnlyTheFirstEqualsSignSeparates) {
    EXPECT_EQ(Localizer::Lookup("$$$/Group/Name=a=b"), u"a=b");
}

TEST_F(LocalizerTest, AKeyWithoutEqualsSignReturnsItself) {
    EXPECT_EQ(Localizer::Lookup("$$$/Group/Name"), u"$$$/Group/Name");
    EXPECT_EQ(Localizer::Lookup(""), u"");
}

TEST_F(LocalizerTest, ATranslationReplacesTheDefault) {
    Localizer::SetTranslation("$$$/Group/Name", u"Ein Text");
    EXPECT_EQ(Localizer::Lookup("$$$/Group/Name=A text"), u"Ein Text");
    EXPECT_EQ(Localizer::Lookup("$$$/Group/Name"), u"Ein Text");
    EXPECT_EQ(Localizer::Lookup("$$$/Group/Name2=Other"), u"Other");
}

TEST_F(LocalizerTest, ALaterTranslationReplacesTheEarlier) {
    Localizer::SetTranslation("$$$/Group/Name", u"one");
    Localizer::SetTranslation("$$$/Group/Name", u"two");
    EXPECT_EQ(Localizer::Lookup("$$$/Group/Name=A text"), u"two");
}

TEST_F(LocalizerTest, ClearRemovesTranslations) {
    Localizer::SetTranslation("$$$/Group/Name", u"one");
    Localizer::Clear();
    EXPECT_EQ(Localizer::Lookup("$$$/Group/Name=A text"), u"A text");
}

TEST_F(LocalizerTest, ReplacesPlaceholdersByArguments) {
    EXPECT_EQ(Localizer::Lookup("$$$/K=@1 before @0, @1 again", {u"zero", u"one"}),
              u"one before zero, one again");
    EXPECT_EQ(Localizer::Lookup("$$$/K=@9", {u"", u"", u"", u"", u"", u"", u"", u"", u"", u"nine"}),
              u"nine");
}

TEST_F(LocalizerTest, ArgumentsGoIntoTranslationsToo) {
    Localizer::SetTranslation("$$$/K", u"<@0>");
    EXPECT_EQ(Localizer::Lookup("$$$/K=@0", {u"x"}), u"<x>");
}

TEST_F(LocalizerTest, APlaceholderWithoutArgumentStays) {
    EXPECT_EQ(Localizer::Lookup("$$$/K=@0 @1 @ @a @", {u"x"}), u"x @1 @ @a @");
    EXPECT_EQ(Localizer::Lookup("$$$/K=@0", {}), u"@0");
}

TEST_F(LocalizerTest, PlaceholdersInsideAnArgumentStay) {
    EXPECT_EQ(Localizer::Lookup("$$$/K=@0 @1", {u"@1", u"@0"}), u"@1 @0");
    EXPECT_EQ(Localizer::Lookup("$$$/K=@00", {u"@"}), u"@0");
}

TEST_F(LocalizerTest, ADoubledMarkIsNotAnEscape) {
    EXPECT_EQ(Localizer::Lookup("$$$/K=@@0", {u"x"}), u"@x");
}

}  // namespace
}  // namespace kelcore
