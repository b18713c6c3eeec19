#pragma once

#include <span>
#include <string>
#include <string_view>

#include "toolkit/DocumentScan.h"

// The parser counts columns in UTF-16 units, so an emoji counts as two. People count characters.

namespace toolkit {

/// Converts a place of the parser in a document to a column in characters. In encodings other than
/// UTF-8 and the wide ones the place stays as it is: characters of two units hardly occur there.
Place InCharacters(std::string_view document, Place place);

/// The same for many places in the document's order, in one pass over the document.
void InCharacters(std::string_view document, std::span<Place> places);

/// The same for a document in a file. Reads only what comes before the place. The place stays as it
/// is if the file cannot be read.
/// @param path  as the system's calls take it
Place InCharactersOfFile(const std::string& path, Place place);

}  // namespace toolkit
