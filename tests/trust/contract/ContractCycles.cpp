#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <functional>
#include <iterator>

#include "platform/kelcore/Paths.h"
#include "reference_host/LiveNodes.h"
#include "reference_host/Sessions.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/trust/contract/Contract.h"

// Many lifetimes of the plug-in: one after the other in one process, and several at once.

namespace test {
namespace {

using tses::SessionResult;

std::u16string Golden(const Options& options, const char* name) {
    return kelcore::PathFromBytes((options.goldenFolder / name).string());
}

struct Holding {
    std::size_t bytes = 0;  ///< allocated; 0 under the sanitizers, which find leaks themselves
    long residentKibibytes = 0;
    std::ptrdiff_t files = 0;
    std::size_t liveNodes = 0;

    static Holding Now() {
        return {::mallinfo2().uordblks, ResidentKibibytes(), OpenFiles(), refhost::LiveNodes()};
    }
};

constexpr bool kJudgesGrowth = ORVO_JUDGES_GROWTH;

/// Warms up until nothing is new, then checks that further cycles leave nothing behind.
std::vector<std::string> Repeat(std::size_t cycles, const std::function<bool()>& cycle) {
    constexpr std::size_t kWarmUp = 20;
    constexpr std::size_t kSlackBytes = std::size_t{64} * 1024;  // reserve of the allocator
    constexpr long kSlackKibibytes = 4096;
    std::vector<std::string> problems;
    std::size_t failures = 0;
    for (std::size_t i = 0; i < kWarmUp; ++i) {
        failures += cycle() ? 0u : 1u;
    }
    const Holding before = Holding::Now();
    for (std::size_t i = 0; i < cycles; ++i) {
        failures += cycle() ? 0u : 1u;
    }
    const Holding after = Holding::Now();
    if (failures > 0) {
        problems.push_back(std::to_string(failures) + " cycles failed");
    }
    std::printf("%zu cycles: %zu bytes before, %zu after\n", cycles, before.bytes, after.bytes);
    if (kJudgesGrowth && after.bytes > before.bytes + kSlackBytes) {
        problems.push_back("memory grows from " + std::to_string(before.bytes) + " to " +
                           std::to_string(after.bytes) + " bytes");
    }
    if (kJudgesGrowth && after.residentKibibytes > before.residentKibibytes + kSlackKibibytes) {
        problems.push_back("memory grows from " + std::to_string(before.residentKibibytes) +
                           " to " + std::to_string(after.residentKibibytes) + " KiB");
    }
    if (after.files != before.files) {
        problems.emplace_back("descriptors stay open");
    }
    if (after.liveNodes != before.liveNodes) {
        problems.emplace_back("host objects leak");
    }
    return problems;
}

bool ReadsInNewLife(const refhost::PluginLibrary& library, const std::u16string& path,
                    const orvo::Session& expected) {
    refhost::Plugin plugin;
    const refhost::ReadResult read = refhost::ReadSession(plugin, path);
    return library.Call(1, nullptr) == 0 && read.result == SessionResult::Ok &&
           read.session == expected;
}

orvo::Session ReadOnce(const std::u16string& path) {
    refhost::Plugin plugin;
    return refhost::ReadSession(plugin, path).session;
}

bool WritesAndReads(refhost::Plugin& plugin, const std::u16string& path,
                    const orvo::Session& session) {
    return refhost::WriteSession(plugin, path, session).result == SessionResult::Ok &&
           refhost::ReadSession(plugin, path).result == SessionResult::Ok;
}

unsigned LongestSeconds(std::size_t cycles, const Options& options) {
    constexpr std::size_t kCyclesOfASecond = 10;
    return static_cast<unsigned>(60 + options.factor * cycles / kCyclesOfASecond);
}

/// Runs that many processes at once and returns how many failed.
std::size_t AtOnce(std::size_t processes, const std::function<bool(std::size_t number)>& work) {
    std::size_t failures = 0;
    for (std::size_t number = 0; number < processes; ++number) {
        const pid_t child = ::fork();
        if (child == 0) {
            ::_exit(work(number) ? 0 : 1);
        }
        failures += child < 0 ? 1u : 0u;
    }
    int status = 0;
    while (::wait(&status) > 0) {
        failures += status == 0 ? 0u : 1u;
    }
    return failures;
}

}  // namespace

Tally RunCycles(const Options& options) {
    const std::u16string path = Golden(options, "everything.orvo");
    // Kept loaded, so that all lifetimes use the same copy of the library.
    const auto lives = [&] {
        const refhost::PluginLibrary library(refhost::DefaultPluginPath());
        const orvo::Session expected = ReadOnce(path);
        return Repeat(options.cycles, [&] { return ReadsInNewLife(library, path, expected); });
    };
    const auto requests = [&] {
        const TemporaryFolder folder;
        const std::u16string target = kelcore::PathFromBytes((folder / "a.orvo").string());
        refhost::Plugin plugin;
        const orvo::Session session = refhost::ReadSession(plugin, path).session;
        return Repeat(options.cycles, [&] { return WritesAndReads(plugin, target, session); });
    };
    const unsigned seconds = LongestSeconds(options.cycles, options);
    return RunCases(
        {{"initialise, read, terminate", lives, seconds}, {"write, read", requests, seconds}});
}

Tally RunReloads(const Options& options) {
    const std::u16string path = Golden(options, "everything.orvo");
    const std::size_t cycles = options.cycles * 2 / 5;
    const auto lives = [&] {
        const orvo::Session expected = ReadOnce(path);
        return Repeat(cycles, [&] { return ReadOnce(path) == expected; });
    };
    const auto unused = [&] {
        return Repeat(cycles, [] {
            const refhost::PluginLibrary library(refhost::DefaultPluginPath());
            return library.Call(1, nullptr) == 0;
        });
    };
    const unsigned seconds = LongestSeconds(cycles, options);
    return RunCases({{"load, read, unload", lives, seconds}, {"load, unload", unused, seconds}});
}

Tally RunProcesses(const Options& options) {
    constexpr std::size_t kProcesses = 6;
    constexpr std::size_t kTimes = 20;
    const std::u16string path = Golden(options, "everything.orvo");
    const auto readers = [&]() -> std::vector<std::string> {
        const orvo::Session expected = ReadOnce(path);
        const std::size_t failures = AtOnce(kProcesses, [&](std::size_t /*number*/) {
            refhost::Plugin plugin;
            for (std::size_t i = 0; i < kTimes; ++i) {
                if (refhost::ReadSession(plugin, path).session != expected) {
                    return false;
                }
            }
            return true;
        });
        return failures == 0 ? std::vector<std::string>()
                             : std::vector<std::string>{"a reader got a wrong session"};
    };
    // Half of the processes write one file while the others read it. Every reader must see a whole
    // session.
    const auto both = [&]() -> std::vector<std::string> {
        const TemporaryFolder folder;
        const std::u16string target = kelcore::PathFromBytes((folder / "a.orvo").string());
        const orvo::Session session = ReadOnce(path);
        orvo::Session expected;
        {
            refhost::Plugin plugin;
            refhost::WriteSession(plugin, target, session);
            expected = refhost::ReadSession(plugin, target).session;
        }
        const std::size_t failures = AtOnce(kProcesses, [&](std::size_t number) {
            refhost::Plugin plugin;
            for (std::size_t i = 0; i < kTimes; ++i) {
                const bool right =
                    number % 2 == 0
                        ? refhost::WriteSession(plugin, target, session).result == SessionResult::Ok
                        : refhost::ReadSession(plugin, target).session == expected;
                if (!right) {
                    return false;
                }
            }
            return true;
        });
        return failures == 0 ? std::vector<std::string>()
                             : std::vector<std::string>{"a process read half a session"};
    };
    return RunCases({{"readers at once", readers}, {"readers and writers at once", both}});
}

}  // namespace test
