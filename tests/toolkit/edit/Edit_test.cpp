#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <thread>

#include <orvo/Edit.h>
#include <orvo/Session.h>
#include "platform/kelcore/Strings.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using namespace std::string_literals;
using testing::HasSubstr;

/// The number of the first element of that name.
std::size_t Find(const orvo::Edit& edit, std::string_view name) {
    for (std::size_t element = 0; element < edit.ElementCount(); ++element) {
        if (edit.Name(element) == name) {
            return element;
        }
    }
    ADD_FAILURE() << "no <" << name << ">";
    return 0;
}

std::string AsUtf16(std::string_view text, bool littleEndian) {
    std::string bytes;
    for (const char16_t unit : kelcore::UTF8to16(text)) {
        const char low = static_cast<char>(unit & 0xFF);
        const char high = static_cast<char>(unit >> 8);
        bytes += {littleEndian ? low : high, littleEndian ? high : low};
    }
    return bytes;
}

class EditTest : public testing::Test {
protected:
    std::filesystem::path In(const char* name) const { return folder_ / name; }

    orvo::Edit Open(std::string_view content, const char* name = "a.orvo") const {
        orvo::EditResult opened = orvo::OpenEdit(folder_.Write(name, content));
        if (!opened) {
            throw std::runtime_error("cannot be opened: " + opened.messages.at(0).what);
        }
        return std::move(*opened.edit);
    }

    /// The file after it was edited and saved.
    std::string Saved(const orvo::Edit& edit) const {
        EXPECT_TRUE(edit.Save(In("saved.orvo")));
        EXPECT_TRUE(orvo::ReadSession(In("saved.orvo")));
        return test::ReadFile(In("saved.orvo"));
    }

    /// The document after the attribute of its first element of that name was set.
    std::string WithAttribute(std::string_view content, std::string_view element,
                              std::string_view name, std::string_view value) const {
        orvo::Edit edit = Open(content);
        EXPECT_EQ(edit.SetAttribute(Find(edit, element), name, value), std::nullopt);
        return Saved(edit);
    }

    std::string WithText(std::string_view content, std::string_view element,
                         std::string_view text) const {
        orvo::Edit edit = Open(content);
        EXPECT_EQ(edit.SetText(Find(edit, element), text), std::nullopt);
        return Saved(edit);
    }

    std::string WhyNotOpened(std::string_view content) const {
        const orvo::EditResult opened = orvo::OpenEdit(folder_.Write("bad.orvo", content));
        EXPECT_FALSE(opened);
        return opened.messages.empty() ? "" : opened.messages.front().what;
    }

    const test::TemporaryFolder folder_;
};

// Attributes

TEST_F(EditTest, AValueIsReplacedAndEveryOtherByteStays) {
    const std::string before =
        "<?xml version='1.0'?><!-- <file id='1'/> -->\r\n"
        "<orvo\tother = '&#65;' ><files >\r\n"
        "  <file  relativePath='a.wav'\n absolutePath = \"/old/a>b.wav\" id='1' unknown='x'/>\r\n"
        "  <?note <file?><strange><file absolutePath='/b'/></strange><![CDATA[<file>]]></files\n>"
        "</orvo><!-- end -->\r\n";
    const std::string after =
        "<?xml version='1.0'?><!-- <file id='1'/> -->\r\n"
        "<orvo\tother = '&#65;' ><files >\r\n"
        "  <file  relativePath='a.wav'\n absolutePath = \"/new/a.wav\" id='1' unknown='x'/>\r\n"
        "  <?note <file?><strange><file absolutePath='/b'/></strange><![CDATA[<file>]]></files\n>"
        "</orvo><!-- end -->\r\n";
    EXPECT_EQ(WithAttribute(before, "file", "absolutePath", "/new/a.wav"), after);
}

TEST_F(EditTest, AValueIsReadAsAParserReadsIt) {
    const orvo::Edit edit =
        Open("<orvo a='1&#x9;2&#10;3\t4\r\n5&lt;&gt;&amp;&quot;&apos;&#x1F600;' b=\"x'y\" c=''/>");
    EXPECT_EQ(edit.Attribute(0, "a"), "1\t2\n3 4 5<>&\"'\U0001F600");
    EXPECT_EQ(edit.Attribute(0, "b"), "x'y");
    EXPECT_EQ(edit.Attribute(0, "c"), "");
    EXPECT_EQ(edit.Attribute(0, "d"), std::nullopt);
}

TEST_F(EditTest, ANewAttributeStandsBehindTheOthers) {
    EXPECT_EQ(WithAttribute("<orvo a='1' ><files/></orvo>", "orvo", "b", "2"),
              "<orvo a='1' b=\"2\" ><files/></orvo>");
    EXPECT_EQ(WithAttribute("<orvo><files /></orvo>", "files", "b", "2"),
              "<orvo><files b=\"2\" /></orvo>");
    EXPECT_EQ(WithAttribute("<orvo><files/></orvo>", "files", "b", "2"),
              "<orvo><files b=\"2\"/></orvo>");
}

TEST_F(EditTest, SeveralNewAttributesStandInTheOrderOfTheirChanges) {
    orvo::Edit edit = Open("<orvo a='1'/>");
    EXPECT_EQ(edit.SetAttribute(0, "z", "1"), std::nullopt);
    EXPECT_EQ(edit.SetAttribute(0, "a", "5"), std::nullopt);
    EXPECT_EQ(edit.SetAttribute(0, "b", "2"), std::nullopt);
    EXPECT_EQ(edit.SetAttribute(0, "z", "3"), std::nullopt);
    EXPECT_EQ(edit.Attribute(0, "z"), "3");
    EXPECT_EQ(Saved(edit), "<orvo a='5' z=\"3\" b=\"2\"/>");
}

TEST_F(EditTest, AnAttributeWithoutAPrefixGoesBeforeOthersOfItsName) {
    const std::string head = "<orvo xmlns:p='urn:p' xmlns:q='urn:q' ";
    EXPECT_EQ(WithAttribute(head + "p:a='1' a='2' q:a='3'/>", "orvo", "a", "4"),
              head + "p:a='1' a='4' q:a='3'/>");
    EXPECT_EQ(WithAttribute(head + "p:a='1' q:a='3'/>", "orvo", "a", "4"),
              head + "p:a='1' q:a='4'/>");
    EXPECT_EQ(WithAttribute(head + "/>", "orvo", "p", "4"),
              head.substr(0, head.size() - 1) + " p=\"4\" />");
}

TEST_F(EditTest, AValueIsSpelledForItsQuotes) {
    const std::string value = "\"'<>&\t\n\r";
    EXPECT_EQ(WithAttribute("<orvo a=\"\"/>", "orvo", "a", value),
              "<orvo a=\"&quot;'&lt;>&amp;&#x9;&#xA;&#xD;\"/>");
    EXPECT_EQ(WithAttribute("<orvo a=''/>", "orvo", "a", value),
              "<orvo a='&quot;&apos;&lt;>&amp;&#x9;&#xA;&#xD;'/>");
    EXPECT_EQ(Open(test::ReadFile(In("saved.orvo"))).Attribute(0, "a"), value);
}

TEST_F(EditTest, AValueThatIsAsBeforeKeepsItsSpelling) {
    const std::string content = "<orvo a='&#65;\tb'/>";
    orvo::Edit edit = Open(content);
    EXPECT_EQ(edit.SetAttribute(0, "a", "x"), std::nullopt);
    EXPECT_EQ(edit.SetAttribute(0, "a", "A b"), std::nullopt);
    EXPECT_TRUE(edit.Replacements().empty());
    EXPECT_EQ(Saved(edit), content);
}

TEST_F(EditTest, ANameThatIsNoneIsRefused) {
    orvo::Edit edit = Open("<orvo/>");
    for (const char* const name : {"", "1a", "a b", "a=", "p:a", "xmlns", "\xC3\xA4"}) {
        EXPECT_NE(edit.SetAttribute(0, name, "x"), std::nullopt) << name;
    }
    EXPECT_TRUE(edit.Replacements().empty());
}

// Texts

TEST_F(EditTest, ATextIsReplaced) {
    const std::string head = "<orvo><session><tracks><audioTrack id='1'><trackParameters><name>";
    const std::string tail = "</name></trackParameters></audioTrack></tracks></session></orvo>";
    EXPECT_EQ(WithText(head + "Old" + tail, "name", "a<b>&]]>\r"),
              head + "a&lt;b&gt;&amp;]]&gt;&#xD;" + tail);
    EXPECT_EQ(orvo::ReadSession(In("saved.orvo")).session.audioTracks.at(0).name, "a<b>&]]>");
}

TEST_F(EditTest, ATextInASectionStaysInOneIfItCan) {
    const std::string head = "<orvo><session><xmpMetadata>";
    const std::string tail = "</xmpMetadata></session></orvo>";
    EXPECT_EQ(WithText(head + "<![CDATA[<a/>]]>" + tail, "xmpMetadata", "<b/>"),
              head + "<![CDATA[<b/>]]>" + tail);
    EXPECT_EQ(WithText(head + "1<![CDATA[2]]>3<![CDATA[4]]>" + tail, "xmpMetadata", "<b/>"),
              head + "<![CDATA[<b/>]]>" + tail);
    EXPECT_EQ(WithText(head + "<![CDATA[<a/>]]>" + tail, "xmpMetadata", "]]>"),
              head + "]]&gt;" + tail);
}

TEST_F(EditTest, CommentsInATextStay) {
    const std::string head = "<orvo><session><properties><property key='k'>";
    const std::string tail = "</property></properties></session></orvo>";
    EXPECT_EQ(WithText(head + "\n <!-- x -->a<?y?>b" + tail, "property", "new"),
              head + "<!-- x -->new<?y?>" + tail);
}

TEST_F(EditTest, AnEmptyTagGetsAnEndForItsText) {
    const std::string head = "<orvo><session><properties>";
    const std::string tail = "</properties></session></orvo>";
    EXPECT_EQ(WithText(head + "<property key='k' />" + tail, "property", "v"),
              head + "<property key='k' >v</property>" + tail);
    EXPECT_EQ(WithText(head + "<property key='k'></property>" + tail, "property", "v"),
              head + "<property key='k'>v</property>" + tail);
}

TEST_F(EditTest, ATextBesideElementsIsRefused) {
    orvo::Edit edit = Open("<orvo>text<files/></orvo>");
    EXPECT_EQ(edit.Text(0), "");
    EXPECT_NE(edit.SetText(0, "new"), std::nullopt);
    EXPECT_TRUE(edit.Replacements().empty());
}

TEST_F(EditTest, ATextIsReadAsAParserReadsIt) {
    const orvo::Edit edit =
        Open("<orvo>a\r\nb\rc&#13;<!-- x --><![CDATA[&amp;\r\n]]>&lt;\t</orvo>");
    EXPECT_EQ(edit.Text(0), "a\nb\nc\r&amp;\n<\t");
}

// Elements

TEST_F(EditTest, ElementsHaveNamesAndParentsInTheDocumentsOrder) {
    const orvo::Edit edit = Open(
        "<p:orvo xmlns:p='urn:p'><files><file id='1'/></files><other><file/></other></p:orvo>");
    ASSERT_EQ(edit.ElementCount(), 5u);
    EXPECT_EQ(edit.Name(0), "orvo");
    EXPECT_EQ(edit.Parent(0), std::nullopt);
    EXPECT_EQ(edit.Name(2), "file");
    EXPECT_EQ(edit.Parent(2), 1u);
    EXPECT_EQ(edit.Parent(3), 0u);
    EXPECT_TRUE(edit.IsKnown(2));
    EXPECT_FALSE(edit.IsKnown(3));
    EXPECT_FALSE(edit.IsKnown(4));
}

// Encodings and versions

TEST_F(EditTest, Utf16StaysUtf16) {
    const std::string head = "<?xml version='1.0' encoding='UTF-16'?><orvo a='";
    for (const bool littleEndian : {true, false}) {
        const std::string mark = littleEndian ? "\xFF\xFE" : "\xFE\xFF";
        EXPECT_EQ(WithAttribute(mark + AsUtf16(head + "\U0001F600'><files/></orvo>", littleEndian),
                                "orvo", "a", "\u00E9\U0001F3B5"),
                  mark + AsUtf16(head + "\u00E9\U0001F3B5'><files/></orvo>", littleEndian));
    }
}

TEST_F(EditTest, AByteOrderMarkOfUtf8Stays) {
    EXPECT_EQ(WithAttribute("\xEF\xBB\xBF<orvo a=''/>", "orvo", "a", "\u00E9"),
              "\xEF\xBB\xBF<orvo a='\u00E9'/>");
}

TEST_F(EditTest, InAnEncodingOfSingleBytesOtherCharactersBecomeReferences) {
    const std::string head = "<?xml version='1.0' encoding='windows-1252'?><orvo a='";
    EXPECT_EQ(Open(head + "\xE9\x80'/>").Attribute(0, "a"), "\u00E9\u20AC");
    EXPECT_EQ(WithAttribute(head + "'/>", "orvo", "a", "\u20AC \u4E16 \U0001F600"),
              head + "\x80 &#x4E16; &#x1F600;'/>");
    EXPECT_EQ(WithText(head + "'><![CDATA[x]]></orvo>", "orvo", "\u20AC"),
              head + "'><![CDATA[\x80]]></orvo>");
    EXPECT_EQ(WithText(head + "'><![CDATA[x]]></orvo>", "orvo", "\u4E16"),
              head + "'>&#x4E16;</orvo>");
}

TEST_F(EditTest, AControlCharacterIsCarriedInXml11Only) {
    const std::string xml11 = "<?xml version='1.1'?><orvo a='";
    EXPECT_EQ(WithAttribute(xml11 + "'/>", "orvo", "a", "\x01\u0085\u2028"),
              xml11 + "&#x1;&#x85;&#x2028;'/>");
    orvo::Edit edit = Open("<orvo a='b'/>");
    const auto refused = edit.SetAttribute(0, "a", "\x01");
    ASSERT_NE(refused, std::nullopt);
    EXPECT_THAT(refused->what, HasSubstr("XML cannot carry"));
    EXPECT_EQ(edit.Attribute(0, "a"), "b");
}

TEST_F(EditTest, WhatNoDocumentCarriesIsRefused) {
    orvo::Edit edit = Open("<?xml version='1.1'?><orvo/>");
    for (const std::string& text : {"\0"s, "\uFFFE"s, "\uFFFF"s, "\xED\xA0\x80"s}) {
        EXPECT_NE(edit.SetAttribute(0, "a", text), std::nullopt);
        EXPECT_NE(edit.SetText(0, text), std::nullopt);
    }
}

TEST_F(EditTest, ALineEndOfXml11InATagCannotBeDivided) {
    EXPECT_THAT(WhyNotOpened("<?xml version='1.1'?><orvo a='1'\u2028b='2'/>"),
                HasSubstr("cannot be edited"));
    EXPECT_EQ(Open("<?xml version='1.1'?><orvo a='1\u2028\u0085\r\u0085'/>").Attribute(0, "a"),
              "1   ");
}

// Limits

TEST_F(EditTest, ATagLongerThanAReadAcceptsIsRefused) {
    orvo::Edit edit = Open("<orvo a='b'/>");
    EXPECT_NE(edit.SetAttribute(0, "a", std::string(1 << 20, 'x')), std::nullopt);
    EXPECT_EQ(edit.SetAttribute(0, "a", std::string(1 << 19, 'x')), std::nullopt);
    EXPECT_NE(edit.SetAttribute(0, "b", std::string(1 << 19, 'x')), std::nullopt);
    EXPECT_EQ(edit.Attribute(0, "b"), std::nullopt);
    EXPECT_EQ(edit.SetAttribute(0, "a", std::string((1 << 20) - 12, 'y')), std::nullopt);
    EXPECT_EQ(Saved(edit).size(), std::size_t{1} << 20);
    orvo::Edit saved = std::move(*orvo::OpenEdit(In("saved.orvo")).edit);
    EXPECT_EQ(saved.SetAttribute(0, "a", std::string((1 << 20) - 12, 'z')), std::nullopt);
    EXPECT_NE(saved.SetAttribute(0, "a", std::string((1 << 20) - 11, 'z')), std::nullopt);
}

TEST_F(EditTest, MoreAttributesThanAReadAcceptsAreRefused) {
    orvo::Edit edit = Open("<orvo/>");
    for (int i = 0; i < 256; ++i) {
        ASSERT_EQ(edit.SetAttribute(0, "a" + std::to_string(i), ""), std::nullopt);
    }
    EXPECT_NE(edit.SetAttribute(0, "one-more", ""), std::nullopt);
    EXPECT_EQ(edit.SetAttribute(0, "a0", "new"), std::nullopt);
    Saved(edit);
}

TEST_F(EditTest, ATextLongerThanAReadAcceptsIsRefused) {
    orvo::Edit edit = Open("<orvo>a</orvo>");
    EXPECT_NE(edit.SetText(0, std::string((32 << 20) + 1, 'x')), std::nullopt);
    EXPECT_EQ(edit.Text(0), "a");
    orvo::Edit empty = Open("<orvo/>");
    EXPECT_EQ(empty.SetText(0, std::string(2 << 20, 'x')), std::nullopt);
    Saved(empty);
}

TEST_F(EditTest, InAnEncodingOfSingleBytesLessFitsIntoOnePiece) {
    const std::string head = "<?xml version='1.0' encoding='windows-1252'?><orvo a='";
    orvo::Edit edit = Open(head + "'>text</orvo>");
    EXPECT_NE(edit.SetAttribute(0, "a", std::string(64 << 10, 'x')), std::nullopt);
    EXPECT_NE(edit.SetText(0, std::string((64 << 10) + 1, 'x')), std::nullopt);
    EXPECT_EQ(edit.SetText(0, std::string((64 << 10) - 64, 'x')), std::nullopt);
    Saved(edit);
}

// Opening

TEST_F(EditTest, WhatCannotBeReadCannotBeEdited) {
    EXPECT_NE(WhyNotOpened("<orvo><files></orvo>"), "");
    EXPECT_NE(WhyNotOpened("<!DOCTYPE orvo><orvo/>"), "");
    EXPECT_NE(WhyNotOpened("<other/>"), "");
    EXPECT_NE(WhyNotOpened(""), "");
    EXPECT_FALSE(orvo::OpenEdit(In("none.orvo")));
    EXPECT_FALSE(orvo::OpenEdit(In(".")));
}

// Saving

TEST_F(EditTest, ASaveReplacesTheFileAndKeepsItsPermissions) {
    orvo::Edit edit = Open("<orvo a='1'/>");
    ASSERT_EQ(::chmod(In("a.orvo").c_str(), 0640), 0);
    orvo::Edit opened = std::move(*orvo::OpenEdit(In("a.orvo")).edit);
    ASSERT_EQ(opened.SetAttribute(0, "a", "2"), std::nullopt);
    EXPECT_TRUE(opened.Save(In("a.orvo")));
    EXPECT_EQ(test::ReadFile(In("a.orvo")), "<orvo a='2'/>");
    EXPECT_EQ(std::filesystem::status(In("a.orvo")).permissions(), std::filesystem::perms(0640));
}

TEST_F(EditTest, AFileThatChangedMeanwhileIsNotReplaced) {
    orvo::Edit edit = Open("<orvo a='1'/>");
    ASSERT_EQ(edit.SetAttribute(0, "a", "2"), std::nullopt);
    std::ofstream(In("a.orvo")) << "<orvo a='longer'/>";
    std::filesystem::create_symlink(In("a.orvo"), In("link.orvo"));
    for (const char* const name : {"a.orvo", "link.orvo", "./a.orvo"}) {
        const orvo::WriteResult saved = edit.Save(In(name));
        ASSERT_FALSE(saved);
        EXPECT_THAT(saved.messages.at(0).what, HasSubstr("changed by another program"));
    }
    EXPECT_EQ(test::ReadFile(In("a.orvo")), "<orvo a='longer'/>");
    EXPECT_TRUE(edit.Save(In("other.orvo")));
}

TEST_F(EditTest, AFailedSaveIsAMessage) {
    const orvo::WriteResult saved = Open("<orvo/>").Save(In("none") / "a.orvo");
    ASSERT_FALSE(saved);
    EXPECT_THAT(saved.messages.at(0).what, HasSubstr("its folder does not exist"));
}

// Replacements

TEST_F(EditTest, ReplacementsSayWhatChangesWhere) {
    orvo::Edit edit = Open("<orvo a='1'><files b='&#50;'/></orvo>");
    ASSERT_EQ(edit.SetAttribute(1, "b", "3"), std::nullopt);
    ASSERT_EQ(edit.SetAttribute(0, "a", "20"), std::nullopt);
    const std::vector<orvo::Replacement> expected = {{9, "1", "20"}, {22, "&#50;", "3"}};
    EXPECT_EQ(edit.Replacements(), expected);
}

TEST(Replacements, AreUndoneByTheirInverse) {
    const std::string content = "abcdef";
    const std::vector<orvo::Replacement> changes = {{0, "a", ""}, {1, "", "xyz"}, {2, "cd", "!"}};
    const auto changed = orvo::Apply(content, changes);
    EXPECT_EQ(changed, "xyzb!ef");
    EXPECT_EQ(orvo::Apply(*changed, orvo::Inverse(changes)), content);
}

TEST(Replacements, AreNotMadeInAnotherContent) {
    EXPECT_EQ(orvo::Apply("abc", {{1, "x", "y"}}), std::nullopt);
    EXPECT_EQ(orvo::Apply("abc", {{4, "", "y"}}), std::nullopt);
    EXPECT_EQ(orvo::Apply("abc", {{1, "b", "y"}, {0, "a", "z"}}), std::nullopt);
    EXPECT_EQ(orvo::Apply("abc", {{3, "", "y"}}), "abcy");
}

// Threads

TEST_F(EditTest, FilesMayBeOpenedInSeveralThreads) {
    const auto file =
        folder_.Write("t.orvo", "<?xml version='1.0' encoding='ISO-8859-1'?><orvo a='\xE9'/>");
    const auto openOften = [&file] {
        for (int i = 0; i < 20; ++i) {
            EXPECT_EQ(orvo::OpenEdit(file).edit->Attribute(0, "a"), "\u00E9");
        }
    };
    std::thread other(openOften);
    openOften();
    other.join();
}

}  // namespace
