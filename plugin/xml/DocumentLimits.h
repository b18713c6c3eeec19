#pragma once

#include <cstddef>

#include "platform/kelcore/Types.h"

/// What a document may ask of a reader. No session comes near any of it, and whatever the writer
/// saves keeps within it; a document beyond it is refused where it first goes beyond.
namespace tses::limits {

/// How deep elements stand in each other, the root counted.
inline constexpr std::size_t kDepth = 256;

/// The attributes of one element, and likewise the namespace prefixes in force at one place.
inline constexpr std::size_t kAttributes = 256;
inline constexpr std::size_t kPrefixes = 256;

/// The different names of elements, and likewise of prefixes and of namespaces. The parser keeps
/// them all to the end, at some 300 bytes each.
inline constexpr std::size_t kNames = 1024;

/// The bytes of one tag or processing instruction. The parser builds all of a tag before it tells
/// of it, at about ten times its size.
inline constexpr kelcore::uint64 kTagBytes = 1024 * 1024;

/// The bytes of one CDATA section or comment, or of any text that the parser tells of in one piece.
inline constexpr kelcore::uint64 kSectionBytes = 32 * 1024 * 1024;

/// The bytes of a file.
inline constexpr kelcore::uint64 kFileBytes = kelcore::uint64{2} * 1024 * 1024 * 1024;

}  // namespace tses::limits
