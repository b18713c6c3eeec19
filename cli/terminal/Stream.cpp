#include "cli/terminal/Stream.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <filesystem>
#include <system_error>

#include "toolkit/FileContent.h"

namespace cli {
namespace {

namespace fs = std::filesystem;

struct Descriptor {
    bool isOwn = false;
    int number = -1;
};

std::optional<int> ParseNumber(const std::string& text) {
    int number = -1;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isNumber = error == std::errc() && end == text.data() + text.size() && number >= 0;
    return isNumber ? std::optional(number) : std::nullopt;
}

/// Whether the folder lists the descriptors of a process or of a thread, "/proc/7/task/7/fd".
bool HoldsDescriptors(const fs::path& folder) {
    return folder.native().starts_with("/proc/") && folder.filename() == "fd";
}

bool IsOwn(const fs::path& folder) {
    const fs::path process = fs::canonical("/proc/self");
    return folder == process / "fd" || folder.parent_path().parent_path() == process / "task";
}

std::optional<Descriptor> AsDescriptor(const fs::path& path) {
    std::error_code error;
    const fs::path folder = fs::canonical(path.parent_path(), error);
    const std::optional<int> number = ParseNumber(path.filename().string());
    if (error || !number || !HoldsDescriptors(folder)) {
        return std::nullopt;
    }
    return Descriptor{IsOwn(folder), *number};
}

/// Follows links in the last name of the path up to a descriptor, which is itself a link to its
/// file.
std::optional<Descriptor> FindDescriptor(const std::string& name) {
    constexpr int kMostLinks = 40;
    std::error_code error;
    fs::path path = fs::absolute(name, error);
    for (int links = 0; links < kMostLinks && !error; ++links) {
        if (const auto descriptor = AsDescriptor(path)) {
            return descriptor;
        }
        const fs::path target = fs::read_symlink(path, error);
        path = path.parent_path() / target;
    }
    return std::nullopt;
}

/// Whether to write again: the call was interrupted, or the stream is non-blocking and not ready.
bool TryAgain(int descriptor) {
    if (errno == EAGAIN) {
        pollfd awaited{.fd = descriptor, .events = POLLOUT, .revents = 0};
        ::poll(&awaited, 1, -1);
        return true;
    }
    return errno == EINTR;
}

}  // namespace

std::optional<Stream> FindStream(const std::string& name, Direction direction) {
    if (name == kStream) {
        return direction == Direction::In ? Stream{STDIN_FILENO, "standard input"}
                                          : Stream{STDOUT_FILENO, "standard output"};
    }
    const std::optional<Descriptor> found = FindDescriptor(name);
    return found && found->isOwn ? std::optional(Stream{found->number, name}) : std::nullopt;
}

bool IsStreamOfAnotherProcess(const std::string& name) {
    const std::optional<Descriptor> found = FindDescriptor(name);
    return found && !found->isOwn;
}

std::optional<toolkit::Problem> FindProblem(const Stream& stream, Direction direction) {
    const int flags = ::fcntl(stream.descriptor, F_GETFL);
    if (flags < 0) {
        return toolkit::Problem{{}, "is not open", "redirect it, or name a file"};
    }
    const bool isIn = direction == Direction::In;
    if ((flags & O_PATH) != 0 || (flags & O_ACCMODE) == (isIn ? O_WRONLY : O_RDONLY)) {
        return toolkit::Problem{{},
                                isIn ? "is not open for reading" : "is not open for writing",
                                "redirect it, or name a file"};
    }
    return std::nullopt;
}

std::optional<toolkit::Problem> ReadBlocks(const Stream& stream,
                                           const std::function<void(std::string_view)>& take) {
    if (auto problem = FindProblem(stream, Direction::In)) {
        return problem;
    }
    toolkit::FileBlocks blocks(stream.descriptor);
    for (std::string_view block = blocks.Next(); !block.empty(); block = blocks.Next()) {
        take(block);
    }
    return blocks.Failure();
}

void WriteBlock(const Stream& stream, std::string_view block) {
    while (!block.empty()) {
        const ssize_t put = ::write(stream.descriptor, block.data(), block.size());
        if (put >= 0) {
            block.remove_prefix(static_cast<std::size_t>(put));
        } else if (!TryAgain(stream.descriptor)) {
            throw StreamError(errno, std::generic_category());
        }
    }
}

}  // namespace cli
