#include "toolkit/collect/PartFile.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <utility>

namespace toolkit {
namespace {

constexpr mode_t kReadableByAll = 0666;  // as far as the user's mask allows

[[noreturn]] void Fail() {
    throw SystemError(errno, std::generic_category());
}

void Require(bool done) {
    if (!done) {
        Fail();
    }
}

/// Some file systems cannot refuse to replace a file.
bool CannotRefuse(int error) {
    return error == EINVAL || error == ENOSYS || error == ENOTSUP;
}

void RenameToFreeName(const std::string& from, const std::string& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return;
    }
    struct stat there {};
    Require(CannotRefuse(errno));
    if (::lstat(to.c_str(), &there) == 0) {
        errno = EEXIST;
        Fail();
    }
    Require(::rename(from.c_str(), to.c_str()) == 0);
}

}  // namespace

PartFile::PartFile(std::string path)
    : path_(std::move(path)),
      descriptor_(::open(path_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW,
                         kReadableByAll)) {
    Require(descriptor_ >= 0);
}

PartFile::~PartFile() {
    ::close(descriptor_);
    if (!isPublished_) {
        ::unlink(path_.c_str());
    }
}

bool PartFile::Clone(int source) const {
    return ::ioctl(descriptor_, FICLONE, source) == 0;
}

void PartFile::Write(std::string_view block) const {
    while (!block.empty()) {
        const ssize_t written = ::write(descriptor_, block.data(), block.size());
        Require(written >= 0 || errno == EINTR);
        block.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
}

void PartFile::Publish(const std::string& name, const struct stat* source) {
    if (source != nullptr) {
        const std::array<timespec, 2> times = {source->st_atim, source->st_mtim};
        ::futimens(descriptor_, times.data());
    }
    Require(::fsync(descriptor_) == 0);
    RenameToFreeName(path_, name);
    isPublished_ = true;
}

void SyncFolder(const std::string& folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        ::fsync(descriptor);
        ::close(descriptor);
    }
}

}  // namespace toolkit
