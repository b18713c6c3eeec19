#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <tuple>
#include <vector>

#include "fuzz/ByteSource.h"
#include "fuzz/PluginUnderTest.h"
#include "platform/kelcore/Strings.h"
#include "session/Schema.h"

// Saves and reads sessions with arbitrary values in every field. Saving and reading once more must
// give the same session in the same bytes.

namespace {

using orvo::Schema;

/// Fills every field of a model, driven by the same tables as the JSON.
class Filler {
public:
    explicit Filler(fuzz::ByteSource& source) : source_(source) {}

    void Fill(bool& value) { value = source_.Choose(2) != 0; }
    template <class Number>
    requires std::is_arithmetic_v<Number>
    void Fill(Number& value) {
        value = source_.Choose(4) != 0 ? static_cast<Number>(source_.Take<std::uint8_t>())
                                       : source_.Take<Number>();
    }
    template <class Code>
    requires std::is_enum_v<Code>
    void Fill(Code& code) {
        std::underlying_type_t<Code> number{};
        Fill(number);
        code = Code{number};
    }
    void Fill(std::string& value) { value = kelcore::UTF16to8(source_.Text()); }
    template <class Element>
    void Fill(std::vector<Element>& value) {
        for (std::size_t count = Few(); count > 0; --count) {
            Fill(value.emplace_back());
        }
    }
    template <class Held>
    void Fill(std::optional<Held>& value) {
        if (source_.Choose(2) != 0) {
            Fill(value.emplace());
        }
    }
    template <class Held>
    void Fill(std::map<kelcore::uint32, Held>& value) {
        for (std::size_t count = Few(); count > 0; --count) {
            Fill(value[source_.Take<std::uint8_t>()]);
        }
    }
    template <class Struct>
    requires requires { Schema<Struct>::kRows; }
    void Fill(Struct& value) {
        orvo::ForEachRow<Struct>([&](const auto& row) { Fill(value.*row.member); });
    }

private:
    std::size_t Few() { return source_.IsEmpty() ? 0 : source_.Choose(4); }

    fuzz::ByteSource& source_;
};

/// A reader creates nothing for the id that means "no id".
template <class Thing>
void GiveIds(std::vector<Thing>& things) {
    for (Thing& thing : things) {
        thing.id = std::min(thing.id, orvo::kNoId - 1);
    }
}

orvo::Session AnySession(fuzz::ByteSource source) {
    orvo::Session session;
    Filler(source).Fill(session);
    GiveIds(session.files);
    GiveIds(session.videoTracks);
    GiveIds(session.audioTracks);
    return session;
}

fuzz::Saved Save(const orvo::Session& session) {
    fuzz::Saved saved = fuzz::SaveSession(session);
    if (saved.result != tses::SessionResult::Ok) {
        fuzz::Fail("a session could not be saved");
    }
    return saved;
}

orvo::Session Read(const fuzz::Saved& saved) {
    refhost::ReadResult read = fuzz::ReadDocument(saved.document);
    if (read.result != tses::SessionResult::Ok) {
        fuzz::Fail("a saved session could not be read");
    }
    return std::move(read.session);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Saved first = Save(AnySession(fuzz::ByteSource(data, size)));
    const orvo::Session session = Read(first);
    const fuzz::Saved second = Save(session);
    // Once a session or a document comes back unchanged, further rounds cannot change it.
    if (second.document == first.document) {
        return 0;
    }
    const orvo::Session again = Read(second);
    if (!(again == session) && Save(again).document != second.document) {
        fuzz::Fail("a session that was read changed when saved");
    }
    return 0;
}
