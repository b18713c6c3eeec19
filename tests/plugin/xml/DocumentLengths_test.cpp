#include <gmock/gmock.h>
#include <iconv.h>

#include "tests/plugin/xml/DocumentLimitsFixture.h"

// How long the parts of a document may be, in every encoding.

namespace tses {
namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class DocumentLengthsTest : public DocumentLimitsTest {};

std::string InEbcdic(std::string_view ascii) {
    std::string result(ascii.size(), '\0');
    const ::iconv_t converter = ::iconv_open("IBM037", "US-ASCII");
    std::string source(ascii);
    char* from = source.data();
    char* to = result.data();
    std::size_t fromSize = source.size();
    std::size_t toSize = result.size();
    EXPECT_EQ(::iconv(converter, &from, &fromSize, &to, &toSize), 0u);
    ::iconv_close(converter);
    return result;
}

/// How much the parser's blocks may let pass beyond the limit of a tag, a section or a comment.
constexpr std::size_t kReadBeyond = std::size_t{128} * 1024;

class LongTagTest : public DocumentLengthsTest, public testing::WithParamInterface<std::size_t> {};

// The limit must hold wherever the parser's blocks begin in the tag.
TEST_P(LongTagTest, ATagOf1MiBIsReadAndOneOf128KiBMoreIsNot) {
    const std::string before = "<a>" + Repeated("<b/>", GetParam()) + "<c d=\"";
    const std::string behind = "\"/></a>";
    const std::string value(limits::kTagBytes - 9, 'x');
    const std::string more(kReadBeyond, 'x');
    EXPECT_TRUE(ParseText(before + value + behind)) << testing::PrintToString(events.problems);
    EXPECT_TRUE(IsRefused(before + value + more + behind, "tag is longer than the 1 MiB"));
}

TEST_P(LongTagTest, AProcessingInstructionOf1MiBIsReadAndOneOf128KiBMoreIsNot) {
    const std::string before = "<a>" + Repeated("<b/>", GetParam()) + "<?p ";
    const std::string value(limits::kTagBytes - 6, 'x');
    const std::string more(kReadBeyond, 'x');
    EXPECT_TRUE(ParseText(before + value + "?></a>"));
    EXPECT_TRUE(IsRefused(before + value + more + "?></a>", "tag is longer than the 1 MiB"));
}

TEST_P(LongTagTest, TheBytesOfATagCountWhateverTheirEncoding) {
    const std::string before = "<a>" + Repeated("<b/>", GetParam() / 2) + "<c d=\"";
    const std::string value(limits::kTagBytes / 2 - 9, 'x');
    const std::string more(kReadBeyond / 2, 'x');
    EXPECT_TRUE(ParseText(Utf16LittleEndian(before + value + "\"/></a>")));
    EXPECT_TRUE(IsRefused(Utf16LittleEndian(before + value + more + "\"/></a>"),
                          "tag is longer than the 1 MiB"));
}

TEST_P(LongTagTest, IfMarkupCannotBeFoundEverythingMayHave64KiBAndNot128KiBMore) {
    for (const std::string encoding : {"Shift_JIS", "EBCDIC-CP-US"}) {
        const std::string start =
            Declaring(encoding) + "<a>" + Repeated("<b/>", GetParam()) + "<b c='0'/>";
        for (const auto& [open, close] : {std::pair("<c d='", "'/>"), std::pair("<![CDATA[", "]]>"),
                                          std::pair("<!--", "-->"), std::pair("", "")}) {
            const std::size_t markup =
                std::string_view(open).size() + std::string_view(close).size();
            const auto document = [&, open = open, close = close](std::size_t size) {
                const std::string text =
                    start + open + std::string(size - markup, 'x') + close + "</a>";
                return encoding == "Shift_JIS" ? text : InEbcdic(text);
            };
            EXPECT_TRUE(ParseText(document(limits::kForeignBytes))) << encoding << open;
            EXPECT_TRUE(
                IsRefused(document(limits::kForeignBytes + kReadBeyond), "in this encoding"))
                << encoding << open;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(AtDifferentOffsets, LongTagTest,
                         testing::Values(0, 1, 3000, 6143, 12288, 15000, 40000));

TEST_F(DocumentLengthsTest, ALongTagIsRefusedWhateverIsLongInIt) {
    const std::string megabytes = Repeated("0123456789abcdef", std::size_t{3} * 65536);
    const std::string reason = "tag is longer than the 1 MiB";
    EXPECT_TRUE(IsRefused("<a b='" + megabytes + "'/>", reason));
    EXPECT_TRUE(IsRefused("<a b='>>" + megabytes + "'/>", reason));
    EXPECT_TRUE(IsRefused("<a" + megabytes + "/>", reason));
    EXPECT_TRUE(IsRefused("<a" + Repeated("    ", 1 << 20) + "/>", reason));
    EXPECT_TRUE(IsRefused("<a></a" + Repeated("\n\n\n\n", 1 << 20) + ">", reason));
    EXPECT_TRUE(IsRefused("<?p " + megabytes + "?><a/>", reason));
    EXPECT_TRUE(IsRefused(Utf16LittleEndian("<a b='" + megabytes + "'/>"), reason));
}

TEST_F(DocumentLengthsTest, TheAttributesOfALongTagAreCountedBeforeItsEnd) {
    const std::string reason = "more than the 256 attributes";
    const std::string attributes = Numbered(" b#=''", 60000);
    EXPECT_TRUE(IsRefused("<a" + attributes + "><b", reason));
    EXPECT_TRUE(IsRefused("<a xml:a=''" + attributes + "><b", reason));
    EXPECT_TRUE(IsRefused("<a xmlns:p='u'><b" + attributes + "><b", reason));
    EXPECT_TRUE(IsRefused(Utf16LittleEndian("<a" + attributes + "><b"), reason));
    EXPECT_TRUE(ParseText("<a" + Numbered(" b#=\"" + Repeated("='", 1000) + "\"", 256) + "/>"));
    EXPECT_TRUE(ParseText("<a><![CDATA[" + Repeated("a='b' ", 1 << 18) + "]]></a>"));
}

TEST_F(DocumentLengthsTest, NamesHaveAMaximumLength) {
    const std::string reason = "name is longer than the 1024";
    EXPECT_TRUE(ParseText("<" + std::string(1024, 'a') + "/>"));
    EXPECT_TRUE(IsRefused("<" + std::string(1025, 'a') + "/>", reason));
    EXPECT_TRUE(IsRefused("<a xmlns:" + std::string(1025, 'p') + "='u'/>", reason));
    EXPECT_TRUE(IsRefused("<a xmlns='" + std::string(1025, 'u') + "'/>", reason));
    EXPECT_TRUE(ParseText("<a xmlns='" + Repeated("\xF0\x9F\x8E\xB5", 512) + "'/>"));
    EXPECT_TRUE(IsRefused("<a xmlns='" + Repeated("\xF0\x9F\x8E\xB5", 513) + "'/>", reason));
    EXPECT_TRUE(ParseText("<p:" + std::string(1022, 'a') + " xmlns:p='u'/>"));
    EXPECT_TRUE(IsRefused("<p:" + std::string(1023, 'a') + " xmlns:p='u'/>", reason));
    EXPECT_TRUE(IsRefused("<xmlns:a/>", "the prefix xmlns"));
}

TEST_F(DocumentLengthsTest, IfMarkupCannotBeFoundNothingMayBeLong) {
    for (const char* const encoding :
         {"UTF-7", "HZ-GB-2312", "Shift_JIS", "GB18030", "Big5", "ISO-2022-JP", "SCSU"}) {
        const std::string start = Declaring(encoding) + "<a b='";
        EXPECT_TRUE(ParseText(start + "xxxx'/>")) << encoding;
        EXPECT_TRUE(IsRefused(start + std::string(300000, 'x') + "'/>", "in this encoding"))
            << encoding;
    }
}

TEST_F(DocumentLengthsTest, AnEncodingOfSingleBytesWithMarkupInAsciiHasTheLimitsOfUtf8) {
    for (const char* const encoding :
         {"UTF-8",        "utf8",         "UTF_8",       "US-ASCII",   "ASCII",     "ascii",
          "ISO646-US",    "latin1",       "LATIN-1",     "L1",         "ISO8859-1", "ISO_8859-1",
          "iso-ir-100",   "cp819",        "ISO-8859-15", "iso8859_15", "latin9",    "ISO-8859-7",
          "windows-1252", "Windows-1250", "cp1252",      "CP1251",     "koi8-r",    "IBM437"}) {
        const std::string start = Declaring(encoding) + "<a b='";
        EXPECT_TRUE(ParseText(start + std::string(300000, 'x') + "'/>")) << encoding;
        EXPECT_TRUE(IsRefused(start + std::string(limits::kTagBytes + 200000, 'x') + "'/>",
                              "a tag is longer than the 1 MiB"))
            << encoding;
    }
}

TEST_F(DocumentLengthsTest, SingleBytesDeclaredAsWideOnesHaveTheLimitsOfUtf8) {
    const std::string text = "<a>" + std::string(300000, 'x') + "</a>";
    for (const char* const encoding : {"UTF-16", "utf16", "UCS-2", "ISO-10646-UCS-2", "UCS-4"}) {
        EXPECT_TRUE(ParseText(Declaring(encoding) + text)) << encoding;
        EXPECT_TRUE(ParseText("\xEF\xBB\xBF" + Declaring(encoding) + text)) << encoding;
    }
    EXPECT_THAT(events.problems, Each(AllOf(StartsWith("warning "), HasSubstr("auto-sensed"))));
}

TEST_F(DocumentLengthsTest, WideCharactersHaveTheLimitsOfUtf8WhateverNameTheyAreDeclaredBy) {
    const std::string text = "<a>" + std::string(300000, 'x') + "</a>";
    for (const char* const encoding : {"UTF-16", "utf-16le", "ISO-10646-UCS-2", "UCS-4"}) {
        EXPECT_TRUE(ParseText(Utf16LittleEndian(Declaring(encoding) + text))) << encoding;
    }
    EXPECT_TRUE(ParseText(Utf16BigEndian(Declaring("UTF-16") + text)));
    EXPECT_TRUE(ParseText(Utf16BigEndian(Declaring("UTF-16BE") + text)));
}

TEST_F(DocumentLengthsTest, IfTheEncodingChangesAfterTheDeclarationNothingMayBeLong) {
    const std::string reason = "in this encoding";
    const std::string rest = "<a b='" + std::string(300000, 'x') + "'/>";
    const std::string wideRest = Utf16LittleEndian(rest).substr(2);
    EXPECT_TRUE(IsRefused(Utf16LittleEndian(Declaring("UTF-8")) + rest, reason));
    EXPECT_TRUE(IsRefused(Utf16LittleEndian(Declaring("latin1")) + rest, reason));
    // The last byte of a unit before the rest reverses its byte order.
    EXPECT_TRUE(IsRefused(Utf16LittleEndian(Declaring("UTF-16BE")) + '\0' + wideRest, reason));
    EXPECT_TRUE(IsRefused(Declaring("UTF-16LE") + wideRest, reason));
    // A decoder of this name looks for a byte order mark after the declaration.
    EXPECT_TRUE(IsRefused(Utf16BigEndian(Declaring("unicode")) + Utf16LittleEndian(rest), reason));
}

TEST_F(DocumentLengthsTest, TextThatLooksLikeASectionDoesNotStretchATag) {
    const std::string long_ = Repeated("x", 3 * limits::kTagBytes);
    EXPECT_TRUE(IsRefused("<a><!-- <![CDATA[ --><b c=\"" + long_ + "\"/></a>", "tag is longer"));
    EXPECT_TRUE(IsRefused("<a><![CDATA[ <!-- ]]><b c=\"" + long_ + "\"/></a>", "tag is longer"));
    EXPECT_TRUE(IsRefused("<a><?p <![CDATA[ ?><b c=\"" + long_ + "\"/></a>", "tag is longer"));
    EXPECT_TRUE(IsRefused("<a b=\"'\" c='\"'><b c=\"" + long_ + "\"/></a>", "tag is longer"));
}

TEST_F(DocumentLengthsTest, TextsMayBeFarLongerThanTags) {
    const std::string text = Repeated("0123456789abcde\n", std::size_t{2} * 65536);  // 2 MiB
    EXPECT_TRUE(ParseText("<a><![CDATA[" + text + "]]></a>"));
    EXPECT_TRUE(ParseText("<a><![CDATA[ <a b=\" <!-- " + text + "]]></a>"));
    EXPECT_TRUE(ParseText("<a>" + text + "</a>"));
    EXPECT_TRUE(ParseText("<a><!-- <a b='" + text + "--></a>"));
    EXPECT_TRUE(ParseText("<a/>" + Repeated("\n", 3 << 20)));
    EXPECT_TRUE(
        ParseText("<a/>" + Repeated("\n", 3 << 20) + "<?p " + Repeated("x", 200000) + "?>"));
    EXPECT_TRUE(ParseText(Utf16LittleEndian("<a><![CDATA[" + text + "]]></a>")));
    EXPECT_THAT(events.problems, IsEmpty());
}

TEST_F(DocumentLengthsTest, ASectionOf32MiBIsReadAndOneOf128KiBMoreIsNot) {
    for (const auto& [open, close] : {std::pair("<![CDATA[", "]]>"), std::pair("<!--", "-->")}) {
        const std::size_t markup = std::string_view(open).size() + std::string_view(close).size();
        const std::string section = open + std::string(limits::kSectionBytes - markup, 'x');
        const std::string more(kReadBeyond, 'x');
        EXPECT_TRUE(ParseText("<a>" + section + close + "</a>")) << open;
        EXPECT_TRUE(
            IsRefused("<a>" + section + more + close + "</a>", "text is longer than the 32 MiB"))
            << open;
    }
}

TEST_F(DocumentLengthsTest, WhiteSpaceOf32MiBBesideTheRootIsReadAndThatOf128KiBMoreIsNot) {
    const std::string space(limits::kSectionBytes, '\n');
    const std::string more(kReadBeyond, '\n');
    const std::string reason = "text is longer than the 32 MiB";
    EXPECT_TRUE(ParseText(space + "<a/>"));
    EXPECT_TRUE(ParseText("<a/>" + space));
    EXPECT_TRUE(IsRefused(space + more + "<a/>", reason));
    EXPECT_TRUE(IsRefused("<a/>" + space + more, reason));
}

TEST_F(DocumentLengthsTest, ATextInsideTheRootHasNoLimitOfItsOwn) {
    EXPECT_TRUE(ParseText("<a>" + std::string(40 << 20, 'x') + "</a>"));
    EXPECT_TRUE(ParseText("<a>" + std::string(40 << 20, '\n') + "</a>"));
    EXPECT_THAT(events.problems, IsEmpty());
}

TEST_F(DocumentLengthsTest, AFileOfMoreThan2GiBIsRefused) {
    const auto path = folder.Write("large.orvo", "<a/>");
    std::filesystem::resize_file(path, limits::kFileBytes + 1);
    EXPECT_FALSE(ParseFile(path));
    EXPECT_THAT(events.problems, ElementsAre(HasSubstr("larger than the 2 GiB")));
    EXPECT_THAT(events.lines, IsEmpty());
}

}  // namespace
}  // namespace tses
