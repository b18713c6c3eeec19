#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "reference_host/model/Session.h"

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

/// The session, every key of it, indented by two blanks and ended by a line feed. `FromJson` gives
/// the same session back.
std::string ToJson(const model::Session& session);

/// @throws JsonError for malformed JSON, an unknown or repeated key, a value of the wrong type, a
///         number that its field cannot hold, and a file or track that has no id of its own among
///         the files, video tracks or audio tracks. An absent key takes the model's default.
model::Session FromJson(std::string_view text);

/// Every key of every object that `ToJson` writes, as "Object.key" ("File.id"), in order.
std::vector<std::string> JsonKeys();

}  // namespace refhost
