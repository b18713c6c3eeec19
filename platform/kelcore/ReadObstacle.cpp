#include "platform/kelcore/ReadObstacle.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "platform/kelcore/Paths.h"

namespace kelcore {
namespace {

/// Returns the error number, or 0 on success.
int TryFirstByte(const std::string& systemPath) {
    const int descriptor =
        ::openat(AT_FDCWD, systemPath.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0) {
        return errno;
    }
    char first = 0;
    const int error = ::pread(descriptor, &first, sizeof first, 0) < 0 ? errno : 0;
    ::close(descriptor);
    return error;
}

}  // namespace

ReadObstacle ObstacleOfError(int systemError) {
    switch (systemError) {
        case ENOENT:
        case ENOTDIR:
            return {"no such file", "check the path"};
        case EACCES:
        case EPERM:
            return {"you may not read this file", "check its permissions and its folder's"};
        default:
            return {"cannot be read", std::generic_category().message(systemError)};
    }
}

ReadObstacle ObstacleOfKind(mode_t mode) {
    if (S_ISDIR(mode)) {
        return {"this is a folder", "name a session file in it"};
    }
    const char* const kind = S_ISFIFO(mode)   ? "this is a pipe"
                             : S_ISSOCK(mode) ? "this is a socket"
                                              : "this is a device";
    return {kind, "put its content into a file first"};
}

std::optional<ReadObstacle> FindReadObstacle(std::u16string_view path) {
    if (path.empty()) {
        return ReadObstacle{"the path is empty", "name a session file"};
    }
    if (path.find(u'\0') != std::u16string_view::npos) {
        return ReadObstacle{"no file has a path with a zero in it", "check the path"};
    }
    const std::string systemPath = PathToBytes(path);
    struct stat status {};
    if (::stat(systemPath.c_str(), &status) != 0) {
        return ObstacleOfError(errno);
    }
    if (!S_ISREG(status.st_mode)) {
        return ObstacleOfKind(status.st_mode);
    }
    const int error = TryFirstByte(systemPath);
    return error != 0 && error != EINTR ? std::optional(ObstacleOfError(error)) : std::nullopt;
}

}  // namespace kelcore
