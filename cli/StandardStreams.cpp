#include "cli/StandardStreams.h"

#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace cli {
namespace {

[[noreturn]] void Fail(const std::string& what) {
    throw std::system_error(errno, std::generic_category(), what);
}

/// What a signal removes; null for nothing.
std::atomic<const char*> removedAtSignal = nullptr;
static_assert(std::atomic<const char*>::is_always_lock_free);

void RemoveAndEnd(int signal) {
    ::unlink(removedAtSignal.load());
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

/// A signal that is ignored stays so.
void Handle(int signal, void (*from)(int), void (*to)(int)) {
    struct sigaction action {};
    ::sigaction(signal, nullptr, &action);
    if (action.sa_handler == from) {
        std::signal(signal, to);
    }
}

void HandleAll(void (*from)(int), void (*to)(int)) {
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
        Handle(signal, from, to);
    }
}

}  // namespace

RemovalAtSignal::RemovalAtSignal(const char* path) : former_(removedAtSignal.exchange(path)) {
    HandleAll(SIG_DFL, RemoveAndEnd);
}

RemovalAtSignal::~RemovalAtSignal() {
    if (former_ == nullptr) {
        HandleAll(RemoveAndEnd, SIG_DFL);
    }
    removedAtSignal = former_;
}

std::variant<std::string, toolkit::Problem> ReadStandardInput() {
    std::string content;
    std::array<char, 1 << 16> block;
    for (;;) {
        const ssize_t got = ::read(STDIN_FILENO, block.data(), block.size());
        if (got > 0) {
            content.append(block.data(), static_cast<std::size_t>(got));
        } else if (got == 0) {
            return content;
        } else if (errno != EINTR) {
            return toolkit::Problem{{}, "cannot be read", std::generic_category().message(errno)};
        }
    }
}

TemporarySession::TemporarySession()
    : path_((std::filesystem::current_path() / ".orvo-stream-XXXXXX").string()),
      removal_(path_.c_str()) {
    const int descriptor = ::mkstemp(path_.data());
    if (descriptor < 0) {
        Fail("a temporary file in the working directory");
    }
    ::close(descriptor);
}

TemporarySession::~TemporarySession() {
    ::unlink(path_.c_str());
}

void TemporarySession::Write(const std::string& content) const {
    std::FILE* const file = std::fopen(path_.c_str(), "wb");
    if (file == nullptr) {
        Fail(path_);
    }
    const bool written = std::fwrite(content.data(), 1, content.size(), file) == content.size();
    if ((std::fclose(file) != 0) || !written) {
        Fail(path_);
    }
}

}  // namespace cli
