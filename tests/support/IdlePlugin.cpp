#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string_view>
#include <thread>

#include "host/SessionInterface.h"

namespace {

/// The index is the number of the selector.
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

/// Sends SIGTERM to the process, as a user would. If no other thread has taken it after a while,
/// says so and takes it on this thread.
void EndIfAsked() {
    if (std::getenv("ORVO_ENDS") == nullptr) {
        return;
    }
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    ::kill(::getpid(), SIGTERM);
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    std::puts("the main thread takes the signal");
    std::fflush(stdout);
    ::pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

}  // namespace

/// Reads and writes nothing. Refuses the request that the environment variable ORVO_REFUSES names.
/// On a read, moves the file in ORVO_MOVES to ORVO_MOVES_TO. If ORVO_ENDS is set, ends the process
/// during a read as a user would, and prints a line if the reading thread takes the signal.
extern "C" std::int32_t SessionInterface(std::int32_t selector, void* /*argument*/) {
    if (selector == static_cast<std::int32_t>(tses::SessionSelector::ReadSession)) {
        MoveFile();
        EndIfAsked();
    }
    return static_cast<std::int32_t>(IsRefused(selector) ? tses::SessionResult::NotImplemented
                                                         : tses::SessionResult::Ok);
}
