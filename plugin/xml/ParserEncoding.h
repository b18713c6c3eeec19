#pragma once

#include "platform/kelcore/TextUnits.h"

namespace tses {

/// Whether a document in the encoding `name` has its markup where `encoding` says, which was
/// recognised from the first bytes: only ASCII looks like ASCII there. No encoding of single bytes
/// that passes can express half of a surrogate pair.
///
/// An encoding of single bytes has many names, and a name may lead anywhere, so this asks the
/// parser's own decoder. It recognises UTF-8 and wider units by name.
/// @param name  as the parser knows it; ends with a zero
bool HasMarkupInPlace(const char16_t* name, kelcore::TextUnits units);

}  // namespace tses
