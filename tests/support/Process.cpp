#include "tests/support/Process.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <system_error>

namespace test {
namespace {

using Clock = std::chrono::steady_clock;

class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() { Close(); }
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int Number() const { return number_; }
    bool IsOpen() const { return number_ >= 0; }
    void Close() {
        if (number_ >= 0) {
            ::close(std::exchange(number_, -1));
        }
    }

private:
    int number_ = -1;
};

struct Channel {
    Descriptor readEnd;
    Descriptor writeEnd;
};

[[noreturn]] void Fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

Channel MakePipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        Fail("pipe");
    }
    return {Descriptor(ends[0]), Descriptor(ends[1])};
}

Channel MakeTerminal(unsigned short columns) {
    int controlling = -1;
    int terminal = -1;
    const winsize size{.ws_row = 0, .ws_col = columns, .ws_xpixel = 0, .ws_ypixel = 0};
    if (::openpty(&controlling, &terminal, nullptr, nullptr, &size) != 0) {
        Fail("openpty");
    }
    ::fcntl(controlling, F_SETFD, FD_CLOEXEC);
    ::fcntl(terminal, F_SETFD, FD_CLOEXEC);
    return {Descriptor(controlling), Descriptor(terminal)};
}

[[noreturn]] void Execute(const Command& command, int input, int output, int errors) {
    ::dup2(input, STDIN_FILENO);
    ::dup2(output, STDOUT_FILENO);
    ::dup2(errors, STDERR_FILENO);
    for (const auto& [name, value] : command.environment) {
        ::setenv(name.c_str(), value.c_str(), 1);
    }
    if (!command.folder.empty() && ::chdir(command.folder.c_str()) != 0) {
        ::_exit(126);
    }
    std::vector<char*> arguments;
    for (const std::string& argument : command.arguments) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    ::execvp(arguments.front(), arguments.data());
    ::_exit(127);
}

/// Reads what is available, and closes the descriptor at its end.
void Drain(Descriptor& from, std::string& into) {
    std::array<char, 65536> block;
    const ssize_t got = ::read(from.Number(), block.data(), block.size());
    if (got > 0) {
        into.append(block.data(), static_cast<std::size_t>(got));
    } else if (got == 0 || errno != EINTR) {
        from.Close();
    }
}

void Feed(Descriptor& to, const std::string& input, std::size_t& fed) {
    const ssize_t put = ::write(to.Number(), input.data() + fed, input.size() - fed);
    if (put > 0) {
        fed += static_cast<std::size_t>(put);
    }
    if (fed == input.size() || (put < 0 && errno != EINTR && errno != EAGAIN)) {
        to.Close();
    }
}

int ExitCodeOf(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

Outcome Run(const Command& command) {
    ::signal(SIGPIPE, SIG_IGN);
    Channel input = MakePipe();
    Channel output = MakePipe();
    Channel errors = command.terminalErrors ? MakeTerminal(command.terminalColumns) : MakePipe();

    const pid_t child = ::fork();
    if (child < 0) {
        Fail("fork");
    }
    if (child == 0) {
        ::signal(SIGPIPE, SIG_DFL);
        Execute(command, input.readEnd.Number(), output.writeEnd.Number(),
                errors.writeEnd.Number());
    }
    input.readEnd.Close();
    output.writeEnd.Close();
    errors.writeEnd.Close();
    ::fcntl(input.writeEnd.Number(), F_SETFL, O_NONBLOCK);

    Outcome outcome;
    std::size_t fed = 0;
    if (command.input.empty()) {
        input.writeEnd.Close();
    }
    const auto deadline = Clock::now() + command.timeout;
    while (output.readEnd.IsOpen() || errors.readEnd.IsOpen()) {
        std::array<pollfd, 3> polled = {{{input.writeEnd.Number(), POLLOUT, 0},
                                         {output.readEnd.Number(), POLLIN, 0},
                                         {errors.readEnd.Number(), POLLIN, 0}}};
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        const int ready = left.count() > 0
                              ? ::poll(polled.data(), polled.size(), static_cast<int>(left.count()))
                              : 0;
        if (ready == 0) {
            outcome.timedOut = true;
            ::kill(child, SIGKILL);
            break;
        }
        if (polled[0].revents != 0) {
            Feed(input.writeEnd, command.input, fed);
        }
        if (polled[1].revents != 0) {
            Drain(output.readEnd, outcome.output);
        }
        if (polled[2].revents != 0) {
            Drain(errors.readEnd, outcome.errors);
        }
    }
    outcome.exitCode = ExitCodeOf(child);
    return outcome;
}

}  // namespace test
