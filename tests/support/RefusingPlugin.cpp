#include <cstdlib>
#include <iterator>
#include <string_view>

#include "host/SessionInterface.h"

namespace {

/// By the number of the selector.
constexpr std::string_view kSelectors[] = {"Initialize",  "Reserved",    "Terminate",
                                           "SetFilePath", "ReadSession", "WriteSession"};

bool IsRefused(std::int32_t selector) {
    const char* const refused = std::getenv("ORVO_REFUSES");
    return refused != nullptr && selector >= 0 && selector < std::ssize(kSelectors) &&
           kSelectors[selector] == refused;
}

}  // namespace

/// Refuses the one request that the environment variable ORVO_REFUSES names, and does nothing else.
extern "C" std::int32_t SessionInterface(std::int32_t selector, void* /*argument*/) {
    return static_cast<std::int32_t>(IsRefused(selector) ? tses::SessionResult::NotImplemented
                                                         : tses::SessionResult::Ok);
}
