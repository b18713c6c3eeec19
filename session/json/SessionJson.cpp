#include "session/json/SessionJson.h"

#include "session/OwnIds.h"
#include "session/json/Encode.h"
#include "session/json/JsonReader.h"

namespace orvo::json {

Session Parse(const TextSource& source, const ByteProgress& progress) {
    Session session;
    ReadDocument(source, progress, TargetOf(session));
    if (const auto found = FindIdThatIsNoOwn(session)) {
        throw JsonError(found->what + "; " + found->advice);
    }
    return session;
}

Session Parse(std::string_view text) {
    return Parse(WholeText(text));
}

void Write(const Session& session, JsonWriter::Style style, std::string_view end,
           const TextSink& sink, const ByteProgress& progress) {
    WriteValue(session, style, end, sink, progress);
}

}  // namespace orvo::json
