#pragma once

#include <cstddef>
#include <string>

#include "platform/kelcore/Types.h"

/// The limits of a document. No session comes near them, and everything that the writer saves keeps
/// within them. A document is refused at the first place that exceeds one.
namespace tses::limits {

inline constexpr kelcore::uint64 kKiB = 1024;
inline constexpr kelcore::uint64 kMiB = 1024 * kKiB;
inline constexpr kelcore::uint64 kGiB = 1024 * kMiB;

/// How deep elements may be nested, the root included.
inline constexpr std::size_t kDepth = 256;

/// The attributes of one element, and the namespace prefixes in force at one place.
inline constexpr std::size_t kAttributes = 256;
inline constexpr std::size_t kPrefixes = 256;

/// The different names of elements, of prefixes and of namespaces. The parser keeps all of them
/// until the end, at some 300 bytes each.
inline constexpr std::size_t kNames = 1024;

/// The UTF-16 units of each such name.
inline constexpr std::size_t kNameUnits = 1024;

/// The bytes of one tag or processing instruction. The parser builds all of a tag before it reports
/// it, in about ten times its size.
inline constexpr kelcore::uint64 kTagBytes = kMiB;

/// The bytes of a tag beyond which its attributes are counted before the parser reports it. The
/// parser looks for attributes of the same name in a time that grows with the square of their
/// number.
inline constexpr kelcore::uint64 kUncountedBytes = 64 * kKiB;

/// The bytes of anything that the parser reports in one piece, in an encoding whose bytes do not
/// show the markup.
inline constexpr kelcore::uint64 kForeignBytes = 64 * kKiB;

/// The bytes of one CDATA section or comment, or of any text that the parser reports in one piece.
inline constexpr kelcore::uint64 kSectionBytes = 32 * kMiB;

/// The bytes of a file.
inline constexpr kelcore::uint64 kFileBytes = 2 * kGiB;

// What a host may report to a writer. If it reports more, the save fails before it asks for the
// list, the block or the text.

/// The entries of all lists of a session together, as the host counts them, including empty ones. A
/// file has no room for many more.
inline constexpr kelcore::uint64 kItems = 16777216;

/// The channels of a clip, and of the inputs or outputs of an effect. A clip's channels are all
/// written up to the highest one, so a short document could ask for very many.
inline constexpr kelcore::uint32 kChannels = 1024;

/// The bytes of one block. Its text is a third longer and must leave room in the file.
inline constexpr kelcore::uint64 kBlockBytes = kGiB;

/// The UTF-16 units of one text. A file has no room for more than four texts of that length.
inline constexpr kelcore::uint32 kTextUnits = 512 * kMiB;

/// A number of bytes for messages: "1 MiB". A multiple of KiB.
std::string InWords(kelcore::uint64 bytes);

}  // namespace tses::limits
