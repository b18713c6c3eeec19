#pragma once

#include "platform/kelcore/replacement/Target.h"

namespace kelcore::replacement {

/// Gives the new file the owner, group, permissions and attributes of the old one, which must
/// exist. `FileReplacement` says what happens to properties that cannot be kept.
/// @throws file_exception  if the disk is full or fails
void TakeOverProperties(const Target& target, int file);

}  // namespace kelcore::replacement
