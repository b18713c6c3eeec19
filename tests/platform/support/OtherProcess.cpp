#include "tests/platform/support/OtherProcess.h"

#include <grp.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <exception>
#include <stdexcept>

namespace test {
namespace {

constexpr uid_t kNobody = 65534;

std::string Outcome(const std::function<std::string()>& work) {
    try {
        return work();
    } catch (const std::exception& error) {
        return std::string("exception: ") + error.what();
    }
}

void WriteAll(int descriptor, const std::string& text) {
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t written = write(descriptor, text.data() + done, text.size() - done);
        if (written <= 0) {
            _exit(1);
        }
        done += static_cast<std::size_t>(written);
    }
}

std::string ReadAll(int descriptor) {
    std::string text;
    std::array<char, 4096> block;
    ssize_t size = 0;
    while ((size = read(descriptor, block.data(), block.size())) > 0) {
        text.append(block.data(), static_cast<std::size_t>(size));
    }
    return text;
}

}  // namespace

std::string RunInChild(const std::function<std::string()>& work) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        throw std::runtime_error("no pipe");
    }
    const pid_t child = fork();
    if (child == 0) {
        WriteAll(ends[1], Outcome(work));
        _exit(0);
    }
    close(ends[1]);
    const std::string text = ReadAll(ends[0]);
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? text : "died";
}

std::string RunUnprivileged(const std::function<std::string()>& work) {
    return RunInChild([&work]() -> std::string {
        if (geteuid() == 0 &&
            (setgroups(0, nullptr) != 0 || setgid(kNobody) != 0 || setuid(kNobody) != 0)) {
            return "privileges cannot be dropped";
        }
        return work();
    });
}

void RunAndKill(const std::function<void()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        work();
        kill(getpid(), SIGKILL);
    }
    int status = 0;
    waitpid(child, &status, 0);
    if (!WIFSIGNALED(status)) {
        throw std::runtime_error("the child was not killed");
    }
}

}  // namespace test
