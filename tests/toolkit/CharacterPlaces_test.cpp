#include "toolkit/CharacterPlaces.h"

#include <gtest/gtest.h>

#include "tests/support/TemporaryFolder.h"
#include "tests/toolkit/PlacePrinting.h"

using namespace std::string_view_literals;
using toolkit::InCharacters;
using toolkit::Place;

namespace {

constexpr Place At(kelcore::uint64 line, kelcore::uint64 column) {
    return {line, column};
}

/// In UTF-16 or UCS-4, with a byte order mark.
template <class Character>
std::string Wide(std::basic_string_view<Character> text, bool littleEndian) {
    std::string bytes;
    const auto add = [&](char32_t unit) {
        for (std::size_t i = 0; i < sizeof(Character); ++i) {
            const std::size_t place = littleEndian ? i : sizeof(Character) - 1 - i;
            bytes += static_cast<char>(unit >> (8 * place) & 0xFF);
        }
    };
    add(0xFEFF);
    for (const Character unit : text) {
        add(unit);
    }
    return bytes;
}

TEST(CharacterPlaces, ACharacterOfTwoUnitsBeforeThePlaceIsOneColumn) {
    EXPECT_EQ(InCharacters("<a \U0001F600\U0001F600 x", At(1, 9)), At(1, 7));
    EXPECT_EQ(InCharacters("<a \U0001F600 x", At(1, 4)), At(1, 4)) << "the character begins there";
    EXPECT_EQ(InCharacters("<a \U0001F600 x", At(1, 6)), At(1, 5));
    EXPECT_EQ(InCharacters("\u97f3\u00e4 x", At(1, 4)), At(1, 4)) << "these are one unit each";
}

TEST(CharacterPlaces, OnlyTheLineOfThePlaceCounts) {
    const std::string_view text = "\U0001F600\n\U0001F600 x\r\n\U0001F600 y\r\U0001F600 z";
    EXPECT_EQ(InCharacters(text, At(2, 4)), At(2, 3));
    EXPECT_EQ(InCharacters(text, At(3, 4)), At(3, 3));
    EXPECT_EQ(InCharacters(text, At(4, 4)), At(4, 3));
    EXPECT_EQ(InCharacters(text, At(4, 5)), At(4, 4)) << "beyond the end";
    EXPECT_EQ(InCharacters(text, At(1, 99)), At(1, 98));
    EXPECT_EQ(InCharacters(text, At(9, 5)), At(9, 5));
    EXPECT_EQ(InCharacters(text, At(0, 0)), At(0, 0));
}

TEST(CharacterPlaces, LinesOfXml11EndInMoreWays) {
    const std::string text = "?>\u0085\u2028\U0001F600\r\u0085 x";
    EXPECT_EQ(InCharacters("<?xml version='1.1'" + text, At(3, 3)), At(3, 2));
    EXPECT_EQ(InCharacters("<?xml version='1.1'" + text, At(4, 3)), At(4, 3));
    EXPECT_EQ(InCharacters("<?xml version='1.0'" + text, At(1, 26)), At(1, 25));
}

TEST(CharacterPlaces, WideEncodingsAreUnderstood) {
    for (const bool littleEndian : {false, true}) {
        EXPECT_EQ(InCharacters(Wide(u"<a>\n\U0001F600 x"sv, littleEndian), At(2, 4)), At(2, 3));
        EXPECT_EQ(InCharacters(Wide(U"<a>\n\U0001F600 x"sv, littleEndian), At(2, 4)), At(2, 3));
    }
    EXPECT_EQ(InCharacters("<\0a\0\x3D\xD8\x00\xDE x\0"sv, At(1, 5)), At(1, 4)) << "without a mark";
    EXPECT_EQ(InCharacters(Wide(u"<?xml version='1.1'?>\u0085\U0001F600 x"sv, true), At(2, 4)),
              At(2, 3));
}

TEST(CharacterPlaces, AByteOrderMarkIsNotAColumn) {
    EXPECT_EQ(InCharacters("\xEF\xBB\xBFxx\U0001F600", At(1, 5)), At(1, 4));
    EXPECT_EQ(InCharacters("\xEF\xBB\xBFxx\U0001F600", At(1, 3)), At(1, 3));
}

TEST(CharacterPlaces, EncodingsOfSingleBytesStayAsTheyAre) {
    EXPECT_EQ(
        InCharacters("<?xml version='1.0' encoding='ISO-8859-1'?>\xF0\xF0\xF0\xF0", At(1, 48)),
        At(1, 48));
    EXPECT_EQ(InCharacters("\x4C\xF0\xF0\xF0\xF0\xF0", At(1, 5)), At(1, 5)) << "EBCDIC";
}

TEST(CharacterPlaces, AFileIsReadInBlocks) {
    const test::TemporaryFolder folder;
    const std::string text = "<a>" + std::string(65530, ' ') + "\U0001F600\U0001F600\n";
    const std::string path = folder.Write("a.orvo", text + text + "\U0001F600 x");
    EXPECT_EQ(toolkit::InCharactersOfFile(path, At(1, 65538)), At(1, 65536));
    EXPECT_EQ(toolkit::InCharactersOfFile(path, At(3, 4)), At(3, 3));
    EXPECT_EQ(toolkit::InCharactersOfFile(folder / "none.orvo", At(3, 4)), At(3, 4));
    EXPECT_EQ(toolkit::InCharactersOfFile(folder.Path(), At(3, 4)), At(3, 4));
}

}  // namespace
