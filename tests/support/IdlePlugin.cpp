#include <cstdlib>
#include <filesystem>
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

void MoveFile() {
    const char* const file = std::getenv("ORVO_MOVES");
    const char* const target = std::getenv("ORVO_MOVES_TO");
    if (file != nullptr && target != nullptr) {
        std::filesystem::rename(file, target);
    }
}

}  // namespace

/// Reads and writes nothing. Refuses the one request that the environment variable ORVO_REFUSES
/// names; moves, when it is to read, the file that ORVO_MOVES names to where ORVO_MOVES_TO says.
extern "C" std::int32_t SessionInterface(std::int32_t selector, void* /*argument*/) {
    if (selector == static_cast<std::int32_t>(tses::SessionSelector::ReadSession)) {
        MoveFile();
    }
    return static_cast<std::int32_t>(IsRefused(selector) ? tses::SessionResult::NotImplemented
                                                         : tses::SessionResult::Ok);
}
