#include <gmock/gmock.h>

#include <utility>

#include "format/Limits.h"
#include "plugin/xml/SessionXMLReader.h"
#include "tests/plugin/xml/SessionXMLWriterFixture.h"

// What is too large to be read again is not written.

namespace tses {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WriterLimitsTest : public SessionXMLWriterTest {};

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

class LongCharactersTest : public WriterLimitsTest,
                           public testing::WithParamInterface<std::u16string_view> {};

TEST_P(LongCharactersTest, AreSplitWhereAReaderTakesThemWhateverStandsThere) {
    // Three bytes each in the file, so that the sections are as long as they may be.
    std::u16string text(limits::kSectionBytes / 3 - 17, u'\u4E00');
    for (int i = 0; i < 20; ++i) {
        text += GetParam();
    }
    SessionXMLWriter writer = NewWriter();
    ASSERT_TRUE(writer.Characters(text));
    ASSERT_TRUE(writer.Save());

    TextPieces read;
    EXPECT_TRUE(SessionXMLReader(&read, nullptr).Parse(TargetPath()));
    EXPECT_TRUE(read.text == text);
    EXPECT_EQ(read.pieces, 2);
}

INSTANTIATE_TEST_SUITE_P(BelowAPairWithinAPairAndAbove, LongCharactersTest,
                         testing::Values(u"\u4E00", u"\U0001F3B5", u"\uFF01"));

TEST_F(WriterLimitsTest, AttributesAsLongAsAReaderTakesAreSavedAndRead) {
    SessionXMLWriter writer = NewWriter();
    const std::u16string fits(limits::kTagBytes - 1000, u'x');
    EXPECT_TRUE(writer.StartElement(names::file, {{names::name, fits}}));
    EXPECT_TRUE(writer.Save());
    EXPECT_THAT(traced, IsEmpty());
    SAXContentHandler* const nobody = nullptr;
    EXPECT_TRUE(SessionXMLReader(nobody, nullptr).Parse(TargetPath()));
}

TEST_F(WriterLimitsTest, AttributesCountAsTheyMayHaveToBeWritten) {
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
        SessionXMLWriter writer = NewWriter();
        EXPECT_TRUE(writer.StartElement(names::file, {{names::name, fits}})) << length;
        EXPECT_FALSE(writer.StartElement(names::file, {{names::name, fits + u"x"}})) << length;
    }
}

TEST_F(WriterLimitsTest, AttributesLongerThanAReaderTakesFailTheSaveWithOneTraceLine) {
    const std::u16string half(limits::kTagBytes / 2, u'x');
    const std::u16string tooLong(limits::kTagBytes, u'x');
    const std::u16string tooLongWhenEscaped(limits::kTagBytes / 4, u'&');
    folder.Write("session.orvo", "old");
    for (const AttributeMap& attributes :
         {AttributeMap{{names::name, tooLong}}, AttributeMap{{names::name, tooLongWhenEscaped}},
          AttributeMap{{names::id, half}, {names::name, half}}}) {
        traced.clear();
        SessionXMLWriter writer = NewWriter();
        EXPECT_FALSE(writer.StartElement(names::file, attributes));
        EXPECT_FALSE(writer.StartElement(names::file));
        EXPECT_FALSE(writer.Save());
        EXPECT_THAT(traced, ElementsAre("the attributes of an element are longer than 1 MiB"));
    }
    traced.clear();
    SessionXMLWriter writer = NewWriter();
    EXPECT_FALSE(writer.SetRootAttributes({{names::name, tooLong}}));
    EXPECT_FALSE(writer.Save());
    EXPECT_THAT(traced, ElementsAre("the attributes of an element are longer than 1 MiB"));
    EXPECT_EQ(Saved(), "old");
}

TEST_F(WriterLimitsTest, AttributesThatAreTooLongOnlyAsReferencesFail) {
    const std::u16string tooLongInXml11(limits::kTagBytes / 6, u'\u2028');
    SessionXMLWriter writer = NewWriter();
    EXPECT_FALSE(writer.StartElement(names::file, {{names::name, tooLongInXml11}}));
    EXPECT_EQ(traced.size(), 1u);
}

// A tag has room for more of most characters than if each were the longest reference.
TEST_F(WriterLimitsTest, AttributesAreMeasuredCharacterByCharacter) {
    constexpr std::size_t kRoom = limits::kTagBytes - 200;
    const std::pair<char16_t, std::size_t> lengths[] = {
        {u'a', 1}, {u'\t', 6}, {u'\u007F', 6}, {u'&', 6},      {u'<', 6},
        {u'>', 6}, {u'"', 6},  {u'\u0085', 6}, {u'\u4E00', 3}, {u'\u2028', 8}};
    for (const auto& [unit, length] : lengths) {
        SCOPED_TRACE(static_cast<int>(unit));
        SessionXMLWriter fitting = NewWriter();
        const std::u16string fits(kRoom / length, unit);
        EXPECT_TRUE(fitting.StartElement(names::file, {{names::name, fits}}));
        SessionXMLWriter refusing = NewWriter();
        const std::u16string tooLong(limits::kTagBytes / length, unit);
        EXPECT_FALSE(refusing.StartElement(names::file, {{names::name, tooLong}}));
    }
}

TEST_F(WriterLimitsTest, ListsWithMoreEntriesThanAFileHasRoomForFailTheSaveFromThereOn) {
    SessionXMLWriter writer = NewWriter();
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

TEST_F(WriterLimitsTest, AChannelMapThatNoMediaFileHasFailsTheSave) {
    SessionXMLWriter writer = NewWriter();
    EXPECT_TRUE(writer.TakesChannels(1024));
    EXPECT_FALSE(writer.TakesChannels(1025));
    EXPECT_THAT(traced, ElementsAre("a channel map has more than 1024 channels"));
    EXPECT_FALSE(writer.Save());
}

TEST_F(WriterLimitsTest, ABlockThatLeavesNoRoomInTheFileFailsTheSave) {
    SessionXMLWriter writer = NewWriter();
    EXPECT_TRUE(writer.TakesBlock(1073741824));
    EXPECT_FALSE(writer.TakesBlock(1073741825));
    EXPECT_THAT(traced,
                ElementsAre("a block of events or of an effect's state is larger than 1 GiB"));
    EXPECT_FALSE(writer.Save());
}

}  // namespace
}  // namespace tses
