#include "cli/StandardStreams.h"

#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace cli {
namespace {

/// The code of the first write to standard output that failed; 0 for none.
int outputFailure = 0;

/// An action on standard output has ended, well or not.
void CheckOutput(bool good) {
    if (!good && outputFailure == 0) {
        outputFailure = errno;
    }
    if (outputFailure != 0) {
        throw OutputError(outputFailure, std::generic_category());
    }
}

/// A call of the system has failed.
[[noreturn]] void Fail(const std::string& what, const std::string& advice) {
    throw std::runtime_error(what + ": " + std::generic_category().message(errno) + "; " + advice);
}

/// Whether it could; if not, errno says why.
bool WriteWhole(const std::string& path, const std::string& content) {
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) {
        return false;
    }
    const bool written = std::fwrite(content.data(), 1, content.size(), file) == content.size();
    return std::fclose(file) == 0 && written;
}

/// The full path of a file in the working directory.
std::string PathInWorkingDirectory(const char* name) {
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::current_path(error);
    return error ? name : (folder / name).string();
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
    for (const int signal : {SIGHUP, SIGINT, SIGPIPE, SIGQUIT, SIGTERM}) {
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

void Print(std::string_view text) {
    CheckOutput(outputFailure == 0 &&
                std::fwrite(text.data(), 1, text.size(), stdout) == text.size());
}

void FlushOutput() {
    CheckOutput(std::fflush(stdout) == 0 && std::ferror(stdout) == 0);
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
    : path_(PathInWorkingDirectory(".orvo-stream-XXXXXX")), removal_(path_.c_str()) {
    const int descriptor = ::mkstemp(path_.data());
    if (descriptor < 0) {
        Fail("a temporary file cannot be made in the working directory",
             "run it in a folder that may be written to");
    }
    ::close(descriptor);
}

TemporarySession::~TemporarySession() {
    ::unlink(path_.c_str());
}

void TemporarySession::Write(const std::string& content) const {
    if (!WriteWhole(path_, content)) {
        Fail("the temporary file " + path_ + " cannot be written",
             "make room there, or run it in another folder");
    }
}

}  // namespace cli
