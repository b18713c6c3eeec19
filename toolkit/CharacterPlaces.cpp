#include "toolkit/CharacterPlaces.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>
#include <utility>

#include "toolkit/TextPlaces.h"

namespace toolkit {
namespace {

using namespace std::string_view_literals;

/// How a document stores its characters.
struct Encoding {
    std::size_t unitSize = 1;  ///< 1: UTF-8
    bool littleEndian = false;
    std::size_t markSize = 0;  ///< bytes of the byte order mark, if there is one
};

struct Beginning {
    std::string_view bytes;
    Encoding encoding;
};

// Byte order marks, and how a "<" without one looks.
constexpr Beginning kWideBeginnings[] = {
    {"\x00\x00\xFE\xFF"sv, {4, false, 4}},
    {"\xFF\xFE\x00\x00"sv, {4, true, 4}},
    {"\x00\x00\x00<"sv, {4, false, 0}},
    {"<\x00\x00\x00"sv, {4, true, 0}},
    {"\xFE\xFF"sv, {2, false, 2}},
    {"\xFF\xFE"sv, {2, true, 2}},
    {"\x00<"sv, {2, false, 0}},
    {"<\x00"sv, {2, true, 0}},
};

/// The "<" of EBCDIC, where bytes mean something else.
constexpr char kForeignLess = 0x4C;

std::optional<Encoding> EncodingOf(std::string_view document) {
    for (const Beginning& beginning : kWideBeginnings) {
        if (document.starts_with(beginning.bytes)) {
            return beginning.encoding;
        }
    }
    if (!StatesUtf8(document) || document.starts_with(kForeignLess)) {
        return std::nullopt;
    }
    return Encoding{1, false, document.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0};
}

/// The beginning of a document, with its XML declaration, in single bytes.
std::string NarrowBegin(std::string_view document, const Encoding& encoding) {
    constexpr std::size_t kEnough = 1024;
    std::string narrow;
    for (const char byte : document.substr(encoding.markSize, kEnough)) {
        if (byte != 0) {
            narrow += byte;
        }
    }
    return narrow;
}

/// Walks through a document to a place, block by block, and counts what the parser counts twice.
class Walk {
public:
    Walk(std::string_view firstBlock, const Encoding& encoding, Place target)
        : encoding_(encoding),
          target_(target),
          hasManyLineEnds_(StatedInDeclaration(NarrowBegin(firstBlock, encoding), "version") ==
                           "1.1"),
          toSkip_(encoding.markSize) {}

    /// Walks on towards the target. Returns how many bytes of the block were left when it was
    /// reached.
    std::size_t Pass(std::string_view block) {
        block.remove_prefix(std::min(std::exchange(toSkip_, 0), block.size()));
        while (!block.empty() && !IsReached()) {
            const auto byte = static_cast<unsigned char>(block.front());
            block.remove_prefix(1);
            if (encoding_.unitSize == 1) {
                PassByte(byte);
            } else {
                PassPartOfUnit(byte);
            }
        }
        return block.size();
    }

    /// @param target  not before the previous one
    void SetTarget(Place target) { target_ = target; }

    bool IsReached() const {
        return at_.line > target_.line ||
               (at_.line == target_.line && at_.column >= target_.column);
    }

    Place Result() const { return {target_.line, target_.column - SurplusOfTarget()}; }

private:
    /// The target may lie beyond the end of its line, or of the document.
    kelcore::uint64 SurplusOfTarget() const {
        return at_.line == target_.line ? surplus_ : at_.line > target_.line ? formerSurplus_ : 0;
    }

    void PassByte(unsigned char byte) {
        if (byte < 0x80) {
            PassCharacter(byte);
        } else if (byte >= 0xC0) {
            bytes_ = byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : 3;
            character_ = byte & (0x3F >> bytes_);
        } else if (bytes_ != 0) {
            character_ = character_ << 6 | (byte & 0x3F);
            if (--bytes_ == 0) {
                PassCharacter(character_);
            }
        }
    }

    void PassPartOfUnit(unsigned char byte) {
        const std::size_t place = encoding_.littleEndian ? bytes_ : encoding_.unitSize - 1 - bytes_;
        character_ |= static_cast<kelcore::uint32>(byte) << (8 * place);
        if (++bytes_ == encoding_.unitSize) {
            bytes_ = 0;
            PassCharacter(std::exchange(character_, 0));
        }
    }

    void PassCharacter(kelcore::uint32 character) {
        const bool behindReturn = std::exchange(afterReturn_, character == '\r');
        if (EndsLine(character)) {
            const bool isSecondOfPair =
                behindReturn && (character == '\n' || character == kNextLine);
            at_ = {at_.line + (isSecondOfPair ? 0 : 1), 1};
            formerSurplus_ = std::exchange(surplus_, 0);
            return;
        }
        const bool isLowHalf = encoding_.unitSize == 2 && (character & 0xFC00) == 0xDC00;
        const bool isBeyondUnit = character > 0xFFFF;
        at_.column += isBeyondUnit ? 2 : 1;
        surplus_ += isLowHalf || isBeyondUnit ? 1 : 0;
    }

    bool EndsLine(kelcore::uint32 character) const {
        return character == '\n' || character == '\r' ||
               (hasManyLineEnds_ && (character == kNextLine || character == kLineSeparator));
    }

    static constexpr kelcore::uint32 kNextLine = 0x85;
    static constexpr kelcore::uint32 kLineSeparator = 0x2028;

    Encoding encoding_;
    Place target_;
    bool hasManyLineEnds_;  // as in XML 1.1
    std::size_t toSkip_;
    Place at_{1, 1};
    kelcore::uint64 surplus_ = 0;        // in the line so far
    kelcore::uint64 formerSurplus_ = 0;  // in the line before
    bool afterReturn_ = false;
    kelcore::uint32 character_ = 0;  // the one that has begun
    std::size_t bytes_ = 0;          // left of it in UTF-8, seen of it in wide encodings
};

bool IsAtBegin(Place place) {
    return place.line == 0 || place.column <= 1;
}

}  // namespace

Place InCharacters(std::string_view document, Place place) {
    InCharacters(document, {&place, 1});
    return place;
}

void InCharacters(std::string_view document, std::span<Place> places) {
    const auto encoding = EncodingOf(document);
    if (!encoding) {
        return;
    }
    Walk walk(document, *encoding, {});
    for (Place& place : places) {
        if (!IsAtBegin(place)) {
            walk.SetTarget(place);
            document.remove_prefix(document.size() - walk.Pass(document));
            place = walk.Result();
        }
    }
}

Place InCharactersOfFile(const std::string& path, Place place) {
    std::error_code error;
    if (IsAtBegin(place) || !std::filesystem::is_regular_file(path, error)) {
        return place;
    }
    std::ifstream file(path, std::ios::binary);
    std::array<char, 1 << 16> block;
    const auto next = [&] {
        file.read(block.data(), block.size());
        return std::string_view(block.data(), static_cast<std::size_t>(file.gcount()));
    };
    std::string_view text = next();
    const auto encoding = EncodingOf(text);
    if (!encoding) {
        return place;
    }
    Walk walk(text, *encoding, place);
    while (!text.empty() && walk.Pass(text) == 0) {
        text = next();
    }
    return walk.Result();
}

}  // namespace toolkit
