#include "toolkit/DocumentScan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <ctime>
#include <xercesc/util/PlatformUtils.hpp>

#include "platform/kelcore/Strings.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/toolkit/PlacePrinting.h"
#include "toolkit/FileContent.h"
#include "toolkit/scan/ContentScan.h"

using toolkit::DocumentScan;
using toolkit::NotCarried;
using toolkit::Place;
using toolkit::ScanDocument;

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class DocumentScanTest : public testing::Test {
protected:
    /// Also holds the scan beside a read to the same result, if the document can be read.
    DocumentScan Scan(std::string_view document, std::size_t limit = toolkit::kNotCarriedLimit) {
        const auto path = folder_.Write("a.orvo", document);
        DocumentScan scan = ScanDocument(path, {}, limit);
        if (!scan.problem) {
            const DocumentScan beside =
                toolkit::ScanFileBesideRead(toolkit::LibraryUse(), path, {}, limit);
            EXPECT_FALSE(beside.problem);
            EXPECT_EQ(beside.notCarriedCount, scan.notCarriedCount);
            EXPECT_EQ(beside.notCarried, scan.notCarried);
            EXPECT_EQ(beside.endTheRead, scan.endTheRead);
        }
        return scan;
    }

    /// The descriptions of what a session with this content loses.
    std::vector<std::string> Losses(std::string_view document) {
        std::vector<std::string> losses;
        const DocumentScan scan = Scan(document);
        EXPECT_FALSE(scan.problem) << scan.problem->what;
        for (const NotCarried& loss : scan.notCarried) {
            losses.push_back(std::to_string(loss.place.line) + ":" +
                             std::to_string(loss.place.column) + ": " + loss.what);
        }
        return losses;
    }

    test::TemporaryFolder folder_;
};

// What is not a session file

TEST_F(DocumentScanTest, AMissingFileIsNamedAsSuch) {
    const DocumentScan scan = ScanDocument(folder_ / "none.orvo");
    ASSERT_TRUE(scan.problem);
    EXPECT_EQ(scan.problem->what, "no such file");
    EXPECT_EQ(scan.problem->place, Place{});
}

TEST_F(DocumentScanTest, AFileInPlaceOfAFolderIsAMissingFile) {
    const DocumentScan scan = ScanDocument(folder_.Write("a.orvo", "<orvo/>") / "b.orvo");
    ASSERT_TRUE(scan.problem);
    EXPECT_EQ(scan.problem->what, "no such file");
}

TEST_F(DocumentScanTest, AFileWhoseBytesCannotBeReadIsNamedWithTheReason) {
    // Opens as a regular file but cannot be read at its beginning.
    const DocumentScan scan = ScanDocument("/proc/self/mem");
    ASSERT_TRUE(scan.problem);
    EXPECT_EQ(scan.problem->what, "cannot be read");
    EXPECT_EQ(scan.problem->advice, "Input/output error");
}

TEST_F(DocumentScanTest, AFolderIsNamedAsSuch) {
    const DocumentScan scan = ScanDocument(folder_.Path());
    ASSERT_TRUE(scan.problem);
    EXPECT_EQ(scan.problem->what, "this is a folder");
}

TEST_F(DocumentScanTest, APipeIsNotOpened) {
    const std::string pipe = (folder_ / "pipe").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const DocumentScan scan = ScanDocument(pipe);
    ASSERT_TRUE(scan.problem);
    EXPECT_EQ(scan.problem->what, "this is a pipe");
}

TEST_F(DocumentScanTest, AScanThatIsStoppedReportsNothingBeyondThat) {
    std::stop_source stop;
    const std::string lossy = folder_.Write("a.orvo", "<orvo><a/>").string();
    EXPECT_TRUE(ScanDocument(lossy, {}, toolkit::kNotCarriedLimit, stop.get_token()).problem);
    stop.request_stop();
    const DocumentScan scan = ScanDocument(lossy, {}, toolkit::kNotCarriedLimit, stop.get_token());
    EXPECT_FALSE(scan.problem);
    EXPECT_EQ(scan.notCarriedCount, 0u);
    EXPECT_EQ(std::get<std::string>(toolkit::ReadFileContent(lossy, stop.get_token())), "");
}

TEST_F(DocumentScanTest, AScanThatIsStoppedTakesNoFurtherBlock) {
    const toolkit::LibraryUse library;
    std::stop_source stop;
    stop.request_stop();
    const DocumentScan scan =
        toolkit::ScanContent("<orvo><a/></orvo>", {}, toolkit::kNotCarriedLimit, stop.get_token());
    EXPECT_EQ(scan.notCarriedCount, 0u);
}

TEST_F(DocumentScanTest, MoreAttributesThanThePluginReadsEndTheScan) {
    std::string attributes;
    for (int i = 0; i < 600; ++i) {
        attributes += " a" + std::to_string(i) + "=''";
    }
    const DocumentScan scan = Scan("<orvo>\n <files" + attributes + "/></orvo>");
    ASSERT_TRUE(scan.problem);
    EXPECT_EQ(scan.problem->what, "too many attributes in one tag");
    EXPECT_EQ(scan.problem->place, (Place{2, 2}));
}

TEST_F(DocumentScanTest, AnEmptyFileIsNamedAsSuch) {
    const DocumentScan scan = Scan("");
    ASSERT_TRUE(scan.problem);
    EXPECT_EQ(scan.problem->what, "the file is empty");
}

TEST_F(DocumentScanTest, AnotherRootIsReportedWhereItsTagBegins) {
    const DocumentScan scan = Scan("<?xml version='1.0'?>\n<foo\n  a='1'><orvo/></foo>");
    ASSERT_TRUE(scan.problem);
    EXPECT_EQ(scan.problem->what, "the root element is <foo>, not <orvo>");
    EXPECT_EQ(scan.problem->place, (Place{2, 1}));
}

TEST_F(DocumentScanTest, AMalformedPlaceIsReportedWithLineAndColumn) {
    const DocumentScan scan = Scan("<orvo>\n  <files>\n</orvo>");
    ASSERT_TRUE(scan.problem);
    EXPECT_EQ(scan.problem->what, "not well-formed XML");
    EXPECT_EQ(scan.problem->place.line, 3u);
    EXPECT_THAT(scan.problem->advice, HasSubstr("files"));
}

TEST_F(DocumentScanTest, ATruncatedFileIsMalformedAtItsEnd) {
    const DocumentScan scan = Scan("<orvo>\n<session sampleRate='48000'/>\n<fil");
    ASSERT_TRUE(scan.problem);
    EXPECT_EQ(scan.problem->what, "not well-formed XML");
    EXPECT_EQ(scan.problem->place.line, 3u);
}

TEST_F(DocumentScanTest, TextThatIsNotXmlIsMalformedAtItsBeginning) {
    const DocumentScan scan = Scan("RIFF....WAVEfmt ");
    ASSERT_TRUE(scan.problem);
    EXPECT_EQ(scan.problem->what, "not well-formed XML");
    EXPECT_EQ(scan.problem->place.line, 1u);
}

TEST_F(DocumentScanTest, BytesThatAreNotUtf8AreReportedInTheirPlace) {
    const DocumentScan scan =
        Scan("<orvo>\n<files><file id='1' absolutePath='\xFF\xFE'/></files></orvo>");
    ASSERT_TRUE(scan.problem);
    EXPECT_EQ(scan.problem->what, "not UTF-8");
    EXPECT_EQ(scan.problem->place, (Place{2, 35}));
}

TEST_F(DocumentScanTest, AStatedEncodingHolds) {
    EXPECT_THAT(Losses("<?xml version='1.0' encoding='ISO-8859-1'?>\n<orvo><a b='\xE4'/></orvo>"),
                ElementsAre("2:7: <a> in <orvo>"));
}

TEST_F(DocumentScanTest, ADocumentTypeDeclarationIsAProblemBeforeItIsRead) {
    const DocumentScan scan =
        Scan("<?xml version='1.0'?>\n<!DOCTYPE orvo [<!ENTITY a 'b'>]>\n<orvo>&a;</orvo>");
    ASSERT_TRUE(scan.problem);
    EXPECT_EQ(scan.problem->what, "a document type declaration");
    EXPECT_EQ(scan.problem->place, (Place{2, 1}));
}

TEST_F(DocumentScanTest, ElementsNestAsDeepAsThePluginReadsThem) {
    const auto nested = [](std::size_t depth) {
        std::string document = "<orvo>";
        for (std::size_t i = 1; i < depth; ++i) {
            document += "<a>";
        }
        for (std::size_t i = 1; i < depth; ++i) {
            document += "</a>";
        }
        return document + "</orvo>";
    };
    EXPECT_FALSE(Scan(nested(256)).problem);
    const DocumentScan scan = Scan(nested(257));
    ASSERT_TRUE(scan.problem);
    EXPECT_EQ(scan.problem->what, "elements nested too deep");
    EXPECT_EQ(scan.problem->advice, "a session nests at most 256 levels");
}

// What is carried

TEST_F(DocumentScanTest, EverythingThatIsCarriedIsNoLoss) {
    EXPECT_THAT(Losses(R"(<?xml version="1.1"?>
<!-- a comment -->
<orvo version="1.5">
  <session appBuild="25.1.310" appVersion="25.1" audioChannelType="fivePointOne" bitDepth="32"
           duration="9000000000" sampleRate="48000"/>
  <files>
    <file absolutePath="/m/a.wav" id="0" importerPrivateSettings="x" mediaHandlerID="y"
          recoveryID="z" relativePath="a.wav"/>
    <file id="1"/>
  </files>
  <audioDevice inputID="in" outputID="out">
    <inputPort id="-1" name="Mic"/><inputPort id="-1" name="Mic"/><outputPort id="1" name="Main"/>
  </audioDevice>
</orvo>)"),
                IsEmpty());
}

TEST_F(DocumentScanTest, AnElementThatIsNotCarriedIsOneLossWithEverythingInIt) {
    EXPECT_THAT(Losses("<orvo>\n <session>\n  <glow>\n   <beam id='1'><name>a</name>"
                       "</beam></glow>\n  <trackPanner/>\n </session>\n</orvo>"),
                ElementsAre("3:3: <glow> in <session> with 2 elements in it",
                            "5:3: <trackPanner> in <session>"));
}

TEST_F(DocumentScanTest, AnElementIsJudgedByItsParentNotOnlyByItsName) {
    const std::string chunk = "<presetChunkData>AAEC</presetChunkData>";
    const auto inTrack = [&](const std::string& content) {
        return Losses("<orvo><session><tracks><audioTrack id='1'>" + content +
                      "</audioTrack></tracks></session></orvo>");
    };
    EXPECT_THAT(inTrack("<effectsRack><slot><component>" + chunk +
                        "<busConfig>x</busConfig></component></slot></effectsRack>"),
                IsEmpty());
    EXPECT_THAT(
        inTrack("<effectsRack><component id='rackMix'>" + chunk + "</component></effectsRack>"),
        testing::SizeIs(1));
    EXPECT_THAT(inTrack("<clip id='1'><properties properties='x'/></clip>"), IsEmpty());
    EXPECT_THAT(inTrack("<clip id='1'><properties><property/></properties></clip>"),
                testing::SizeIs(1));
}

TEST_F(DocumentScanTest, WhatTheFormatReadsAndDropsIsALoss) {
    EXPECT_THAT(Losses("<orvo><session><tracks><busTrack id='1'><trackAudioParameters volume='0.5'>"
                       "<trackPanner angle='1'/></trackAudioParameters></busTrack></tracks>"
                       "<name>Song</name></session></orvo>"),
                testing::SizeIs(3));
}

TEST_F(DocumentScanTest, AKnownElementInAnotherPlaceIsALoss) {
    EXPECT_THAT(Losses("<orvo><file id='1'/><orvo/></orvo>"),
                ElementsAre("1:7: <file> in <orvo>", "1:21: <orvo> in <orvo>"));
}

TEST_F(DocumentScanTest, AnAttributeThatIsNotCarriedIsALossAtItsTag) {
    EXPECT_THAT(
        Losses("<orvo mood='calm'>\n <files>\n  <file id='1'\n    colour='red'/></files></orvo>"),
        ElementsAre("1:1: the attribute mood of <orvo>", "3:3: the attribute colour of <file>"));
}

TEST_F(DocumentScanTest, TextOutsideOfKnownTextElementsIsALossOncePerElement) {
    EXPECT_THAT(Losses("<orvo>\n <files>one<file id='1'/>two</files>\n three</orvo>"),
                ElementsAre("2:2: text in <files>", "1:1: text in <orvo>"));
}

TEST_F(DocumentScanTest, AValueThatCannotBeReadIsALoss) {
    EXPECT_THAT(
        Losses("<orvo><session sampleRate='48 kHz' audioChannelType='7.1'/></orvo>"),
        ElementsAre("1:7: the value \"48 kHz\" of the attribute sampleRate of <session>",
                    "1:7: the value \"7.1\" of the attribute audioChannelType of <session>"));
}

TEST_F(DocumentScanTest, AValueIsShownShortenedOnOneLine) {
    EXPECT_THAT(
        Losses("<?xml version='1.1'?><orvo><session sampleRate='1&#10;2&#x7F;3&#x9F;4\xC3\xA4'/>"
               "<session bitDepth='0123456789012345678901234567890123456789abc'/></orvo>"),
        ElementsAre(HasSubstr("the value \"1 2 3 4\xC3\xA4\" of"), HasSubstr("a second"),
                    HasSubstr("the value \"0123456789...345678901234567890123456789abc\" of")));
}

TEST_F(DocumentScanTest, AMediaHandlerWithoutAKnownNameIsALoss) {
    EXPECT_THAT(Losses("<orvo><files><file id='1' mediaHandler='Wax Cylinder'/></files></orvo>"),
                ElementsAre(HasSubstr("\"Wax Cylinder\" of the attribute mediaHandler")));
}

TEST_F(DocumentScanTest, ASecondFileWithTheSameIdIsALoss) {
    EXPECT_THAT(Losses("<orvo><files><file id='7'/></files><files><file id='7'/></files></orvo>"),
                ElementsAre("1:43: a second file with id 7"));
}

TEST_F(DocumentScanTest, AFileWithoutAnIdIsALoss) {
    EXPECT_THAT(Losses("<orvo><files><file/><file id='-1'/></files></orvo>"),
                ElementsAre("1:14: <file> without an id",
                            "1:21: <file> with the id \"-1\", which means \"no id\""));
}

TEST_F(DocumentScanTest, ASecondTrackWithTheSameIdIsALossWhateverItsKind) {
    EXPECT_THAT(
        Losses("<orvo><session><tracks><audioTrack id='1'/><masterTrack id='1'/>"
               "<videoTrack id='1'/><videoTrack id='1'/></tracks></session></orvo>"),
        ElementsAre("1:44: a second track with id 1", "1:85: a second video track with id 1"));
}

TEST_F(DocumentScanTest, TracksWithoutAnIdEndTheReadExceptForVideoTracks) {
    const DocumentScan scan = Scan(
        "<orvo><x/><session><tracks><videoTrack/><busTrack/>"
        "<audioTrack id='4294967295'/></tracks></session></orvo>",
        3);
    ASSERT_THAT(scan.endTheRead, SizeIs(2));
    EXPECT_EQ(scan.endTheRead[0].what, "<busTrack> without an id");
    EXPECT_EQ(scan.endTheRead[0].place, (Place{1, 41}));
    EXPECT_EQ(scan.endTheRead[1].what,
              "<audioTrack> with the id \"4294967295\", which means \"no id\"");
    EXPECT_EQ(scan.notCarriedCount, 4u);
}

TEST_F(DocumentScanTest, NoMoreThanTheLimitIsKeptOfWhatEndsTheRead) {
    const DocumentScan scan =
        Scan("<orvo><session><tracks><busTrack/><busTrack/></tracks></session></orvo>", 1);
    EXPECT_THAT(scan.endTheRead, SizeIs(1));
}

TEST_F(DocumentScanTest, AControlWithoutAKeywordOrWithTheKeywordOfAnotherIsALoss) {
    EXPECT_THAT(
        Losses("<orvo><session><tracks><busTrack id='1'><trackAudioParameters><component/>"
               "<component id='trackPan'/><component id='trackPan'/>"
               "</trackAudioParameters><effectsRack><component id='trackFader'/></effectsRack>"
               "</busTrack></tracks></session></orvo>"),
        ElementsAre("1:63: <component> without an id",
                    "1:101: a second <component> with id \"trackPan\"",
                    "1:163: the value \"trackFader\" of the attribute id of <component>"));
}

TEST_F(DocumentScanTest, ASecondParameterChannelOrPropertyWithTheSameKeyIsALoss) {
    EXPECT_THAT(Losses("<orvo><session><tracks><busTrack id='1'><trackAudioParameters>"
                       "<component id='trackPan'><parameter/><parameter index='0'/></component>"
                       "<component id='trackFader'><parameter index='0'/></component>"
                       "</trackAudioParameters></busTrack></tracks></session></orvo>"),
                ElementsAre("1:100: a second <parameter> with index 0"));
    EXPECT_THAT(Losses("<orvo><session><tracks><audioTrack id='1'><audioClip><channelMap>"
                       "<channel index='2'/><channel index='02'/></channelMap></audioClip>"
                       "<audioClip><channelMap><channel index='2'/></channelMap></audioClip>"
                       "</audioTrack></tracks></session></orvo>"),
                ElementsAre("1:86: a second <channel> with index 2"));
    EXPECT_THAT(Losses("<orvo><session><properties><property key='a'/></properties><properties>"
                       "<property key='a'/><property/></properties></session></orvo>"),
                ElementsAre("1:72: a second property with key \"a\""));
}

TEST_F(DocumentScanTest, WhatIsDroppedWithoutItsPlaceIsALoss) {
    EXPECT_THAT(
        Losses("<orvo><session><tracks><busTrack id='1'><editParameter/>"
               "<editParameter slotIndex='-1'/><editParameter slotIndex='0'/><sendList>"
               "<sendSlot/><sendSlot slotIndex='0'/><sendSlot slotIndex='0'/></sendList>"
               "<effectsRack><slot><component><channelMap><channel/><channel index='0'/>"
               "<channel index='0'/></channelMap></component></slot></effectsRack>"
               "</busTrack></tracks></session></orvo>"),
        ElementsAre("1:41: <editParameter> without slotIndex",
                    "1:57: <editParameter> with the slotIndex \"-1\", which means \"no slotIndex\"",
                    "1:128: <sendSlot> without slotIndex", "1:242: <channel> without index"));
}

TEST_F(DocumentScanTest, AMediaHandlerBesideItsIdentifierIsALoss) {
    EXPECT_THAT(Losses("<orvo><files><file id='1' mediaHandler='Ogg Vorbis' mediaHandlerID=''/>"
                       "<file id='2' mediaHandler='Ogg Vorbis'/></files></orvo>"),
                ElementsAre("1:14: the attribute mediaHandler of <file>"));
}

TEST_F(DocumentScanTest, ATextThatIsNotBase64IsALossIfItMustBe) {
    EXPECT_THAT(Losses("<orvo><session><tracks><instrumentTrack id='1'>"
                       "<midiClip id='1'><midiEvents>AA<![CDATA[EC]]> </midiEvents></midiClip>"
                       "<midiClip id='2'><midiEvents>AA*C</midiEvents></midiClip>"
                       "<midiClip id='3'><midiEvents/></midiClip>"
                       "</instrumentTrack></tracks></session></orvo>"),
                ElementsAre("1:135: the text of <midiEvents>, which is not Base64"));
}

TEST_F(DocumentScanTest, ASecondSessionIsALoss) {
    EXPECT_THAT(Losses("<orvo><session duration='1'/><session duration='2'/></orvo>"),
                ElementsAre("1:30: a second <session>"));
}

TEST_F(DocumentScanTest, APrefixIsIgnoredUnlessItHidesTheAttribute) {
    EXPECT_THAT(Losses("<x:orvo xmlns:x='u'><x:files><file x:id='3'/>"
                       "<file id='1' x:id='2'/></x:files></x:orvo>"),
                ElementsAre("1:46: the attribute x:id of <file>"));
}

TEST_F(DocumentScanTest, ADeclarationOfANamespaceIsNeitherALossNorAnId) {
    EXPECT_THAT(Losses("<orvo xmlns='urn:s'><files xmlns:f='urn:f'>"
                       "<f:file xmlns:id='urn:i' id='1'/></files></orvo>"),
                IsEmpty());
    EXPECT_THAT(Losses("<orvo><files><file xmlns:id='1'/></files></orvo>"),
                ElementsAre("1:14: <file> without an id"));
}

TEST_F(DocumentScanTest, OfTwoIdsWithAPrefixTheLastCountsUnlessAnotherHasNone) {
    EXPECT_THAT(Losses("<orvo xmlns:x='u' xmlns:y='v'><files>"
                       "<file absolutePath='/a' x:id='1' y:id='2'/><file id='2'/></files></orvo>"),
                ElementsAre("1:38: the attribute x:id of <file>", "1:81: a second file with id 2"));
    EXPECT_THAT(Losses("<orvo xmlns:x='u'><files><file x:id='1' id='2'/><file id='2'/>"
                       "</files></orvo>"),
                ElementsAre("1:26: the attribute x:id of <file>", "1:49: a second file with id 2"));
}

TEST_F(DocumentScanTest, OnlyTheFirstLossesAreDescribedAndAllAreCounted) {
    const DocumentScan scan = Scan("<orvo><a/><b/><c/></orvo>", 2);
    EXPECT_THAT(scan.notCarried, SizeIs(2));
    EXPECT_EQ(scan.notCarriedCount, 3u);
}

// Places

TEST_F(DocumentScanTest, ColumnsCountCharactersAndNotBytes) {
    EXPECT_THAT(Losses("\xEF\xBB\xBF<orvo><!-- \xC3\xA4\xE2\x82\xAC --><a/></orvo>"),
                ElementsAre("1:18: <a> in <orvo>"));
}

TEST_F(DocumentScanTest, EveryKindOfLineEndCounts) {
    EXPECT_THAT(Losses("<orvo>\r\n\r\n  <a\r\n b='1'/></orvo>"), ElementsAre("3:3: <a> in <orvo>"));
}

TEST_F(DocumentScanTest, PlacesAreRightFarIntoALargeFile) {
    std::string document = "<orvo>\n<files>\n";
    for (int id = 0; id < 20000; ++id) {
        document += "  <file id='" + std::to_string(id) + "' absolutePath='/\xC3\xA4/long.wav'/>\n";
    }
    EXPECT_THAT(Losses(document + "</files>\n   <a/></orvo>"),
                ElementsAre("20004:4: <a> in <orvo>"));
}

TEST_F(DocumentScanTest, AWideEncodingIsReadToo) {
    std::string wide = "\xFF\xFE";
    for (const char character : std::string_view("<orvo>\n <a/></orvo>")) {
        wide += character;
        wide += '\0';
    }
    const DocumentScan scan = Scan(wide);
    EXPECT_FALSE(scan.problem);
    ASSERT_THAT(scan.notCarried, SizeIs(1));
    EXPECT_EQ(scan.notCarried[0].place.line, 2u);
}

TEST_F(DocumentScanTest, TheLibraryStaysStartedForItsOtherUsers) {
    xercesc::XMLPlatformUtils::Initialize();
    Scan("<orvo/>");
    EXPECT_NE(xercesc::XMLPlatformUtils::fgMemoryManager, nullptr);
    xercesc::XMLPlatformUtils::Terminate();
}

TEST_F(DocumentScanTest, ADocumentThatStatesUtf8WithoutAHyphenIsUtf8) {
    const DocumentScan scan =
        Scan("<?xml version=\"1.0\" encoding=\"UTF8\"?>\n<orvo>\n<session/>\xFF</orvo>");
    ASSERT_TRUE(scan.problem);
    EXPECT_EQ(scan.problem->what, "not UTF-8");
    EXPECT_EQ(scan.problem->place, (Place{3, 11}));
}

/// The losses of a parent's own are found after those of its children.
TEST_F(DocumentScanTest, LossesOfALineHaveTheirPlacesWhateverOrderTheyAreFoundIn) {
    EXPECT_THAT(Losses("<orvo><session><a name='\u00e9\U0001F3A7'/><b/>text</session><c/></orvo>"),
                ElementsAre("1:16: <a> in <session>", "1:30: <b> in <session>",
                            "1:7: text in <session>", "1:48: <c> in <orvo>"));
}

/// A document of elements that are lost, all on one line.
std::string ManyLosses(std::size_t count) {
    std::string document = "<orvo>";
    for (std::size_t i = 0; i < count; ++i) {
        document += "<unknown text='" + std::string(100, 'a') + "'/>";
    }
    return document + "</orvo>";
}

TEST_F(DocumentScanTest, TheTimeForManyLossesOnOneLineGrowsWithTheirNumber) {
    constexpr std::size_t kCount = 20'000;
    const std::string narrow = ManyLosses(kCount);
    std::string wide = "\xFF\xFE";
    for (const char byte : narrow) {
        wide += {byte, '\0'};
    }
    for (const auto& [document, lastColumn] :
         {std::pair(narrow, 7 + (kCount - 1) * 118), {wide, 7 + kCount * 118}}) {
        const std::clock_t before = std::clock();
        const DocumentScan scan = Scan(document, kCount);
        EXPECT_LT(std::clock() - before, 3 * CLOCKS_PER_SEC);
        ASSERT_THAT(scan.notCarried, SizeIs(kCount));
        EXPECT_EQ(scan.notCarried.back().place, (Place{1, lastColumn}));
    }
}

}  // namespace
