#pragma once

#include <span>
#include <string>
#include <string_view>

#include "toolkit/DocumentScan.h"

// The parser counts columns in UTF-16 units, so that an emoji is two. People count characters.

namespace toolkit {

/// A place of the parser in a document, its column in characters. Encodings other than UTF-8 and
/// the wide ones have no character of two units that is worth a look: the place stays as it is.
Place InCharacters(std::string_view document, Place place);

/// The same for many places in the document's order, in one pass over the document.
void InCharacters(std::string_view document, std::span<Place> places);

/// The same for a document in a file, of which only what stands in front of the place is read. The
/// place stays as it is if the file cannot be read.
/// @param path  as the system's calls take it
Place InCharactersOfFile(const std::string& path, Place place);

}  // namespace toolkit
