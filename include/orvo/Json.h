#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include <orvo/Api.h>
#include <orvo/Session.h>

/// Sessions as JSON (UTF-8), whole and in both directions. docs/json.md describes every key, and
/// the JSON Schema that is installed as share/orvo/orvo-session.schema.json.
///
/// Values of enumerations stand as their words; those without a word as their numbers.
///
/// An unpaired surrogate in a text stands as its escape ("\ud800"). NaN and the infinities are
/// written as the texts "NaN", "Infinity" and "-Infinity". Integers are exact. Byte blocks are
/// Base64 texts.
///
/// All functions may run in any number of threads. They throw std::bad_alloc, and what the
/// caller's own functions throw.
namespace orvo {

/// Takes the next block of a text.
using TextSink = std::function<void(std::string_view block)>;

/// Gives the next block of a text, of any size, which stays until the next call; an empty one at
/// the end.
using TextSource = std::function<std::string_view()>;

/// Called after each block with the bytes written or read so far.
using ByteProgress = std::function<void(std::uint64_t bytes)>;

struct JsonOptions {
    /// Writes every key. Otherwise keys at their default are left out; `FromJson` restores them.
    bool full = false;

    ByteProgress progress{};
};

/// Writes a session, indented by two blanks and ended by a line feed, in blocks of about 64 KiB; no
/// more than a block is held. `FromJson` gives an equal session back, with these exceptions: it
/// refuses a session in which two files, two video tracks or two audio tracks share an id, or one
/// of them has the id `kNoId`; malformed UTF-8 comes back as U+FFFD; and a NaN equals nothing.
ORVO_API void ToJson(const Session& session, const TextSink& sink, const JsonOptions& options = {});

/// The same as one text.
ORVO_API std::string ToJson(const Session& session, const JsonOptions& options = {});

/// Reads a session, and holds no more of the text than a block and the value that is read. An
/// absent key takes the default of the session's member. Also reads texts of earlier versions, with
/// former names of keys and with numbers in place of words.
///
/// Malformed JSON is reported with its place; columns count characters, without a byte order mark.
/// Otherwise the first unknown key, repeated key or wrong value is reported, and otherwise the
/// first file or track without an id of its own. These messages begin with the path of the value,
/// such as "/files/2/id". Paths of media are kept as they are, even relative ones and URLs.
ORVO_API ReadResult FromJson(const TextSource& source, const ByteProgress& progress = {});
ORVO_API ReadResult FromJson(std::string_view text);

}  // namespace orvo
