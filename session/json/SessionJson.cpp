#include "session/json/SessionJson.h"

#include "session/OwnIds.h"
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

}  // namespace orvo::json
