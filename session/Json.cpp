#include <orvo/Json.h>

#include <utility>

#include "session/json/SessionJson.h"

namespace orvo {
namespace {

json::JsonWriter::Style StyleOf(const JsonOptions& options) {
    return {.isFull = options.full};
}

Message MessageOf(const json::JsonError& error) {
    const auto place = error.Place().value_or(json::TextPlace{0, 0});
    return {.line = place.line, .column = place.column, .what = error.what()};
}

/// What `parse` gives, or why it gives nothing.
template <class Parse>
ReadResult ResultOf(const Parse& parse) {
    ReadResult result;
    try {
        result.session = parse();
        result.ok = true;
    } catch (const json::JsonError& error) {
        result.messages.push_back(MessageOf(error));
    }
    return result;
}

}  // namespace

void ToJson(const Session& session, const TextSink& sink, const JsonOptions& options) {
    json::Write(session, StyleOf(options), "\n", sink, options.progress);
}

std::string ToJson(const Session& session, const JsonOptions& options) {
    std::string text;
    ToJson(
        session, [&](std::string_view block) { text += block; }, options);
    return text;
}

ReadResult FromJson(const TextSource& source, const ByteProgress& progress) {
    return ResultOf([&] { return json::Parse(source, progress); });
}

ReadResult FromJson(std::string_view text) {
    return ResultOf([&] { return json::Parse(text); });
}

}  // namespace orvo
