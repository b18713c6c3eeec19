#include "tests/trust/contract/Cases.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <system_error>

namespace test {
namespace {

constexpr int kSomethingIsWrong = 1;

std::vector<std::string> Problems(const Case& toRun) {
    try {
        return toRun.run();
    } catch (const std::exception& failure) {
        return {std::string("the case itself failed: ") + failure.what()};
    }
}

/// The alarm ends a hang. Children do not inherit it, so each one sets its own.
[[noreturn]] void RunInChild(const Case& toRun) {
    ::alarm(toRun.longestSeconds);
    const std::vector<std::string> problems = Problems(toRun);
    for (const std::string& problem : problems) {
        std::printf("%s: %s\n", toRun.name.c_str(), problem.c_str());
    }
    std::fflush(stdout);
    ::_exit(problems.empty() ? 0 : kSomethingIsWrong);
}

/// Returns whether the case succeeded.
bool RunApart(const Case& toRun) {
    std::fflush(stdout);
    const pid_t child = ::fork();
    if (child < 0) {
        throw std::system_error(errno, std::generic_category(), "fork");
    }
    if (child == 0) {
        RunInChild(toRun);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    if (WIFSIGNALED(status)) {
        std::printf("%s: ended by \"%s\"\n", toRun.name.c_str(), ::strsignal(WTERMSIG(status)));
    } else if (WEXITSTATUS(status) > kSomethingIsWrong) {
        std::printf("%s: ended with %d\n", toRun.name.c_str(), WEXITSTATUS(status));
    }
    return status == 0;
}

long KibibytesOf(std::string_view field) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(field)) {
            return std::stol(line.substr(field.size()));
        }
    }
    return -1;
}

}  // namespace

std::vector<Case> EachNth(const std::vector<Case>& cases, std::size_t stride) {
    std::vector<Case> some;
    for (std::size_t i = 0; i < cases.size(); i += stride) {
        some.push_back(cases[i]);
    }
    return some;
}

Tally RunCases(const std::vector<Case>& cases) {
    Tally tally;
    for (const Case& each : cases) {
        ++tally.cases;
        tally.problems += RunApart(each) ? 0u : 1u;
    }
    return tally;
}

double ComputedSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

long PeakKibibytes() {
    return KibibytesOf("VmHWM:");
}

long ResidentKibibytes() {
    return KibibytesOf("VmRSS:");
}

std::ptrdiff_t OpenFiles() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                         std::filesystem::directory_iterator());
}

}  // namespace test
