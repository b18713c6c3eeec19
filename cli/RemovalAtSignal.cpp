#include "cli/RemovalAtSignal.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <climits>
#include <cstring>
#include <utility>

namespace cli {
namespace {

constexpr std::array kEndingSignals = {SIGHUP,  SIGINT,  SIGPIPE, SIGQUIT,   SIGTERM, SIGXCPU,
                                       SIGUSR1, SIGUSR2, SIGALRM, SIGVTALRM, SIGPROF};

/// The removals to perform, newest first.
std::atomic<const RemovalAtSignal*> newest = nullptr;
static_assert(std::atomic<const RemovalAtSignal*>::is_always_lock_free);

/// Leaves an ignored signal ignored.
void Handle(int signal, void (*from)(int), void (*to)(int)) {
    struct sigaction action {};
    ::sigaction(signal, nullptr, &action);
    if (action.sa_handler == from) {
        std::signal(signal, to);
    }
}

void HandleAll(void (*from)(int), void (*to)(int)) {
    for (const int signal : kEndingSignals) {
        Handle(signal, from, to);
    }
}

bool IsStep(const char* name) {
    return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

// Everything below runs in a signal handler and must not allocate.

/// Fits any path that the system accepts plus one name.
using PathBuffer = std::array<char, PATH_MAX + NAME_MAX + 2>;

/// Appends "/" and the name of an entry of the folder. Returns false if the folder is empty or not
/// a folder.
bool AppendEntry(PathBuffer& path, std::size_t& length) {
    const int folder = ::open(path.data(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (folder < 0) {
        return false;
    }
    alignas(dirent64) std::array<char, 4096> block;
    bool found = false;
    for (long got = 1; got > 0 && !found;) {
        got = ::syscall(SYS_getdents64, folder, block.data(), block.size());
        for (long at = 0; at < got && !found;) {
            const auto* const entry = reinterpret_cast<const dirent64*>(block.data() + at);
            const std::size_t size = std::strlen(entry->d_name);
            if (!IsStep(entry->d_name) && length + size + 2 <= path.size()) {
                path[length] = '/';
                std::memcpy(path.data() + length + 1, entry->d_name, size + 1);
                length += size + 1;
                found = true;
            }
            at += entry->d_reclen;
        }
    }
    ::close(folder);
    return found;
}

void CutLastName(PathBuffer& path, std::size_t& length) {
    while (path[--length] != '/') {
    }
    path[length] = '\0';
}

}  // namespace

void RemoveTree(const char* root) {
    PathBuffer path;
    const std::size_t rootLength = std::strlen(root);
    if (rootLength >= PATH_MAX || ::unlink(root) == 0) {
        return;
    }
    std::size_t length = rootLength;
    std::memcpy(path.data(), root, length + 1);
    for (;;) {
        if (AppendEntry(path, length)) {
            if (::unlink(path.data()) == 0) {
                CutLastName(path, length);
            }  // otherwise it is a folder; descend into it
        } else if (::rmdir(path.data()) != 0 || length == rootLength) {
            return;
        } else {
            CutLastName(path, length);
        }
    }
}

WithoutSignals::WithoutSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : kEndingSignals) {
        sigaddset(&signals, signal);
    }
    ::pthread_sigmask(SIG_BLOCK, &signals, &before_);
}

WithoutSignals::~WithoutSignals() {
    ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

RemovalAtSignal::RemovalAtSignal(std::string path)
    : path_(std::move(path)), former_(newest.exchange(this)) {
    HandleAll(SIG_DFL, RemoveAllAndEnd);
}

RemovalAtSignal::~RemovalAtSignal() {
    newest = former_;
    if (former_ == nullptr) {
        HandleAll(RemoveAllAndEnd, SIG_DFL);
    }
}

void RemovalAtSignal::RemoveAllAndEnd(int signal) {
    for (const RemovalAtSignal* removal = newest; removal != nullptr; removal = removal->former_) {
        RemoveTree(removal->path_.c_str());
    }
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

}  // namespace cli
