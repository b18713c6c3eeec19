#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "toolkit/DocumentScan.h"

namespace toolkit {

/// In front of a text that is UTF-8; it may be left out.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Whether "<" is the byte of that value in this document, as it is in every encoding but the wide
/// ones.
bool HasByteSizedMarkup(std::string_view document);

/// What the XML declaration of a document with byte-sized markup states as its "encoding" or
/// "version", in lower case; empty if it does not.
std::string StatedInDeclaration(std::string_view document, std::string_view name);

/// Whether the characters of a document with byte-sized markup are UTF-8, as far as its XML
/// declaration tells.
bool StatesUtf8(std::string_view document);

/// How many line ends there are: CR LF is one, as CR and LF alone are.
kelcore::uint64 CountLineEnds(std::string_view text);

/// How many characters of UTF-8 begin in the text.
kelcore::uint64 CountCharacters(std::string_view text);

/// The column of a byte of a document whose characters are UTF-8, a byte order mark not counted.
kelcore::uint64 ColumnOf(std::string_view document, std::size_t offset);

/// How many bytes the character of UTF-8 at the begin of a text has that is not empty; 0 if it is
/// none.
std::size_t CharacterSize(std::string_view text);

/// Where the first byte stands that is part of no character of UTF-8. None in a document that is
/// wide or that states another encoding.
std::optional<std::size_t> FindMalformedUtf8(std::string_view document);

}  // namespace toolkit
