#include <gmock/gmock.h>

#include <chrono>
#include <thread>

#include "tests/plugin/xml/SessionXMLWriterFixture.h"

namespace tses {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

TEST_F(SessionXMLWriterTest, AnEmptyDocumentHasAByteOrderMarkADeclarationAndTheRoot) {
    SessionXMLWriter writer = NewWriter();
    EXPECT_TRUE(writer.Save());
    EXPECT_EQ(Saved(),
              std::string(kByteOrderMark) +
                  "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\" ?>\n<orvo/>\n");
}

TEST_F(SessionXMLWriterTest, ElementsAreIndentedAndNested) {
    SessionXMLWriter writer = NewWriter();
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
    SessionXMLWriter writer = NewWriter();
    EXPECT_TRUE(
        writer.StartElement(names::session, {{u"zeta", u"1"}, {u"Alpha", u"2"}, {u"beta", u"3"}}));
    EXPECT_TRUE(writer.EndElement());
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<session Alpha=\"2\" beta=\"3\" zeta=\"1\"/>"));
}

TEST_F(SessionXMLWriterTest, RootAttributesGoToTheDocumentElementWhateverIsCurrent) {
    SessionXMLWriter writer = NewWriter();
    EXPECT_TRUE(writer.StartElement(names::session));
    EXPECT_TRUE(writer.SetRootAttributes({{names::version, u"1.5"}}));
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<orvo version=\"1.5\">"));
}

TEST_F(SessionXMLWriterTest, TextIsEscapedAndCharactersAreACDataSection) {
    SessionXMLWriter writer = NewWriter();
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
    SessionXMLWriter writer = NewWriter();
    writer.StartElement(names::xmpMetadata);
    EXPECT_TRUE(writer.Characters(u"a]]>b]]]>]]>"));
    writer.EndElement();
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<xmpMetadata><![CDATA[a]]]><![CDATA[]>b]]]]><![CDATA[]>]]]>"
                                   "<![CDATA[]>]]></xmpMetadata>"));
}

TEST_F(SessionXMLWriterTest, EmptyCharactersAreAnEmptySection) {
    SessionXMLWriter writer = NewWriter();
    writer.StartElement(names::xmpMetadata);
    EXPECT_TRUE(writer.Characters(u""));
    writer.EndElement();
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<xmpMetadata><![CDATA[]]></xmpMetadata>"));
}

TEST_F(SessionXMLWriterTest, EndElementAtTheDocumentElementFailsAndChangesNothing) {
    SessionXMLWriter writer = NewWriter();
    EXPECT_FALSE(writer.EndElement());
    EXPECT_TRUE(writer.StartElement(names::session));
    EXPECT_TRUE(writer.EndElement());
    EXPECT_FALSE(writer.EndElement());
    EXPECT_TRUE(writer.StartElement(names::files));
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<orvo>\n\n  <session/>\n\n  <files/>\n\n</orvo>"));
}

TEST_F(SessionXMLWriterTest, NothingIsOnTheDiskBeforeSave) {
    SessionXMLWriter writer = NewWriter();
    writer.StartElement(names::session);
    EXPECT_FALSE(std::filesystem::exists(Target()));
}

TEST_F(SessionXMLWriterTest, SaveReplacesAnExistingFile) {
    folder.Write("session.orvo", std::string(100'000, 'x'));
    EXPECT_TRUE(NewWriter().Save());
    EXPECT_THAT(Saved(), Not(HasSubstr("x</")));
    EXPECT_LT(Saved().size(), 200u);
}

TEST_F(SessionXMLWriterTest, AFileThatCannotBeCreatedFailsTheSaveAndIsTracedWithItsPath) {
    const auto inNoFolder = folder / "missing" / "session.orvo";
    EXPECT_FALSE(WriterTo(inNoFolder).Save());
    EXPECT_THAT(traced, ElementsAre(HasSubstr(inNoFolder.string())));
}

TEST_F(SessionXMLWriterTest, AFolderInThePlaceOfTheFileFailsTheSave) {
    EXPECT_FALSE(WriterTo(folder.Path()).Save());
    EXPECT_THAT(traced, ElementsAre(HasSubstr(folder.Path().string())));
}

TEST_F(SessionXMLWriterTest, WithoutTheXmlLibraryEveryOperationFailsAndNoFileAppears) {
    StopXerces();
    SessionXMLWriter writer = NewWriter();
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
    SessionXMLWriter writer = NewWriter(WriterFault{1});
    EXPECT_TRUE(writer.StartElement(names::session));
    EXPECT_FALSE(writer.StartElement(names::tracks));
    EXPECT_TRUE(writer.EndElement());
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<orvo>\n\n  <session/>\n\n</orvo>"));
}

TEST_F(SessionXMLWriterTest, ASerialiserThatReportsFailureLeavesTheOldFile) {
    folder.Write("session.orvo", "the old session");
    SessionXMLWriter writer =
        NewWriter({WriterFault::kNever, WriterFault::Serialiser::ReportsFailure});
    EXPECT_FALSE(writer.Save());
    EXPECT_EQ(Saved(), "the old session");
    EXPECT_THAT(traced, ElementsAre("cannot write: the session could not be put into XML"));
}

TEST_F(SessionXMLWriterTest, ASerialiserThatClaimsSuccessWithoutBytesLeavesAnEmptyFileAndFails) {
    SessionXMLWriter writer =
        NewWriter({WriterFault::kNever, WriterFault::Serialiser::WritesNothing});
    EXPECT_FALSE(writer.Save());
    EXPECT_TRUE(std::filesystem::exists(Target()));
    EXPECT_EQ(Saved(), "");
    EXPECT_THAT(traced, ElementsAre("the document came out empty: the file is empty now"));
}

TEST_F(SessionXMLWriterTest, OperationsOfOneWriterRunOneAfterTheOther) {
    constexpr std::size_t kTextsOfEach = 20'000;
    SessionXMLWriter writer = NewWriter();
    const auto append = [&] {
        for (std::size_t i = 0; i < kTextsOfEach; ++i) {
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

TEST_F(SessionXMLWriterTest, WhoHoldsTheLockMayWriteAndOthersWait) {
    SessionXMLWriter writer = NewWriter();
    std::thread other;
    {
        const auto held = writer.Hold();
        EXPECT_TRUE(writer.StartElement(names::session));
        other = std::thread([&] { EXPECT_TRUE(writer.Text(u"late")); });
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        EXPECT_TRUE(writer.Text(u"early "));
    }
    other.join();
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(Saved(), HasSubstr("<session>early late</session>"));
}

TEST_F(SessionXMLWriterTest, ALargeDocumentIsWrittenWhole) {
    SessionXMLWriter writer = NewWriter();
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

}  // namespace
}  // namespace tses
