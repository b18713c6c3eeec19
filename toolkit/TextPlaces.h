#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "toolkit/DocumentScan.h"

namespace toolkit {

/// Whether "<" is a single byte of its ASCII value in this document, as in every encoding except
/// the wide ones.
bool HasByteSizedMarkup(std::string_view document);

/// What the XML declaration of a document with byte-sized markup states as its "encoding" or
/// "version", in lower case; empty if it states nothing.
std::string StatedInDeclaration(std::string_view document, std::string_view name);

/// Whether the characters of a document with byte-sized markup are UTF-8, as far as its XML
/// declaration says.
bool StatesUtf8(std::string_view document);

/// The number of line ends. CR LF is one, and so are CR and LF alone.
kelcore::uint64 CountLineEnds(std::string_view text);

/// The number of UTF-8 characters that begin in the text.
kelcore::uint64 CountCharacters(std::string_view text);

/// The column of a byte in a UTF-8 document. A byte order mark does not count.
kelcore::uint64 ColumnOf(std::string_view document, std::size_t offset);

/// The size in bytes of the UTF-8 character at the beginning of a text that is not empty; 0 if
/// there is no valid character.
std::size_t CharacterSize(std::string_view text);

/// The place of the first byte that belongs to no UTF-8 character. No value for a document that is
/// wide or that states another encoding.
std::optional<std::size_t> FindMalformedUtf8(std::string_view document);

}  // namespace toolkit
