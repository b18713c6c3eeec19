#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using refhost::model::Session;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class XmpMetadata : public test::ElementFixture {
protected:
    static Session With(std::u16string packet) {
        Session session;
        session.xmpMetadata = std::move(packet);
        return session;
    }
};

TEST_F(XmpMetadata, ThePacketReachesTheHostWithoutItsOuterBlanks) {
    EXPECT_THAT(
        CallsIn("<xmpMetadata>\r\n <![CDATA[ <x:xmpmeta> a </x:xmpmeta> ]]> \n</xmpMetadata>"),
        ElementsAre("IEditSession#1.SetXmpMetadata(\"<x:xmpmeta> a </x:xmpmeta>\")"));
}

TEST_F(XmpMetadata, AnEmptyElementSetsAnEmptyPacket) {
    EXPECT_THAT(CallsIn("<xmpMetadata/>"), ElementsAre("IEditSession#1.SetXmpMetadata(\"\")"));
}

TEST_F(XmpMetadata, IsAMilestoneOfTheRead) {
    const auto without = ReadInSession("").progress.size();
    EXPECT_EQ(ReadInSession("<xmpMetadata/>").progress.size(), without + 1);
}

TEST_F(XmpMetadata, IsWrittenAsACDataSection) {
    EXPECT_EQ(WrittenElement("xmpMetadata", With(u"<x:xmpmeta>\u00e4 & b</x:xmpmeta>")),
              "<xmpMetadata><![CDATA[<x:xmpmeta>\u00e4 & b</x:xmpmeta>]]></xmpMetadata>");
}

TEST_F(XmpMetadata, ASessionWithoutAPacketWritesNoElement) {
    EXPECT_THAT(*Write(Session{}).file, Not(HasSubstr("xmpMetadata")));
    EXPECT_THAT(
        WrittenElement("xmpMetadata", With(u"packet"), Null("IQuerySession.GetXmpMetadata")),
        IsEmpty());
}

TEST_F(XmpMetadata, SurvivesAWriteAndAReadAlsoWithTheEndOfACDataSectionInIt) {
    const Session session = With(u"<a>]]></a>\n\t]]>]]> \U0001F3B5 ]");
    EXPECT_EQ(ThroughFile(session).xmpMetadata, session.xmpMetadata);
}

TEST_F(XmpMetadata, ItsOuterBlanksAreLostByAWriteAndARead) {
    EXPECT_EQ(ThroughFile(With(u"\n<a/>\n")).xmpMetadata, u"<a/>");
}

TEST_F(XmpMetadata, APacketOfBlanksAloneIsWrittenAndReadAsNone) {
    EXPECT_THAT(*Write(With(u" ")).file, HasSubstr("<xmpMetadata>"));
    EXPECT_EQ(ThroughFile(With(u" ")).xmpMetadata, u"");
}

}  // namespace
}  // namespace tses
