#include "bench/Program.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace bench {
namespace {

[[noreturn]] void Execute(const std::vector<std::string>& arguments, int output) {
    std::vector<char*> pointers;
    for (const std::string& argument : arguments) {
        pointers.push_back(const_cast<char*>(argument.c_str()));
    }
    pointers.push_back(nullptr);
    ::dup2(output, STDOUT_FILENO);
    ::execv(pointers.front(), pointers.data());
    ::_exit(127);
}

std::string ReadToEnd(int descriptor) {
    std::string text;
    std::array<char, 4096> block;
    for (;;) {
        const ssize_t got = ::read(descriptor, block.data(), block.size());
        if (got > 0) {
            text.append(block.data(), static_cast<std::size_t>(got));
        } else if (got == 0 || errno != EINTR) {
            return text;
        }
    }
}

bool EndedWell(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

std::string OutputOfProgram(const std::vector<std::string>& arguments) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw std::system_error(errno, std::generic_category(), "pipe");
    }
    const pid_t child = ::fork();
    if (child == 0) {
        Execute(arguments, ends[1]);
    }
    ::close(ends[1]);
    std::string output = child > 0 ? ReadToEnd(ends[0]) : std::string();
    ::close(ends[0]);
    if (child < 0 || !EndedWell(child)) {
        throw std::runtime_error(arguments.front() + " did not end well");
    }
    return output;
}

std::string OwnPath() {
    return std::filesystem::read_symlink("/proc/self/exe").string();
}

std::string NeighbourPath(const std::string& name) {
    return (std::filesystem::path(OwnPath()).parent_path() / name).string();
}

}  // namespace bench
