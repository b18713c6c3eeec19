#include <csignal>
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

void EndIfAsked() {
    if (std::getenv("ORVO_ENDS") != nullptr) {
        std::raise(SIGTERM);
    }
}

}  // namespace

/// Reads and writes nothing. Refuses the one request that the environment variable ORVO_REFUSES
/// names. When it is to read, moves the file that ORVO_MOVES names to where ORVO_MOVES_TO says, and
/// ends the process as a user would if ORVO_ENDS is set.
extern "C" std::int32_t SessionInterface(std::int32_t selector, void* /*argument*/) {
    if (selector == static_cast<std::int32_t>(tses::SessionSelector::ReadSession)) {
        MoveFile();
        EndIfAsked();
    }
    return static_cast<std::int32_t>(IsRefused(selector) ? tses::SessionResult::NotImplemented
                                                         : tses::SessionResult::Ok);
}
