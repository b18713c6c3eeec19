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

/// The UTF-16 units of each of those.
inline constexpr std::size_t kNameUnits = 1024;

/// The bytes of one tag or processing instruction. The parser builds all of a tag before it tells
/// of it, at about ten times its size.
inline constexpr kelcore::uint64 kTagBytes = 1024 * 1024;

/// The bytes of a tag from which its attributes are counted before the parser tells of it. The
/// parser looks for attributes of one name in a time that grows with the square of their number.
inline constexpr kelcore::uint64 kUncountedBytes = 64 * 1024;

/// The bytes of anything that the parser tells of in one piece, in an encoding in which the markup
/// cannot be told from the bytes.
inline constexpr kelcore::uint64 kForeignBytes = 64 * 1024;

/// The bytes of one CDATA section or comment, or of any text that the parser tells of in one piece.
inline constexpr kelcore::uint64 kSectionBytes = 32 * 1024 * 1024;

/// The bytes of a file.
inline constexpr kelcore::uint64 kFileBytes = kelcore::uint64{2} * 1024 * 1024 * 1024;

/// What a host may tell a writer of; a save that is told of more fails before it begins on it.

/// The entries of all lists of a session together, as the host counts them, the empty ones
/// included. A file has no room for many more.
inline constexpr kelcore::uint64 kItems = 16 * 1024 * 1024;

/// The channels of a clip, and of the inputs or outputs of an effect. A clip's are all written when
/// the highest one is told of, so that few words make many.
inline constexpr kelcore::uint32 kChannels = 1024;

/// The bytes of one block, whose text is a third longer and must leave room in the file.
inline constexpr kelcore::uint64 kBlockBytes = 1024 * 1024 * 1024;

/// The UTF-16 units of one text, of which the file has room for no more than four such.
inline constexpr kelcore::uint32 kTextUnits = 512 * 1024 * 1024;

}  // namespace tses::limits
