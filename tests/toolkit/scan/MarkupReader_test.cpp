#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "platform/kelcore/Strings.h"
#include "tests/toolkit/edit/XmlTree.h"
#include "toolkit/scan/MarkupReader.h"

namespace {

using namespace std::string_literals;

/// Writes down what it gets: "<file id="1">text</>".
class Notes final : public toolkit::MarkupHandler {
public:
    void StartElement(std::u16string_view name,
                      const toolkit::ScannedAttributes& attributes) override {
        text_ += "<" + kelcore::UTF16to8(name);
        for (std::size_t i = 0; i < attributes.Count(); ++i) {
            text_ += " " + kelcore::UTF16to8(attributes.At(i).QualifiedName()) + "=\"" +
                     kelcore::UTF16to8(attributes.At(i).Value()) + "\"";
        }
        text_ += ">";
    }
    void EndElement() override { text_ += "</>"; }
    void Characters(std::u16string_view text) override { text_ += kelcore::UTF16to8(text); }

    const std::string& Text() const { return text_; }

private:
    std::string text_;
};

/// What is read if the document comes in blocks of that size; "not read" if it is not read.
std::string ReadIn(std::string_view document, std::size_t blockSize) {
    Notes notes;
    const auto next = [rest = document, blockSize]() mutable {
        const std::string_view block = rest.substr(0, blockSize);
        rest.remove_prefix(block.size());
        return block;
    };
    return toolkit::ReadMarkup(next, notes) ? notes.Text() : "not read";
}

/// The same in one block, and held to the same in small ones.
std::string Read(std::string_view document) {
    const std::string read = ReadIn(document, document.size());
    for (const std::size_t size : std::array<std::size_t, 4>{1, 2, 3, 7}) {
        EXPECT_EQ(ReadIn(document, size), read) << document;
    }
    return read;
}

TEST(MarkupReader, GivesTagsWithTheirAttributesAndTexts) {
    EXPECT_EQ(Read("<orvo><file id='1' b = \"2>'\"\n/><name>a</name ></orvo>\n"),
              "<orvo><file id=\"1\" b=\"2>'\"></><name>a</></>");
}

TEST(MarkupReader, DecodesReferencesAndNormalisesWhiteSpace) {
    EXPECT_EQ(Read("<orvo a='&lt;&#65;&#x1F600;\t\r\n\u00E9'>&amp;\r\n\u00E9]</orvo>"),
              "<orvo a=\"<A\U0001F600  \u00E9\">&\n\u00E9]</>");
}

TEST(MarkupReader, PassesOverWhatIsNoContent) {
    EXPECT_EQ(Read("\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?><!-- <a> -->\n"
                   "<orvo><?a <b>?><![CDATA[<&amp;]]><!--></a>--></orvo><!-- -->"),
              "<orvo><&amp;</>");
}

TEST(MarkupReader, LeavesOutPrefixesOfElements) {
    EXPECT_EQ(Read("<p:orvo xmlns:p='urn:p' p:a='1'></p:orvo>"),
              "<orvo xmlns:p=\"urn:p\" p:a=\"1\"></>");
}

TEST(MarkupReader, LeavesOtherEncodingsAndVersionsToTheParser) {
    EXPECT_EQ(Read("<?xml version='1.1'?><orvo/>"), "not read");
    EXPECT_EQ(Read("<?xml version='1.0' encoding='ISO-8859-1'?><orvo/>"), "not read");
    EXPECT_EQ(Read("\xFF\xFE<\0o\0/\0>\0"s), "not read");
    EXPECT_EQ(Read("<!DOCTYPE orvo><orvo/>"), "not read");
    EXPECT_EQ(Read("<orvo \u00E4='1'/>"), "not read");
    EXPECT_EQ(Read("<\u00E4/>"), "not read");
}

TEST(MarkupReader, DoesNotReadWhatBreaksOff) {
    const std::string whole = "<orvo a='1'><!-- c --><![CDATA[d]]><name>a&amp;b</name></orvo>";
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_EQ(Read(std::string_view(whole).substr(0, size)), "not read") << size;
    }
}

TEST(MarkupReader, DoesNotReadWhatIsNoTree) {
    for (const char* const document :
         {"<orvo/><orvo/>", "</orvo>", "<orvo></orvo></orvo>", "<orvo/>text", "< orvo/>", "<>",
          "<orvo a/>", "<orvo a=1/>", "<orvo a='1/>", "<orvo a='1\"/>"}) {
        EXPECT_EQ(Read(document), "not read") << document;
    }
}

TEST(MarkupReader, DoesNotReadLongerPiecesThanAReadAccepts) {
    EXPECT_NE(ReadIn("<orvo a='" + std::string(1 << 19, 'x') + "'/>", 1 << 16), "not read");
    EXPECT_EQ(ReadIn("<orvo a='" + std::string(1 << 21, 'x') + "'/>", 1 << 16), "not read");
    EXPECT_EQ(ReadIn("<orvo>" + std::string(40 << 20, 'x') + "</orvo>", 1 << 16), "not read");
}

/// Collects the tree for a comparison with the witness.
class Tree final : public toolkit::MarkupHandler {
public:
    void StartElement(std::u16string_view name,
                      const toolkit::ScannedAttributes& attributes) override {
        open_.push_back(elements_.size());
        elements_.push_back({.name = kelcore::UTF16to8(name), .attributes = {}, .text = {}});
        for (std::size_t i = 0; i < attributes.Count(); ++i) {
            elements_.back().attributes[kelcore::UTF16to8(attributes.At(i).QualifiedName())] =
                kelcore::UTF16to8(attributes.At(i).Value());
        }
    }
    void EndElement() override { open_.pop_back(); }
    void Characters(std::u16string_view text) override {
        if (!open_.empty()) {
            elements_[open_.back()].text += kelcore::UTF16to8(text);
        }
    }

    const std::vector<test::XmlElement>& Elements() const { return elements_; }

private:
    std::vector<test::XmlElement> elements_;
    std::vector<std::size_t> open_;
};

/// A piece that may stand in any element, or now and then one that may not.
std::string DrawPiece() {
    const std::vector<std::string> pieces = {"<b c='1'/>", "<b c=\"&amp;&#9;\" d='>'></b>",
                                             "text",       "&lt;",
                                             "&#xE9;",     "\r\n",
                                             " ",          "\t",
                                             "\u00E9",     "<!-- <a> -->",
                                             "<?p q?>",    "<![CDATA[<&]]>",
                                             "\"' ] = > '"};
    const std::vector<std::string> marks = {"]]>", "<", "&", "<a", "=\"", "<!--", "-->", "</a>"};
    return *rc::gen::inRange(0, 50) == 0 ? *rc::gen::elementOf(marks) : *rc::gen::elementOf(pieces);
}

/// A document, or nearly one.
std::string DrawDocument() {
    std::string document = "<r>";
    int depth = 0;
    for (int count = *rc::gen::inRange(0, 30); count > 0; --count) {
        switch (*rc::gen::inRange(0, 4)) {
            case 0:
                document += "<a>";
                ++depth;
                break;
            case 1:
                document += depth != 0 ? "</a>" : "";
                depth -= depth != 0 ? 1 : 0;
                break;
            default:
                document += DrawPiece();
        }
    }
    for (; depth > 0; --depth) {
        document += "</a\n>";
    }
    return document + "</r>";
}

RC_GTEST_PROP(MarkupReaderProperties, ReadsWhatIsWellFormedAsExpatDoes, ()) {
    const std::string document = DrawDocument();
    const auto expected = test::ReadTree(document);
    const std::size_t blockSize = *rc::gen::inRange<std::size_t>(1, 64);
    Tree tree;
    const auto next = [rest = std::string_view(document), blockSize]() mutable {
        const std::string_view block = rest.substr(0, blockSize);
        rest.remove_prefix(block.size());
        return block;
    };
    const bool isRead = toolkit::ReadMarkup(next, tree);
    RC_CLASSIFY(expected.has_value());
    if (expected) {
        RC_ASSERT(isRead);
        RC_ASSERT(tree.Elements() == *expected);
    }
}

}  // namespace
