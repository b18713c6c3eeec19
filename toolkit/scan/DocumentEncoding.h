#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "platform/kelcore/TextUnits.h"

namespace toolkit {

/// How a document stores its characters: as UTF-8, in wider units, or one in a byte. Session files
/// in other encodings cannot be read.
class DocumentEncoding {
public:
    /// The encoding of a document that can be read; no value if it has another one. To find out
    /// what bytes mean in an encoding of single bytes, starts the XML library and stops it again.
    static std::optional<DocumentEncoding> Of(std::string_view document);

    kelcore::TextUnits Units() const { return units_; }

    /// Whether it is neither UTF-8 nor wider.
    bool IsByTable() const { return table_.has_value(); }

    /// @param bytes  whole characters
    std::u16string Decode(std::string_view bytes) const;

    bool CanEncode(char32_t character) const;

    /// @param text  of characters that can be encoded; surrogates are paired
    std::string Encode(std::u16string_view text) const;

private:
    /// The character of each byte, or U+FFFD.
    using Table = std::array<char16_t, 256>;

    explicit DocumentEncoding(kelcore::TextUnits units) : units_(units) {}

    static std::optional<Table> MakeTable(const std::string& name);

    std::u16string DecodeWide(std::string_view bytes) const;
    std::string EncodeWide(std::u16string_view text) const;
    std::string EncodeByTable(std::u16string_view text) const;

    kelcore::TextUnits units_;
    std::optional<Table> table_;
};

}  // namespace toolkit
