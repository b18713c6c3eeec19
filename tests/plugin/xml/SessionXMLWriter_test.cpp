#include "plugin/xml/SessionXMLWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <thread>

#include "format/Limits.h"
#include "format/Names.h"
#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Trace.h"
#include "plugin/xml/SessionXMLReader.h"
#include "plugin/xml/XercesPlatform.h"
#include "tests/support/DocumentUnderTest.h"
#include "tests/support/TemporaryFolder.h"

namespace tses {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

class SessionXMLWriterTest : public testing::Test {
protected:
    SessionXMLWriterTest() {
        StartXerces();
        kelcore::trace::SetOutput(
            [this](std::string_view, std::string_view text) { traced.emplace_back(text); });
    }
    ~SessionXMLWriterTest() override {
        kelcore::trace::SetOutput({});
        StopXerces();
    }

    std::filesystem::path Target() const { return folder / "session.orvo"; }
    std::u16string TargetPath() const { return kelcore::PathFromBytes(Target().string()); }
    std::string Saved() const { return test::ReadFile(Target()); }

    test::TemporaryFolder folder;
    std::vector<std::string> traced;
};

TEST_F(SessionXMLWriterTest, AnEmptyDocumentHasAByteOrderMarkADeclarationAndTheRoot) {
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    EXPECT_TRUE(writer.Save());
    EXPECT_EQ(Saved(),
              std::string(kByteOrderMark) +
                  "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\" ?>\n<orvo/>\n");
}

TEST_F(SessionXMLWriterTest, ElementsAreIndentedAndNested) {
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    EXPECT_TRUE(writer.StartElement(names::session));
    EXPECT_TRUE(writer.StartElement(names::tracks));
    EXPECT_TRUE(writer.EndElement());
    EXPECT_TRUE(writer.EndElement());
    EXPECT_TRUE(writer.StartElement(names::files));
    EXPECT_TRUE(writer.EndElement());
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(
        Saved(),
        HasSubstr("<orvo>\n\n  <session>\n    <tracks/>\n  </session>\n\n  <files/>\n\n</orvo>\n"));
}

TEST_F(SessionXMLWriterTest, AttributesAreWrittenInTheOrderOfTheirNames) {
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    EXPECT_TRUE(
        writer.StartElement(names::session, {{u"zeta", u"1"}, {u"Alpha", u"2"}, {u"beta", u"3"}}));
    EXPECT_TRUE(writer.EndElement());
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<session Alpha=\"2\" beta=\"3\" zeta=\"1\"/>"));
}

TEST_F(SessionXMLWriterTest, RootAttributesGoToTheDocumentElementWhateverIsCurrent) {
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    EXPECT_TRUE(writer.StartElement(names::session));
    EXPECT_TRUE(writer.SetRootAttributes({{names::version, u"1.5"}}));
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<orvo version=\"1.5\">"));
}

TEST_F(SessionXMLWriterTest, TextIsEscapedAndCharactersAreACDataSection) {
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    writer.StartElement(names::name);
    EXPECT_TRUE(writer.Text(u"a<b&c"));
    writer.EndElement();
    writer.StartElement(names::xmpMetadata);
    EXPECT_TRUE(writer.Characters(u"<x:xmpmeta/>"));
    writer.EndElement();
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), AllOf(HasSubstr("<name>a&lt;b&amp;c</name>"),
                               HasSubstr("<xmpMetadata><![CDATA[<x:xmpmeta/>]]></xmpMetadata>")));
}

TEST_F(SessionXMLWriterTest, TheEndOfASectionInCharactersIsSplitBetweenTwoSections) {
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    writer.StartElement(names::xmpMetadata);
    EXPECT_TRUE(writer.Characters(u"a]]>b]]]>]]>"));
    writer.EndElement();
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<xmpMetadata><![CDATA[a]]]><![CDATA[]>b]]]]><![CDATA[]>]]]>"
                                   "<![CDATA[]>]]></xmpMetadata>"));
}

/// Keeps the text without its indentation.
class TextPieces final : public SAXContentHandler {
public:
    std::u16string text;
    int pieces = 0;
    void StartDocument() override {}
    void EndDocument() override {}
    void StartElementEvent(std::u16string_view, std::u16string_view, std::u16string_view,
                           const TagAttributes&) override {}
    void EndElementEvent(std::u16string_view, std::u16string_view, std::u16string_view) override {}
    void CharactersEvent(std::u16string_view piece) override {
        if (piece.find_first_not_of(u"\n ") != std::u16string_view::npos) {
            text += piece;
            ++pieces;
        }
    }
};

class LongCharactersTest : public SessionXMLWriterTest,
                           public testing::WithParamInterface<std::u16string_view> {};

TEST_P(LongCharactersTest, AreSplitWhereAReaderTakesThemWhateverStandsThere) {
    // Three bytes each in the file, so that the sections are as long as they may be.
    std::u16string text(limits::kSectionBytes / 3 - 17, u'\u4E00');
    for (int i = 0; i < 20; ++i) {
        text += GetParam();
    }
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    ASSERT_TRUE(writer.Characters(text));
    ASSERT_TRUE(writer.Save());

    TextPieces read;
    EXPECT_TRUE(SessionXMLReader(&read, nullptr).Parse(TargetPath()));
    EXPECT_TRUE(read.text == text);
    EXPECT_EQ(read.pieces, 2);
}

INSTANTIATE_TEST_SUITE_P(BelowAPairWithinAPairAndAbove, LongCharactersTest,
                         testing::Values(u"\u4E00", u"\U0001F3B5", u"\uFF01"));

TEST_F(SessionXMLWriterTest, AttributesAsLongAsAReaderTakesAreSavedAndRead) {
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    const std::u16string fits(limits::kTagBytes - 1000, u'x');
    EXPECT_TRUE(writer.StartElement(names::file, {{names::name, fits}}));
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(traced, IsEmpty());
    SAXContentHandler* const nobody = nullptr;
    EXPECT_TRUE(SessionXMLReader(nobody, nullptr).Parse(TargetPath()));
}

TEST_F(SessionXMLWriterTest, AttributesCountAsTheyMayHaveToBeWritten) {
    constexpr std::size_t kElementAndName = 128;
    const std::pair<std::u16string, std::size_t> units[] = {
        {u"x", 1},      {u"&", 6},      {u"<", 6},      {u">", 6},
        {u"\"", 6},     {u"\n", 6},     {u"\x7F", 6},   {u"\u0085", 6},
        {u"\u2028", 8}, {u"\u00E9", 3}, {u"\u4E00", 3}, {u"\U0001F3B5", 6}};
    for (const auto& [unit, length] : units) {
        std::u16string fits;
        for (int i = 0; i < 1000; ++i) {
            fits += unit;
        }
        fits.append(limits::kTagBytes - kElementAndName - 1000 * length, u'x');
        SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
        EXPECT_TRUE(writer.StartElement(names::file, {{names::name, fits}})) << length;
        EXPECT_FALSE(writer.StartElement(names::file, {{names::name, fits + u"x"}})) << length;
    }
}

TEST_F(SessionXMLWriterTest, AttributesLongerThanAReaderTakesFailTheSaveWithOneTraceLine) {
    const std::u16string half(limits::kTagBytes / 2, u'x');
    const std::u16string tooLong(limits::kTagBytes, u'x');
    const std::u16string tooLongWhenEscaped(limits::kTagBytes / 4, u'&');
    folder.Write("session.orvo", "old");
    for (const AttributeMap& attributes :
         {AttributeMap{{names::name, tooLong}}, AttributeMap{{names::name, tooLongWhenEscaped}},
          AttributeMap{{names::id, half}, {names::name, half}}}) {
        traced.clear();
        SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
        EXPECT_FALSE(writer.StartElement(names::file, attributes));
        EXPECT_FALSE(writer.StartElement(names::file));
        EXPECT_FALSE(writer.Save());
        EXPECT_THAT(traced, ElementsAre("the attributes of an element are longer than 1 MiB"));
    }
    traced.clear();
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    EXPECT_FALSE(writer.SetRootAttributes({{names::name, tooLong}}));
    EXPECT_FALSE(writer.Save());
    EXPECT_THAT(traced, ElementsAre("the attributes of an element are longer than 1 MiB"));
    EXPECT_EQ(Saved(), "old");
}

TEST_F(SessionXMLWriterTest, EmptyCharactersAreAnEmptySection) {
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    writer.StartElement(names::xmpMetadata);
    EXPECT_TRUE(writer.Characters(u""));
    writer.EndElement();
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<xmpMetadata><![CDATA[]]></xmpMetadata>"));
}

TEST_F(SessionXMLWriterTest, EndElementAtTheDocumentElementFailsAndChangesNothing) {
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    EXPECT_FALSE(writer.EndElement());
    EXPECT_TRUE(writer.StartElement(names::session));
    EXPECT_TRUE(writer.EndElement());
    EXPECT_FALSE(writer.EndElement());
    EXPECT_TRUE(writer.StartElement(names::files));
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<orvo>\n\n  <session/>\n\n  <files/>\n\n</orvo>"));
}

class XmlVersionOfText : public SessionXMLWriterTest, public testing::WithParamInterface<char16_t> {
protected:
    std::string DeclarationAfterText(std::u16string text) {
        SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
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
                         testing::Values(u'\t', u'\r', u'\n', u'\x01', u'\x1F', u'\x7F', u'\x80',
                                         u'\x84', u'\x86', u'\x9F'));

class TextThatStaysXml10 : public XmlVersionOfText {};
TEST_P(TextThatStaysXml10, LeavesTheVersionAsItIs) {
    EXPECT_EQ(DeclarationAfterText(std::u16string(u"a") + GetParam() + u"b"),
              "<?xml version=\"1.0\"");
}
INSTANTIATE_TEST_SUITE_P(PrintableCharactersAndNextLine, TextThatStaysXml10,
                         testing::Values(u' ', u'~', u'\x85', u'\xA0', u'\u2028'));

TEST_F(SessionXMLWriterTest, ControlCharactersInAttributesAndCDataDoNotSwitchTheVersion) {
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    writer.StartElement(names::name, {{names::key, u"a\tb"}});
    writer.Characters(u"a\nb");
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<?xml version=\"1.0\""));
}

TEST_F(SessionXMLWriterTest, NothingIsOnTheDiskBeforeSave) {
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    writer.StartElement(names::session);
    EXPECT_FALSE(std::filesystem::exists(Target()));
}

TEST_F(SessionXMLWriterTest, SaveReplacesAnExistingFile) {
    folder.Write("session.orvo", std::string(100'000, 'x'));
    EXPECT_TRUE(SessionXMLWriter(TargetPath(), {}, test::DocumentUnderTest()).Save());
    EXPECT_THAT(Saved(), Not(HasSubstr("x</")));
    EXPECT_LT(Saved().size(), 200u);
}

TEST_F(SessionXMLWriterTest, AFileThatCannotBeCreatedFailsTheSaveAndIsTracedWithItsPath) {
    const auto inNoFolder = folder / "missing" / "session.orvo";
    EXPECT_FALSE(
        SessionXMLWriter(kelcore::PathFromBytes(inNoFolder.string()), {}, test::DocumentUnderTest())
            .Save());
    EXPECT_THAT(traced, ElementsAre(HasSubstr(inNoFolder.string())));
}

TEST_F(SessionXMLWriterTest, AFolderInThePlaceOfTheFileFailsTheSave) {
    EXPECT_FALSE(SessionXMLWriter(kelcore::PathFromBytes(folder.Path().string()), {},
                                  test::DocumentUnderTest())
                     .Save());
    EXPECT_THAT(traced, ElementsAre(HasSubstr(folder.Path().string())));
}

TEST_F(SessionXMLWriterTest, WithoutTheXmlLibraryEveryOperationFailsAndNoFileAppears) {
    StopXerces();
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    EXPECT_FALSE(writer.SetRootAttributes({{names::version, u"1.5"}}));
    EXPECT_FALSE(writer.StartElement(names::session));
    EXPECT_FALSE(writer.Text(u"x"));
    EXPECT_FALSE(writer.Characters(u"x"));
    EXPECT_FALSE(writer.EndElement());
    EXPECT_FALSE(writer.Save());
    EXPECT_FALSE(std::filesystem::exists(Target()));
    EXPECT_THAT(traced, ElementsAre("cannot write: the XML library did not start"));
    StartXerces();
}

TEST_F(SessionXMLWriterTest, TheOperationWithTheFaultFailsWithoutEffect) {
    SessionXMLWriter writer(TargetPath(), WriterFault{1}, test::DocumentUnderTest());
    EXPECT_TRUE(writer.StartElement(names::session));
    EXPECT_FALSE(writer.StartElement(names::tracks));
    EXPECT_TRUE(writer.EndElement());
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<orvo>\n\n  <session/>\n\n</orvo>"));
}

TEST_F(SessionXMLWriterTest, ASerialiserThatReportsFailureLeavesTheOldFile) {
    folder.Write("session.orvo", "the old session");
    SessionXMLWriter writer(TargetPath(),
                            {WriterFault::kNever, WriterFault::Serialiser::ReportsFailure},
                            test::DocumentUnderTest());
    EXPECT_FALSE(writer.Save());
    EXPECT_EQ(Saved(), "the old session");
    EXPECT_THAT(traced, ElementsAre("cannot write: the XML library could not put the session into "
                                    "XML"));
}

TEST_F(SessionXMLWriterTest, ASerialiserThatClaimsSuccessWithoutBytesLeavesAnEmptyFileAndFails) {
    SessionXMLWriter writer(TargetPath(),
                            {WriterFault::kNever, WriterFault::Serialiser::WritesNothing},
                            test::DocumentUnderTest());
    EXPECT_FALSE(writer.Save());
    EXPECT_TRUE(std::filesystem::exists(Target()));
    EXPECT_EQ(Saved(), "");
    EXPECT_THAT(traced,
                ElementsAre("the XML library gave an empty document: the file is empty now"));
}

TEST_F(SessionXMLWriterTest,
       CharactersThatXmlCannotCarryAreReplacedEverywhereWithOneLineForEachText) {
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    EXPECT_TRUE(writer.StartElement(names::name, {{names::key, u"a\x01\x02z"}}));
    EXPECT_TRUE(writer.Text(u"b\xFFFE"));
    EXPECT_TRUE(writer.Characters(u"c\x03"));
    EXPECT_THAT(traced, IsEmpty());
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("key=\"a\uFFFD\uFFFDz\">b\uFFFD<![CDATA[c\uFFFD]]>"));
    EXPECT_THAT(traced, testing::SizeIs(3));
}

TEST_F(SessionXMLWriterTest, WhatAnXml11DocumentReservesIsAReferenceWhenTheVersionComesLast) {
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    EXPECT_TRUE(writer.StartElement(names::name, {{names::key, u"a\u0085\u2028z"}}));
    EXPECT_TRUE(writer.Characters(u"b\u0080\x01"));
    EXPECT_TRUE(writer.Text(u"\t"));
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(),
                HasSubstr("<name key=\"a&#x85;&#x2028;z\"><![CDATA[b]]>&#x80;&#x1;\t</name>"));
    EXPECT_THAT(traced, IsEmpty());
}

TEST_F(SessionXMLWriterTest, WhatAnXml11DocumentReservesIsAReferenceWhenTheVersionComesFirst) {
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    EXPECT_TRUE(writer.StartElement(names::name));
    EXPECT_TRUE(writer.Text(u"\x7F"));
    EXPECT_TRUE(writer.EndElement());
    EXPECT_TRUE(writer.StartElement(names::name, {{names::key, u"a\u0085"}}));
    EXPECT_TRUE(writer.Text(u"\u2028b"));
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), AllOf(HasSubstr("<name>&#x7F;</name>"),
                               HasSubstr("<name key=\"a&#x85;\">&#x2028;b</name>")));
}

TEST_F(SessionXMLWriterTest, WhatAnXml11DocumentReservesStaysAsItIsInXml10) {
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    EXPECT_TRUE(writer.StartElement(names::name, {{names::key, u"a\u0080\u2028"}}));
    EXPECT_TRUE(writer.Text(u"\u0085"));
    EXPECT_TRUE(writer.Characters(u"\u009Fb"));
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<name key=\"a\u0080\u2028\">\u0085<![CDATA[\u009Fb]]></name>"));
}

TEST_F(SessionXMLWriterTest, ACarriageReturnInCharactersStandsBetweenTwoSections) {
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    EXPECT_TRUE(writer.StartElement(names::xmpMetadata));
    EXPECT_TRUE(writer.Characters(u"a\r\nb"));
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<![CDATA[a]]>&#xD;<![CDATA[\nb]]></xmpMetadata>"));
}

TEST_F(SessionXMLWriterTest, ContentKeepsItsOrderAroundWhatIsPutInPlaceOnSaving) {
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    EXPECT_TRUE(writer.StartElement(names::name));
    EXPECT_TRUE(writer.Text(u"1"));
    EXPECT_TRUE(writer.Text(u"2\u0001"));
    EXPECT_TRUE(writer.Characters(u"3\r"));
    EXPECT_TRUE(writer.Text(u"4"));
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<name>12&#x1;<![CDATA[3]]>&#xD;4</name>"));
}

TEST_F(SessionXMLWriterTest, TheLastValueOfARootAttributeCountsWhateverTheFirstWas) {
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    EXPECT_TRUE(writer.SetRootAttributes({{names::version, u"\u2028"}, {names::key, u"\u0085"}}));
    EXPECT_TRUE(writer.SetRootAttributes({{names::version, u"1.5"}}));
    EXPECT_TRUE(writer.SetRootAttributes({{names::key, u"\u0080"}}));
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<orvo key=\"\u0080\" version=\"1.5\"/>"));
}

TEST_F(SessionXMLWriterTest, ASecondSaveFollowsAVersionThatChangedSince) {
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    EXPECT_TRUE(writer.StartElement(names::name, {{names::key, u"a\u0080b"}}));
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<name key=\"a\u0080b\"/>"));
    EXPECT_TRUE(writer.Text(u"\t"));
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<name key=\"a&#x80;b\">\t</name>"));
}

TEST_F(SessionXMLWriterTest, AttributesThatAreTooLongOnlyAsReferencesFail) {
    const std::u16string tooLongInXml11(limits::kTagBytes / 6, u'\u2028');
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    EXPECT_FALSE(writer.StartElement(names::file, {{names::name, tooLongInXml11}}));
    EXPECT_EQ(traced.size(), 1u);
}

// As many as fit by the real length of each in the file, which is less than its greatest length.
TEST_F(SessionXMLWriterTest, AttributesAreMeasuredByTheLengthThatIsWritten) {
    constexpr std::size_t kRoom = limits::kTagBytes - 200;
    const std::pair<char16_t, std::size_t> lengths[] = {
        {u'a', 1}, {u'\t', 6}, {u'\u007F', 6}, {u'&', 6},      {u'<', 6},
        {u'>', 6}, {u'"', 6},  {u'\u0085', 6}, {u'\u4E00', 3}, {u'\u2028', 8}};
    for (const auto& [unit, length] : lengths) {
        SCOPED_TRACE(static_cast<int>(unit));
        SessionXMLWriter fitting(TargetPath(), {}, test::DocumentUnderTest());
        const std::u16string fits(kRoom / length, unit);
        EXPECT_TRUE(fitting.StartElement(names::file, {{names::name, fits}}));
        SessionXMLWriter refusing(TargetPath(), {}, test::DocumentUnderTest());
        const std::u16string tooLong(limits::kTagBytes / length, unit);
        EXPECT_FALSE(refusing.StartElement(names::file, {{names::name, tooLong}}));
    }
}

TEST_F(SessionXMLWriterTest, OperationsOfOneWriterRunOneAfterTheOther) {
    constexpr int kTextsOfEach = 20'000;
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    const auto append = [&] {
        for (int i = 0; i < kTextsOfEach; ++i) {
            EXPECT_TRUE(writer.Text(u"a"));
        }
    };
    std::thread other(append);
    append();
    other.join();
    EXPECT_TRUE(writer.Save());
    const std::string saved = Saved();
    const std::size_t begin = saved.find("<orvo>") + std::size("<orvo>") - 1;
    EXPECT_EQ(saved.substr(begin), std::string(2 * kTextsOfEach, 'a') + "</orvo>\n");
}

TEST_F(SessionXMLWriterTest, ALargeDocumentIsWrittenWhole) {
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    for (int i = 0; i < 20'000; ++i) {
        ASSERT_TRUE(writer.StartElement(names::file, {{names::id, u"1"}}));
        ASSERT_TRUE(writer.EndElement());
    }
    ASSERT_TRUE(writer.Save());
    const std::string saved = Saved();
    std::size_t count = 0;
    for (std::size_t at = saved.find("<file "); at != std::string::npos;
         at = saved.find("<file ", at + 1)) {
        ++count;
    }
    EXPECT_EQ(count, 20'000u);
    EXPECT_TRUE(saved.ends_with("</orvo>\n"));
}

TEST_F(SessionXMLWriterTest, ListsWithMoreEntriesThanAFileHasRoomForFailTheSaveFromThereOn) {
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    EXPECT_TRUE(writer.TakesItems(limits::kItems - 1));
    EXPECT_TRUE(writer.TakesItems(1));
    EXPECT_TRUE(writer.StartElement(names::session));
    EXPECT_THAT(traced, IsEmpty());
    EXPECT_FALSE(writer.TakesItems(1));
    EXPECT_FALSE(writer.TakesItems(4294967295));
    EXPECT_THAT(traced, ElementsAre("the lists of the session have more than 16777216 entries"));
    EXPECT_FALSE(writer.StartElement(names::session));
    EXPECT_FALSE(writer.EndElement());
    EXPECT_FALSE(writer.Save());
    EXPECT_FALSE(std::filesystem::exists(Target()));
}

TEST_F(SessionXMLWriterTest, AChannelMapThatNoMediaFileHasFailsTheSave) {
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    EXPECT_TRUE(writer.TakesChannels(1024));
    EXPECT_FALSE(writer.TakesChannels(1025));
    EXPECT_THAT(traced, ElementsAre("a channel map has more than 1024 channels"));
    EXPECT_FALSE(writer.Save());
}

TEST_F(SessionXMLWriterTest, ABlockThatLeavesNoRoomInTheFileFailsTheSave) {
    SessionXMLWriter writer(TargetPath(), {}, test::DocumentUnderTest());
    EXPECT_TRUE(writer.TakesBlock(1073741824));
    EXPECT_FALSE(writer.TakesBlock(1073741825));
    EXPECT_THAT(traced,
                ElementsAre("a block of events or of an effect's state is larger than 1 GiB"));
    EXPECT_FALSE(writer.Save());
}

}  // namespace
}  // namespace tses
