#include "toolkit/FileContent.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <new>
#include <utility>

#include "platform/kelcore/ReadObstacle.h"

namespace toolkit {
namespace {

constexpr std::size_t kBlockSize = 1 << 16;

Problem ToProblem(kelcore::ReadObstacle obstacle) {
    return {{}, std::move(obstacle.what), std::move(obstacle.advice)};
}

Problem SystemProblem(int error) {
    return ToProblem(kelcore::ObstacleOfError(error));
}

Problem NotRegular(mode_t mode) {
    return ToProblem(kelcore::ObstacleOfKind(mode));
}

bool IsRegular(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

/// Whether a file is there once the folder ending is removed: "a.orvo/", "a.orvo/.".
bool IsFileNamedAsFolder(const std::string& path) {
    const std::size_t last = path.find_last_not_of("/.");
    const std::size_t slash = path.find('/', last);
    return slash != std::string::npos && IsRegular(path.substr(0, slash));
}

/// For a stream that somebody made non-blocking.
void WaitForInput(int descriptor) {
    pollfd awaited{.fd = descriptor, .events = POLLIN, .revents = 0};
    ::poll(&awaited, 1, -1);
}

std::string ReadAll(FileBlocks& blocks, const std::stop_token& stop) {
    std::string content;
    content.reserve(blocks.Size());  // the file may have grown or shrunk since
    while (!stop.stop_requested()) {
        const std::string_view block = blocks.Next();
        if (block.empty()) {
            break;
        }
        content += block;
    }
    return content;
}

}  // namespace

std::optional<FileIdentity> IdentityOf(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return FileIdentity{.device = status.st_dev,
                        .number = status.st_ino,
                        .size = static_cast<kelcore::uint64>(status.st_size),
                        .changedSeconds = status.st_mtim.tv_sec,
                        .changedNanoseconds = status.st_mtim.tv_nsec};
}

std::optional<Problem> FindProblem(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
        const int failure = errno;
        if (failure == ENOTDIR && IsFileNamedAsFolder(path)) {
            return Problem{{}, "this is a file, not a folder", "leave out the slash at the end"};
        }
        return SystemProblem(failure);
    }
    return S_ISREG(status.st_mode) ? std::nullopt : std::optional(NotRegular(status.st_mode));
}

FileBlocks::FileBlocks(const std::string& path)
    : descriptor_(-1), isOwned_(true), failure_(FindProblem(path)) {
    if (failure_) {
        return;
    }
    struct stat status {};
    descriptor_ = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (descriptor_ < 0 || ::fstat(descriptor_, &status) != 0) {
        failure_ = SystemProblem(errno);
    } else if (!S_ISREG(status.st_mode)) {
        failure_ = NotRegular(status.st_mode);
    } else {
        size_ = static_cast<std::size_t>(status.st_size);
    }
}

FileBlocks::FileBlocks(int descriptor) : descriptor_(descriptor), isOwned_(false) {
    struct stat status {};
    if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) {
        size_ = static_cast<std::size_t>(status.st_size);
    }
}

FileBlocks::~FileBlocks() {
    if (isOwned_ && descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

std::string_view FileBlocks::Next() {
    block_.resize(kBlockSize);
    while (!failure_) {
        const ssize_t got = ::read(descriptor_, block_.data(), block_.size());
        if (got >= 0) {
            return {block_.data(), static_cast<std::size_t>(got)};
        }
        if (errno == EAGAIN) {
            WaitForInput(descriptor_);
        } else if (errno != EINTR) {
            failure_ = SystemProblem(errno);
        }
    }
    return {};
}

std::variant<std::string, Problem> ReadFileContent(const std::string& path,
                                                   const std::stop_token& stop) {
    try {
        FileBlocks blocks(path);
        std::string content = ReadAll(blocks, stop);
        if (blocks.Failure()) {
            return *blocks.Failure();
        }
        return content;
    } catch (const std::bad_alloc&) {
        return Problem{{}, "cannot be read", "it is larger than the available memory"};
    }
}

}  // namespace toolkit
