#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include <orvo/Json.h>
#include "session/json/JsonWriter.h"

/// Sessions as JSON.
namespace orvo::json {

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

/// Reads a session, as `orvo::FromJson`.
/// @throws JsonError for malformed JSON; otherwise for the first unknown or repeated key or wrong
///         value; otherwise for a file or track without an id of its own.
Session Parse(const TextSource& source, const ByteProgress& progress = {});
Session Parse(std::string_view text);

/// Writes a session in any style, and then `end`.
void Write(const Session& session, JsonWriter::Style style, std::string_view end,
           const TextSink& sink, const ByteProgress& progress = {});

}  // namespace orvo::json
