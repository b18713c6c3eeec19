#pragma once

#include "reference_host/json/Forms.h"
#include "reference_host/json/SessionJson.h"

namespace refhost {

/// Reads a JSON document into a value, part by part, in a time that grows with the length of the
/// document.
/// @throws JsonError  as `FromJson`
void ReadDocument(const JsonSource& source, const ByteProgress& progress, Target value);

/// A source of a text that is there as a whole.
class TextSource {
public:
    explicit TextSource(std::string_view text) : rest_(text) {}

    std::string_view operator()();

private:
    std::string_view rest_;
};

}  // namespace refhost
