#include "platform/kelcore/FileReplacement.h"

#include <pthread.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>

#include "platform/kelcore/replacement/Properties.h"
#include "platform/kelcore/replacement/SystemCalls.h"

namespace kelcore {

using replacement::Describe;
using replacement::Fail;
using replacement::FailWith;
using replacement::Uninterrupted;

namespace {

/// Blocks SIGXFSZ in this thread during its lifetime: exceeding the limit on file sizes then fails
/// the write instead of ending the process.
class WithoutSizeSignal {
public:
    WithoutSizeSignal() {
        sigset_t pending;
        sigpending(&pending);
        wasPending_ = sigismember(&pending, SIGXFSZ) == 1;
        sigemptyset(&signal_);
        sigaddset(&signal_, SIGXFSZ);
        pthread_sigmask(SIG_BLOCK, &signal_, &before_);
    }
    ~WithoutSizeSignal() {
        if (!wasPending_) {
            const timespec atOnce{};
            sigtimedwait(&signal_, nullptr, &atOnce);
        }
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }
    WithoutSizeSignal(const WithoutSizeSignal&) = delete;
    WithoutSizeSignal& operator=(const WithoutSizeSignal&) = delete;

private:
    bool wasPending_;
    sigset_t signal_;
    sigset_t before_;
};

}  // namespace

FileReplacement::FileReplacement(const std::string& path)
    : target_(replacement::FindTarget(path)), temporary_(target_) {
    if (target_.old) {
        replacement::TakeOverProperties(target_, temporary_.Number());
    }
}

void FileReplacement::Write(const void* data, std::size_t size) {
    const WithoutSizeSignal withoutSizeSignal;
    const char* rest = static_cast<const char*>(data);
    while (size > 0) {
        const ssize_t written =
            Uninterrupted([&] { return write(temporary_.Number(), rest, size); });
        if (written < 0) {
            FailWith(errno);
        }
        if (written == 0) {
            FailWith(ENOSPC);
        }
        rest += written;
        size -= static_cast<std::size_t>(written);
    }
}

void FileReplacement::Commit() {
    if (Uninterrupted([this] { return fsync(temporary_.Number()); }) != 0) {
        FailWith(errno);
    }
    temporary_.RenameTo(target_.name);
    SyncFolder();
}

void FileReplacement::SyncFolder() const {
    const int result = Uninterrupted([this] {
        return target_.folderCanBeSynced ? fsync(target_.folder.Number())
                                         : syncfs(temporary_.Number());
    });
    // File systems that need no such call report one of these errors.
    if (result != 0 && errno != EINVAL && errno != ENOTSUP) {
        const int systemError = errno;
        Fail("the new content is in place, but may not survive a power loss: " +
                 Describe(systemError),
             systemError);
    }
}

}  // namespace kelcore
