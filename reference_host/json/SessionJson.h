#pragma once

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

/// What is wrong with a JSON text: where (line and column for what is no JSON, else the path of the
/// value, as "/files/2/id"), what, and what to do.
class JsonError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
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
