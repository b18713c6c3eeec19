#include "toolkit/FileContent.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <new>
#include <utility>

#include "platform/kelcore/ReadObstacle.h"

namespace toolkit {
namespace {

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) {
            ::close(number_);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int Number() const { return number_; }

private:
    int number_;
};

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

/// Whether a file stands there if what says that it is a folder is left out: "a.orvo/", "a.orvo/.".
bool IsFileNamedAsFolder(const std::string& path) {
    const std::size_t last = path.find_last_not_of("/.");
    const std::size_t slash = path.find('/', last);
    return slash != std::string::npos && IsRegular(path.substr(0, slash));
}

/// @param size  what to expect; the file may have grown or shrunk since
std::variant<std::string, Problem> ReadAll(int descriptor, std::size_t size,
                                           const std::stop_token& stop) {
    std::string content;
    content.reserve(size);
    std::array<char, 1 << 16> block;
    while (!stop.stop_requested()) {
        const ssize_t got = ::read(descriptor, block.data(), block.size());
        if (got > 0) {
            content.append(block.data(), static_cast<std::size_t>(got));
        } else if (got == 0) {
            break;
        } else if (errno != EINTR) {
            return SystemProblem(errno);
        }
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

std::variant<std::string, Problem> ReadFileContent(const std::string& path,
                                                   const std::stop_token& stop) {
    if (auto problem = FindProblem(path)) {
        return *std::move(problem);
    }
    struct stat status {};
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (file.Number() < 0 || ::fstat(file.Number(), &status) != 0) {
        return SystemProblem(errno);
    }
    if (!S_ISREG(status.st_mode)) {
        return NotRegular(status.st_mode);
    }
    try {
        return ReadAll(file.Number(), static_cast<std::size_t>(status.st_size), stop);
    } catch (const std::bad_alloc&) {
        return Problem{{}, "cannot be read", "it is larger than the memory that there is"};
    }
}

}  // namespace toolkit
