#pragma once

#include "plugin/xml/DocumentEncoding.h"

namespace tses {

/// Whether a document in the encoding that the parser knows as `name` has its markup where
/// `encoding`, which its first bytes look like, says: ASCII alone looks like ASCII there. Among the
/// encodings of single bytes none that passes can express half of a character.
///
/// Of single bytes the parser's own decoder is asked, since an encoding has many names, and a name
/// may lead anywhere. UTF-8 and wider units are known by name.
/// @param name  ends with a zero, as the parser has it
bool HasMarkupInPlace(const char16_t* name, DocumentEncoding encoding);

}  // namespace tses
