#include <cstddef>
#include <cstdint>
#include <optional>

#include "fuzz/PluginUnderTest.h"
#include "session/json/SessionJson.h"

// Feeds arbitrary bytes to the JSON reader. It must refuse them with a message, or produce a
// session that survives a round trip through its own JSON.

namespace {

std::optional<orvo::Session> SessionOf(std::string_view text) {
    try {
        return orvo::json::Parse(text);
    } catch (const orvo::json::JsonError& error) {
        if (std::string_view(error.what()).empty()) {
            fuzz::Fail("refused without a message");
        }
        return std::nullopt;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (const auto session = SessionOf({reinterpret_cast<const char*>(data), size})) {
        const std::string json = orvo::ToJson(*session);
        const std::string full = orvo::ToJson(*session, {.full = true});
        if (orvo::ToJson(orvo::json::Parse(json)) != json ||
            orvo::ToJson(orvo::json::Parse(full)) != json) {
            fuzz::Fail("a session changed on its way through JSON");
        }
    }
    return 0;
}
