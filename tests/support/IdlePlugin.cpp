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

/// As a user would, but first says so after some time in which a thread that does not block the
/// signal takes it.
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

/// Reads and writes nothing. Refuses the one request that the environment variable ORVO_REFUSES
/// names. When it is to read, moves the file that ORVO_MOVES names to where ORVO_MOVES_TO says, and
/// ends the process as a user would if ORVO_ENDS is set, with a line on standard output if it is
/// the thread that reads which takes the signal.
extern "C" std::int32_t SessionInterface(std::int32_t selector, void* /*argument*/) {
    if (selector == static_cast<std::int32_t>(tses::SessionSelector::ReadSession)) {
        MoveFile();
        EndIfAsked();
    }
    return static_cast<std::int32_t>(IsRefused(selector) ? tses::SessionResult::NotImplemented
                                                         : tses::SessionResult::Ok);
}
