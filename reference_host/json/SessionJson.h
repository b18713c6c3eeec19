#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <orvo/Model.h>
#include "platform/kelcore/Types.h"

/// Sessions as JSON (UTF-8), whole and in both directions. docs/json.md describes every key.
///
/// A text may hold an unpaired surrogate, which stands as its escape ("\ud800"). A real number that
/// is none stands as "NaN", "Infinity" or "-Infinity". Integers are exact. Byte blocks are Base64
/// texts.
namespace refhost {

/// Both from 1; columns count characters, a byte order mark not among them.
struct TextPlace {
    std::size_t line = 1;
    std::size_t column = 1;

    friend bool operator==(const TextPlace&, const TextPlace&) = default;
};

/// What is wrong with a JSON text, and what to do. In front stands the path of the value that is
/// meant, as "/files/2/id", unless the text is no JSON at all: then it has a place.
class JsonError : public std::runtime_error {
public:
    explicit JsonError(const std::string& message, std::optional<TextPlace> place = std::nullopt)
        : std::runtime_error(message), place_(place) {}

    /// Of what is no JSON; none where a value is wrong.
    const std::optional<TextPlace>& Place() const { return place_; }

private:
    std::optional<TextPlace> place_;
};

/// Takes the next block of a text. What it throws ends the writing.
using JsonSink = std::function<void(std::string_view block)>;

/// Gives the next block of a text, of any size, which stays until the next call; an empty one at
/// the end. What it throws ends the reading.
using JsonSource = std::function<std::string_view()>;

/// Called after each block with the bytes written or read so far.
using ByteProgress = std::function<void(kelcore::uint64 bytes)>;

/// Writes a session, every key of it, indented by two blanks and ended by a line feed, in blocks of
/// about 64 KiB; no more than a block is held. `FromJson` gives the same session back.
void ToJson(const orvo::Session& session, const JsonSink& sink, const ByteProgress& progress = {});

/// The same as one text.
std::string ToJson(const orvo::Session& session);

/// Reads a session, and holds no more of the text than a block and the value that is read.
/// An absent key takes the model's default.
/// @throws JsonError for malformed JSON; otherwise for the first unknown or repeated key or wrong
///         value; otherwise for a file or track without an id of its own.
orvo::Session FromJson(const JsonSource& source, const ByteProgress& progress = {});
orvo::Session FromJson(std::string_view text);

/// Every key of every object that `ToJson` writes, as "Object.key" ("File.id"), in order.
std::vector<std::string> JsonKeys();

}  // namespace refhost
