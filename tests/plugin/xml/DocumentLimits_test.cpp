#include "format/Limits.h"

#include <gmock/gmock.h>

#include <fstream>

#include "tests/plugin/xml/DocumentLimitsFixture.h"

// Documents that the reader refuses although the parser accepts them, and documents within all
// limits, which it reads. DocumentLengths_test.cpp tests how long things may be.

namespace tses {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

TEST_F(DocumentLimitsTest, ADocumentTypeDeclarationIsRefusedWithItsPlaceAndNothingOfItIsRead) {
    EXPECT_FALSE(ParseText("<?xml version='1.0'?>\n<!DOCTYPE a [ this is no declaration ]>\n<a/>"));
    ASSERT_THAT(events.problems, SizeIs(1));
    EXPECT_THAT(events.problems[0], AllOf(StartsWith("fatal 2:1 "), HasSubstr("document.orvo]"),
                                          HasSubstr("no document type declaration")));
    EXPECT_THAT(events.lines, IsEmpty());
    EXPECT_THAT(traced, ElementsAre("app::XMLReader: Unexpected XMLReader Exception"));
}

TEST_F(DocumentLimitsTest, ADocumentTypeDeclarationIsFoundAnywhereBeforeTheRoot) {
    const std::string comment = "<!-- <a> \xC3\xA4 \"-->";
    const std::string type = "<!DOCTYPE a><a/>";
    EXPECT_TRUE(IsRefused(type, "document type"));
    EXPECT_THAT(events.problems, ElementsAre(StartsWith("fatal 1:1 ")));
    EXPECT_TRUE(IsRefused("\xEF\xBB\xBF" + comment + type, "document type"));
    EXPECT_THAT(events.problems, ElementsAre(StartsWith("fatal 1:16 ")));
    EXPECT_TRUE(IsRefused(Utf16LittleEndian("\n  " + type), "document type"));
    EXPECT_THAT(events.problems, ElementsAre(StartsWith("fatal 2:3 ")));
    EXPECT_TRUE(IsRefused(Utf16LittleEndian("<!--\xE4-->" + type), "document type"));
    EXPECT_THAT(events.problems, ElementsAre(StartsWith("fatal 1:9 ")));
    EXPECT_TRUE(IsRefused("<?p <a> ?>" + Repeated(comment, 50000) + type, "document type"));
    for (std::size_t size = 49120; size < 49160; ++size) {
        EXPECT_TRUE(IsRefused("<!--" + std::string(size, 'x') + "-->" + type, "document type"));
    }
}

TEST_F(DocumentLimitsTest, WhatOnlyLooksLikeADocumentTypeDeclarationIsRead) {
    EXPECT_TRUE(ParseText("<!-- <!DOCTYPE a> --><a/>"));
    EXPECT_TRUE(ParseText("<?p <!DOCTYPE a> ?><a/>"));
    EXPECT_TRUE(ParseText("<a><![CDATA[<!DOCTYPE a>]]><!-- <!DOCTYPE a> --></a>"));
}

TEST_F(DocumentLimitsTest, AnExternalDocumentTypeIsRefusedUnopened) {
    const std::string type = (folder.Write("type.dtd", "<!ELEMENT a EMPTY>")).string();
    EXPECT_TRUE(IsRefused("<!DOCTYPE a SYSTEM '" + type + "'><a/>", "document type"));
}

TEST_F(DocumentLimitsTest, ARefusedDocumentFailsEvenWithoutAReceiver) {
    events.throwOnError = false;
    EXPECT_FALSE(ParseText("<!DOCTYPE a><a/>"));
    EXPECT_THAT(events.lines, IsEmpty());
    SessionXMLReader reader(nullptr, nullptr);
    EXPECT_FALSE(
        reader.Parse(kelcore::PathFromBytes(folder.Write("d.orvo", "<!DOCTYPE a><a/>").string())));
}

TEST_F(DocumentLimitsTest, ARefusedDocumentLeavesTheReaderReadyForTheNext) {
    SessionXMLReader reader(&events, &events);
    const std::string deep = Repeated("<a xmlns:p='u' p:b=''>", limits::kDepth + 1);
    const auto bad = kelcore::PathFromBytes(folder.Write("bad", deep).string());
    const auto good = kelcore::PathFromBytes(folder.Write("good", Nested(limits::kDepth)).string());
    EXPECT_FALSE(reader.Parse(bad));
    EXPECT_TRUE(reader.Parse(good));
    EXPECT_FALSE(reader.Parse(bad));
    EXPECT_TRUE(reader.Parse(good));
}

TEST_F(DocumentLimitsTest, NoRefusedDocumentIsLeftOpen) {
    const auto openFiles = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
    };
    const auto before = openFiles();
    for (int i = 0; i < 20; ++i) {
        EXPECT_FALSE(ParseText("<!DOCTYPE a><a/>"));
        EXPECT_FALSE(ParseText(Nested(257)));
        EXPECT_FALSE(ParseText("<a b='" + std::string(3 * limits::kTagBytes, 'x')));
        EXPECT_FALSE(ParseText("<?xml version='1.0' encoding='none'?><a/>"));
    }
    EXPECT_EQ(openFiles(), before);
}

TEST_F(DocumentLimitsTest, ElementsNest256DeepAndNoDeeper) {
    EXPECT_TRUE(ParseText(Nested(256)));
    EXPECT_TRUE(IsRefused(Nested(257), "nested deeper than the 256 levels"));
}

TEST_F(DocumentLimitsTest, ManySiblingsAreNotDeep) {
    EXPECT_TRUE(ParseText("<a>" + Repeated(Nested(3), 1000) + "</a>"));
}

TEST_F(DocumentLimitsTest, AnElementHas256AttributesAndNoMore) {
    EXPECT_TRUE(ParseText("<a" + Numbered(" b#=''", 256) + "/>"));
    EXPECT_TRUE(IsRefused("<a" + Numbered(" b#=''", 257) + "/>", "256 attributes"));
}

TEST_F(DocumentLimitsTest, DeclarationsOfNamespacesAreNotAmongThe256Attributes) {
    const std::string declarations = Numbered(" xmlns:p#='u'", 20);
    EXPECT_TRUE(ParseText("<a" + Numbered(" b#=''", 256) + declarations + "/>"));
    EXPECT_TRUE(ParseText("<a" + declarations + "><b" + Numbered(" b#=''", 256) + "/></a>"));
    EXPECT_TRUE(IsRefused("<a" + Numbered(" b#=''", 257) + declarations + "/>", "256 attributes"));
}

TEST_F(DocumentLimitsTest, TheNamesOfOneDocumentDoNotCountInTheNext) {
    const auto names = [](const std::string& prefix) {
        return "<a>" + Numbered("<" + prefix + "#/>", 1000) + "</a>";
    };
    EXPECT_TRUE(ParseText(names("b")));
    EXPECT_TRUE(ParseText(names("b")));
    EXPECT_TRUE(ParseText(names("c")));
}

TEST_F(DocumentLimitsTest, AtOnePlace256PrefixesAreInForceAndNoMore) {
    const std::string inner = Numbered(" xmlns:q#='u'", 128) + "/>";
    EXPECT_TRUE(ParseText("<a" + Numbered(" xmlns:p#='u'", 128) + "><b" + inner + "</a>"));
    EXPECT_TRUE(IsRefused("<a" + Numbered(" xmlns:p#='u'", 129) + "><b" + inner + "</a>",
                          "256 namespace prefixes"));
}

TEST_F(DocumentLimitsTest, PrefixesOfElementsThatHaveEndedDoNotCount) {
    EXPECT_TRUE(ParseText("<a>" + Repeated("<b xmlns:p='u' xmlns:q='v'/>", 500) + "</a>"));
}

TEST_F(DocumentLimitsTest, ADocumentHas1024NamesOfElementsAndNoMore) {
    EXPECT_TRUE(ParseText("<a>" + Repeated(Numbered("<b#/>", 1023), 3) + "</a>"));
    EXPECT_TRUE(IsRefused("<a>" + Numbered("<b#/>", 1024) + "</a>", "1024 names of elements"));
}

TEST_F(DocumentLimitsTest, ADocumentHas1024NamespacesAndPrefixesAndNoMore) {
    EXPECT_TRUE(ParseText("<a>" + Repeated(Numbered("<b xmlns='u#'/>", 1024), 2) + "</a>"));
    EXPECT_TRUE(IsRefused("<a>" + Numbered("<b xmlns='u#'/>", 1025) + "</a>", "1024 namespaces"));
    EXPECT_TRUE(IsRefused("<a>" + Numbered("<b xmlns:p#='u'/>", 1025) + "</a>", "1024 namespaces"));
}

TEST_F(DocumentLimitsTest, AVersionOfXmlThatIsNoNumberIsRefusedWithItsPlace) {
    for (const char* const version : {"1.", "1.S", "1.0a", "1. 0", "1.0.0", "1.-0"}) {
        const std::string document = std::string("<?xml version=\"") + version + "\"?><a/>";
        EXPECT_TRUE(IsRefused(document, "version in the XML declaration")) << version;
    }
    EXPECT_TRUE(IsRefused("\xEF\xBB\xBF<?xml\n version =\t'1.x' ?><a/>", "fatal 1:1 "));
    EXPECT_TRUE(IsRefused(Utf16LittleEndian("<?xml version='1.x'?><a/>"), "version"));
}

TEST_F(DocumentLimitsTest, EveryVersionNumberOfXml1IsRead) {
    for (const char* const version : {"1.0", "1.1", "1.5", "1.10"}) {
        const std::string document = std::string("<?xml version='") + version + "'?><a b='1.S'/>";
        EXPECT_TRUE(ParseText(document)) << version;
        EXPECT_TRUE(ParseText(Utf16LittleEndian(document))) << version;
    }
}

TEST_F(DocumentLimitsTest, NulCharactersAfterTheRootAreRefused) {
    using namespace std::string_literals;
    EXPECT_TRUE(IsRefused("<a/>\0\0\0"s, "NUL"));
    EXPECT_TRUE(IsRefused("<a/>\0<junk"s, "NUL"));
    EXPECT_TRUE(IsRefused(Utf16LittleEndian("<a/>\0\0"s), "NUL"));
    EXPECT_TRUE(IsRefused("<a/>" + Repeated(" ", 200000) + "\0"s, "NUL"));
}

TEST_F(DocumentLimitsTest, HalfACharacterIsRefusedIfTheParserLetsItPass) {
    const auto utf16 = [](std::u16string_view text) {
        std::string bytes = "\xFF\xFE";
        for (const char16_t unit : text) {
            bytes += static_cast<char>(unit & 0xFF);
            bytes += static_cast<char>(unit >> 8);
        }
        return bytes;
    };
    for (const std::u16string half : {u"\xD930", u"x\xDBFF"}) {
        for (const std::u16string& document :
             {u"<a b='" + half + u"'/>", u"<a b='" + half + u"&#x41;'/>",
              u"<a xmlns='" + half + u"'/>", u"<a xmlns:p='" + half + u"'/>",
              u"<a><?p " + half + u"?></a>", u"<a xmlns:p='u' p:b='" + half + u"' b=''/>",
              u"<a b='' c='" + half + u"'/>", u"<a xmlns='u' b='' c='" + half + u"'/>"}) {
            EXPECT_TRUE(IsRefused(utf16(document), "half of a character"));
        }
    }
    EXPECT_TRUE(
        ParseText(utf16(u"<a b='\xD930\xDD30' xmlns:p='\xD930\xDD30'><?p \xD930\xDD30?></a>")));
    EXPECT_TRUE(
        IsRefused("<?xml version='1.0' encoding='UTF-7'?><a b='+2TA-'/>", "half of a character"));
    EXPECT_TRUE(ParseText("<?xml version='1.0' encoding='UTF-7'?><a b='+2TDdMA-'/>"));
}

TEST_F(DocumentLimitsTest, ZeroBytesOfUtf16CharactersAreNoNul) {
    EXPECT_TRUE(ParseText(Utf16LittleEndian("<a b='c'/>")));
    EXPECT_TRUE(ParseText(std::string_view("\xFE\xFF\0<\0a\0/\0>\x01\x00", 12).substr(0, 10)));
    // U+0100 U+0001 has two adjacent zero bytes but no zero unit, in either byte order.
    EXPECT_TRUE(ParseText(std::string_view("\xFE\xFF\0<\0a\0>\x01\0\0A\0<\0/\0a\0>", 20)));
}

TEST_F(DocumentLimitsTest, AFileThatEndsWithinACharacterIsRefused) {
    EXPECT_TRUE(IsRefused(Utf16LittleEndian("<a/>") + "\n", "ends within a character"));
    for (const char* const rest :
         {"\xC3", "\xE2\x82", "\xF0\x9F\x8E", "\xF8\x80\x80\x80", "\xFC\x80", "\xFF"}) {
        EXPECT_TRUE(IsRefused(std::string("<a/>") + rest, "ends within a character"));
        EXPECT_TRUE(
            IsRefused("<a/>" + Repeated("\n", 98304 - 4 - 1) + rest, "ends within a character"));
    }
}

TEST_F(DocumentLimitsTest, LineEndsOfAnotherEncodingAfterTheRootArePartOfNoCharacter) {
    EXPECT_TRUE(
        ParseText("<?xml version='1.1' encoding='ISO-8859-1'?><a/>" + Repeated("\x85", 20)));
    EXPECT_THAT(events.problems, IsEmpty());
}

TEST_F(DocumentLimitsTest, AFileThatIsChangedWhileItIsReadIsRefused) {
    const auto path = folder.Write("document.orvo", "<a><b/><b/></a>");
    std::filesystem::last_write_time(
        path, std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
    events.atEachElement = [&] {
        std::fstream(path, std::ios::in | std::ios::out | std::ios::binary) << "<a><c/><c/></a>";
    };
    EXPECT_FALSE(ParseFile(path));
    EXPECT_THAT(events.problems, ElementsAre(HasSubstr("changed while it was read")));
    EXPECT_THAT(events.lines, testing::Not(testing::Contains("end of document")));
}

TEST_F(DocumentLimitsTest, AFileThatGrowsWhileItIsReadIsRefused) {
    const auto path = folder.Write("document.orvo", "<a><b/></a>");
    events.atEachElement = [&] {
        const auto time = std::filesystem::last_write_time(path);
        std::ofstream(path, std::ios::app) << "\n";
        std::filesystem::last_write_time(path, time);
    };
    EXPECT_FALSE(ParseFile(path));
    EXPECT_THAT(events.problems, ElementsAre(HasSubstr("changed while it was read")));
}

TEST_F(DocumentLimitsTest, AFileThatGrowsAsFastAsItIsReadIsRefusedSoon) {
    constexpr std::size_t kFirst = 20'000;
    const auto path = folder.Write("document.orvo", "<a>" + Repeated("<b/>", kFirst));
    std::ofstream file(path, std::ios::app);
    std::size_t elements = 0;
    events.atEachElement = [&] {
        file << "<b/>" << std::flush;
        if (++elements == 50 * kFirst) {
            throw std::runtime_error("would be read without end");
        }
    };
    EXPECT_FALSE(ParseFile(path));
    EXPECT_THAT(events.problems, ElementsAre(HasSubstr("changed while it was read")));
    EXPECT_LT(elements, 2 * kFirst);
}

TEST_F(DocumentLimitsTest, AFileThatIsWrittenWithinTheSecondWhileItIsReadIsRefused) {
    const auto path = folder.Write("document.orvo", "<a><b/></a>");
    const auto time = std::filesystem::file_time_type(std::chrono::seconds(1));
    std::filesystem::last_write_time(path, time);
    events.atEachElement = [&] {
        std::filesystem::last_write_time(path, time + std::chrono::nanoseconds(1));
    };
    EXPECT_FALSE(ParseFile(path));
    EXPECT_THAT(events.problems, ElementsAre(HasSubstr("changed while it was read")));
}

TEST_F(DocumentLimitsTest, AFileThatIsReplacedWhileItIsReadIsReadAsItWas) {
    const auto path = folder.Write("document.orvo", "<a><b/></a>");
    events.atEachElement = [&] {
        std::filesystem::rename(folder.Write("next.orvo", "<x/>"), path);
    };
    EXPECT_TRUE(ParseFile(path));
    EXPECT_THAT(events.problems, IsEmpty());
}

}  // namespace
}  // namespace tses
