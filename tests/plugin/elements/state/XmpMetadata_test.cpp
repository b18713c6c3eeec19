#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::Session;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class XmpMetadata : public test::ElementFixture {
protected:
    static Session With(std::string packet) {
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
    EXPECT_EQ(WrittenElement("xmpMetadata", With("<x:xmpmeta>\u00e4 & b</x:xmpmeta>")),
              "<xmpMetadata><![CDATA[<x:xmpmeta>\u00e4 & b</x:xmpmeta>]]></xmpMetadata>");
}

TEST_F(XmpMetadata, ASessionWithoutAPacketWritesNoElement) {
    EXPECT_THAT(*Write(Session{}).file, Not(HasSubstr("xmpMetadata")));
    EXPECT_THAT(WrittenElement("xmpMetadata", With("packet"), Null("IQuerySession.GetXmpMetadata")),
                IsEmpty());
}

TEST_F(XmpMetadata, SurvivesAWriteAndAReadEvenWithTheEndOfACDataSectionInIt) {
    const Session session = With("<a>]]></a>\n\t]]>]]> \U0001F3B5 ]");
    EXPECT_EQ(ThroughFile(session).xmpMetadata, session.xmpMetadata);
}

TEST_F(XmpMetadata, ItsOuterBlanksAreLostByAWriteAndARead) {
    EXPECT_EQ(ThroughFile(With("\n<a/>\n")).xmpMetadata, "<a/>");
}

TEST_F(XmpMetadata, APacketOfOnlyBlanksIsWrittenAndReadAsEmpty) {
    EXPECT_THAT(*Write(With(" ")).file, HasSubstr("<xmpMetadata>"));
    EXPECT_EQ(ThroughFile(With(" ")).xmpMetadata, "");
}

}  // namespace
}  // namespace tses
