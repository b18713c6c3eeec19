#include "platform/kelcore/FileReplacement.h"

#include <unistd.h>

#include <cerrno>

#include "platform/kelcore/replacement/Properties.h"
#include "platform/kelcore/replacement/SystemCalls.h"

namespace kelcore {

using replacement::Describe;
using replacement::Fail;
using replacement::FailWith;
using replacement::Uninterrupted;

FileReplacement::FileReplacement(const std::string& path)
    : target_(replacement::FindTarget(path)), temporary_(target_) {
    if (target_.old) {
        replacement::TakeOverProperties(target_, temporary_.Number());
    }
}

void FileReplacement::Write(const void* data, std::size_t size) {
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
    // Some file systems keep folders in a way that needs no such call, and say so.
    if (result != 0 && errno != EINVAL && errno != ENOTSUP) {
        const int systemError = errno;
        Fail("the new content is in place, but may not outlast a loss of power: " +
                 Describe(systemError),
             systemError);
    }
}

}  // namespace kelcore
