#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "session/json/SessionJson.h"

namespace orvo::test {

/// Gives a text byte by byte, so that a block ends everywhere.
TextSource ByteByByte(std::string_view text);

/// The error of a text, the same whether it is read whole or byte by byte; empty if it is a
/// session.
std::string ErrorOf(std::string_view text);

/// Where in the text its error stands; nothing for a value that is wrong in well-formed JSON.
std::optional<json::TextPlace> PlaceOfError(std::string_view text);

}  // namespace orvo::test
