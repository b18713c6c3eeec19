#pragma once

#include "platform/kelcore/replacement/Target.h"

namespace kelcore::replacement {

/// Gives the new file the owner, group, permissions and attributes of the old one, which must be
/// there; `FileReplacement` says what becomes of those that cannot be had.
/// @throws file_exception  where there is no room for one, or the disk fails
void TakeOverProperties(const Target& target, int file);

}  // namespace kelcore::replacement
