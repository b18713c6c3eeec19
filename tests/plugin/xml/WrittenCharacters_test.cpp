#include <gmock/gmock.h>

#include "tests/plugin/xml/SessionXMLWriterFixture.h"

// The document's version of XML, and what becomes of the characters that it reserves or cannot
// carry.

namespace tses {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

class WrittenCharactersTest : public SessionXMLWriterTest {};

class XmlVersionOfText : public WrittenCharactersTest,
                         public testing::WithParamInterface<char16_t> {
protected:
    std::string DeclarationAfterText(std::u16string text) {
        SessionXMLWriter writer = NewWriter();
        writer.StartElement(names::name);
        EXPECT_TRUE(writer.Text(text));
        writer.EndElement();
        EXPECT_TRUE(writer.Save());
        return Saved().substr(kByteOrderMark.size(), 19);
    }
};

class TextThatSwitchesToXml11 : public XmlVersionOfText {};

TEST_P(TextThatSwitchesToXml11, MakesTheWholeDocumentXml11) {
    EXPECT_EQ(DeclarationAfterText(std::u16string(u"a") + GetParam() + u"b"),
              "<?xml version=\"1.1\"");
}

INSTANTIATE_TEST_SUITE_P(ControlCharacters, TextThatSwitchesToXml11,
                         testing::Values(u'\0', u'\t', u'\r', u'\n', u'\x01', u'\x1F', u'\x7F',
                                         u'\x80', u'\x84', u'\x86', u'\x9F'));

class TextThatStaysXml10 : public XmlVersionOfText {};

TEST_P(TextThatStaysXml10, LeavesTheVersionAsItIs) {
    EXPECT_EQ(DeclarationAfterText(std::u16string(u"a") + GetParam() + u"b"),
              "<?xml version=\"1.0\"");
}

INSTANTIATE_TEST_SUITE_P(PrintableCharactersAndNextLine, TextThatStaysXml10,
                         testing::Values(u' ', u'~', u'\x85', u'\xA0', u'\u2028'));

TEST_F(WrittenCharactersTest, ControlCharactersInAttributesAndCDataDoNotSwitchTheVersion) {
    SessionXMLWriter writer = NewWriter();
    writer.StartElement(names::name, {{names::key, u"a\tb"}});
    writer.Characters(u"a\nb");
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<?xml version=\"1.0\""));
}

TEST_F(WrittenCharactersTest,
       CharactersThatXmlCannotCarryAreReplacedEverywhereWithOneLineForEachText) {
    SessionXMLWriter writer = NewWriter();
    EXPECT_TRUE(writer.StartElement(names::name, {{names::key, u"a\x01\x02z"}}));
    EXPECT_TRUE(writer.Text(u"b\xFFFE"));
    EXPECT_TRUE(writer.Characters(u"c\x03"));
    EXPECT_THAT(traced, IsEmpty());
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("key=\"a\uFFFD\uFFFDz\">b\uFFFD<![CDATA[c\uFFFD]]>"));
    EXPECT_THAT(traced, testing::SizeIs(3));
}

TEST_F(WrittenCharactersTest, WhatAnXml11DocumentReservesIsAReferenceWhenTheVersionComesLast) {
    SessionXMLWriter writer = NewWriter();
    EXPECT_TRUE(writer.StartElement(names::name, {{names::key, u"a\u0085\u2028z"}}));
    EXPECT_TRUE(writer.Characters(u"b\u0080\x01"));
    EXPECT_TRUE(writer.Text(u"\t"));
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(),
                HasSubstr("<name key=\"a&#x85;&#x2028;z\"><![CDATA[b]]>&#x80;&#x1;\t</name>"));
    EXPECT_THAT(traced, IsEmpty());
}

TEST_F(WrittenCharactersTest, WhatAnXml11DocumentReservesIsAReferenceWhenTheVersionComesFirst) {
    SessionXMLWriter writer = NewWriter();
    EXPECT_TRUE(writer.StartElement(names::name));
    EXPECT_TRUE(writer.Text(u"\x7F"));
    EXPECT_TRUE(writer.EndElement());
    EXPECT_TRUE(writer.StartElement(names::name, {{names::key, u"a\u0085"}}));
    EXPECT_TRUE(writer.Text(u"\u2028b"));
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), AllOf(HasSubstr("<name>&#x7F;</name>"),
                               HasSubstr("<name key=\"a&#x85;\">&#x2028;b</name>")));
}

TEST_F(WrittenCharactersTest, WhatAnXml11DocumentReservesStaysAsItIsInXml10) {
    SessionXMLWriter writer = NewWriter();
    EXPECT_TRUE(writer.StartElement(names::name, {{names::key, u"a\u0080\u2028"}}));
    EXPECT_TRUE(writer.Text(u"\u0085"));
    EXPECT_TRUE(writer.Characters(u"\u009Fb"));
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<name key=\"a\u0080\u2028\">\u0085<![CDATA[\u009Fb]]></name>"));
}

TEST_F(WrittenCharactersTest, ACarriageReturnInCharactersStandsBetweenTwoSections) {
    SessionXMLWriter writer = NewWriter();
    EXPECT_TRUE(writer.StartElement(names::xmpMetadata));
    EXPECT_TRUE(writer.Characters(u"a\r\nb"));
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<![CDATA[a]]>&#xD;<![CDATA[\nb]]></xmpMetadata>"));
}

TEST_F(WrittenCharactersTest, ContentKeepsItsOrderAroundWhatIsPutInPlaceOnSaving) {
    SessionXMLWriter writer = NewWriter();
    EXPECT_TRUE(writer.StartElement(names::name));
    EXPECT_TRUE(writer.Text(u"1"));
    EXPECT_TRUE(writer.Text(u"2\u0001"));
    EXPECT_TRUE(writer.Characters(u"3\r"));
    EXPECT_TRUE(writer.Text(u"4"));
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<name>12&#x1;<![CDATA[3]]>&#xD;4</name>"));
}

TEST_F(WrittenCharactersTest, TheLastValueOfARootAttributeCountsWhateverTheFirstWas) {
    SessionXMLWriter writer = NewWriter();
    EXPECT_TRUE(writer.SetRootAttributes({{names::version, u"\u2028"}, {names::key, u"\u0085"}}));
    EXPECT_TRUE(writer.SetRootAttributes({{names::version, u"1.5"}}));
    EXPECT_TRUE(writer.SetRootAttributes({{names::key, u"\u0080"}}));
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<orvo key=\"\u0080\" version=\"1.5\"/>"));
}

TEST_F(WrittenCharactersTest, ASecondSaveFollowsAVersionThatChangedSince) {
    SessionXMLWriter writer = NewWriter();
    EXPECT_TRUE(writer.StartElement(names::name, {{names::key, u"a\u0080b"}}));
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<name key=\"a\u0080b\"/>"));
    EXPECT_TRUE(writer.Text(u"\t"));
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<name key=\"a&#x80;b\">\t</name>"));
}

}  // namespace
}  // namespace tses
