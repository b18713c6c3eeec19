#include "toolkit/CharacterPlaces.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>
#include <utility>

#include "platform/kelcore/TextUnits.h"
#include "platform/kelcore/Unicode.h"
#include "toolkit/TextPlaces.h"

namespace toolkit {
namespace {

/// No value if the bytes of a document are not UTF-8.
std::optional<kelcore::TextUnits> UnitsOf(std::string_view document) {
    const kelcore::TextUnits units = kelcore::RecogniseTextUnits(document);
    const bool isForeign = !StatesUtf8(document) || document.starts_with(kelcore::kEbcdicLess);
    return units.size == 1 && isForeign ? std::nullopt : std::optional(units);
}

/// The beginning of a document, with its XML declaration, in single bytes.
std::string NarrowBegin(std::string_view document, const kelcore::TextUnits& units) {
    constexpr std::size_t kEnough = 1024;
    std::string narrow;
    for (const char byte : document.substr(units.markSize, kEnough)) {
        if (byte != 0) {
            narrow += byte;
        }
    }
    return narrow;
}

/// Walks through a document to a place, block by block, and counts what the parser counts twice.
class Walk {
public:
    Walk(std::string_view firstBlock, const kelcore::TextUnits& units, Place target)
        : units_(units),
          target_(target),
          hasManyLineEnds_(StatedInDeclaration(NarrowBegin(firstBlock, units), "version") == "1.1"),
          toSkip_(units.markSize) {}

    /// Walks on towards the target. Returns how many bytes of the block were left when it was
    /// reached.
    std::size_t Pass(std::string_view block) {
        block.remove_prefix(std::min(std::exchange(toSkip_, 0), block.size()));
        while (!block.empty() && !IsReached()) {
            const auto byte = static_cast<unsigned char>(block.front());
            block.remove_prefix(1);
            if (units_.size == 1) {
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
        const std::size_t place = units_.littleEndian ? bytes_ : units_.size - 1 - bytes_;
        character_ |= static_cast<kelcore::uint32>(byte) << (8 * place);
        if (++bytes_ == units_.size) {
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
        const bool isLowHalf = units_.size == 2 && kelcore::unicode::IsLowSurrogate(character);
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

    kelcore::TextUnits units_;
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
    const auto units = UnitsOf(document);
    if (!units) {
        return;
    }
    Walk walk(document, *units, {});
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
    const auto units = UnitsOf(text);
    if (!units) {
        return place;
    }
    Walk walk(text, *units, place);
    while (!text.empty() && walk.Pass(text) == 0) {
        text = next();
    }
    return walk.Result();
}

}  // namespace toolkit
