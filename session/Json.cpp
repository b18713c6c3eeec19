#include <orvo/Json.h>

#include <utility>

#include "session/json/Encode.h"
#include "session/json/SessionJson.h"

namespace orvo {
namespace {

constexpr auto kLayout = json::JsonWriter::Layout::Indented;

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

void ToJson(const Session& session, const TextSink& sink, const ByteProgress& progress) {
    json::WriteValue(session, kLayout, "\n", sink, progress);
}

std::string ToJson(const Session& session) {
    return json::Encoded(session, kLayout, "\n");
}

ReadResult FromJson(const TextSource& source, const ByteProgress& progress) {
    return ResultOf([&] { return json::Parse(source, progress); });
}

ReadResult FromJson(std::string_view text) {
    return ResultOf([&] { return json::Parse(text); });
}

}  // namespace orvo
