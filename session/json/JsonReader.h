#pragma once

#include "session/json/Forms.h"
#include "session/json/SessionJson.h"

namespace orvo::json {

/// Reads a JSON document into a value, part by part, in a time that grows with the length of the
/// document.
/// @throws JsonError  as `Parse`
void ReadDocument(const TextSource& source, const ByteProgress& progress, Target value);

/// A source for a text that is in memory.
class WholeText {
public:
    explicit WholeText(std::string_view text) : rest_(text) {}

    std::string_view operator()();

private:
    std::string_view rest_;
};

}  // namespace orvo::json
