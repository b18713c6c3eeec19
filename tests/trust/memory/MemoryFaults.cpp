#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <optional>
#include <string>

#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Trace.h"
#include "reference_host/LiveNodes.h"
#include "reference_host/SessionNode.h"
#include "reference_host/Sessions.h"
#include "tests/support/FeaturesUnderTest.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/trust/memory/FailingMemory.h"

// MemoryFaults SESSION [STRIDE]: reads and writes a session many times, failing every STRIDE-th
// allocation in turn: that one alone, and all from that one on. Each time the request must either
// succeed completely, or fail with its code and leave the file unchanged. The host must hold
// nothing, no file may stay open, the plug-in must not leak, and the next request must succeed.
// Leaks of the XML library are listed by place. Before that, the first request of a fresh process
// must survive running out of memory anywhere.

namespace {

using tses::SessionResult;

/// The current experiment, to report if it ends the process.
char currentPoint[200] = "";

/// A request, and how to judge its outcome.
struct Request {
    const char* name;
    std::function<SessionResult()> run;
    SessionResult failure;
    /// Whether the outcome is right for this result.
    std::function<bool(SessionResult)> isAsItShould;
    /// Frees what the request left in memory.
    std::function<void()> forget;
};

class Tally {
public:
    std::size_t points = 0;
    std::size_t problems = 0;
    std::map<std::string, std::size_t> lostByLibrary;

    void Problem(const std::string& where, const std::string& what) {
        ++problems;
        std::printf("%s: %s\n", where.c_str(), what.c_str());
    }
};

std::string Content(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::ptrdiff_t OpenFiles() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                         std::filesystem::directory_iterator());
}

bool Contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

/// The functions of the XML library that requested a block for the plug-in, innermost first,
/// without those that every block passes through; nothing if the plug-in or the host itself
/// requested it.
std::optional<std::string> LibraryPlace(const std::vector<std::string>& callers) {
    std::string place;
    for (const std::string& caller : callers) {
        if (Contains(caller, "OrvoNative.so") || Contains(caller, "libkelplatform")) {
            break;
        }
        if (Contains(caller, "libxerces") && !Contains(caller, "MemoryManagerImpl") &&
            !Contains(caller, "XMemory")) {
            place += (place.empty() ? "" : " < ") + caller.substr(caller.find(' ') + 1);
        }
    }
    return place.empty() ? std::nullopt : std::optional(place);
}

/// All callers that led to the block, for a message.
std::string Joined(const std::vector<std::string>& callers) {
    std::string text;
    for (const std::string& caller : callers) {
        text += "\n    " + caller;
    }
    return text;
}

class Experiment {
public:
    Experiment(Request request, Tally& tally) : request_(std::move(request)), tally_(tally) {}

    void Run(std::size_t stride) {
        request_.run();
        request_.run();
        test::memory::Begin(test::memory::Failure::None, 0);
        request_.run();
        const std::size_t allocations = test::memory::End();
        request_.forget();
        liveNodes_ = refhost::LiveNodes();
        openFiles_ = OpenFiles();
        for (const auto failure : {test::memory::Failure::Once, test::memory::Failure::Onwards}) {
            for (std::size_t at = 0; at < allocations; at += stride) {
                Try(failure, at);
            }
        }
        std::printf("%s: %zu allocations\n", request_.name, allocations);
    }

private:
    SessionResult RunFailing(test::memory::Failure failure, std::size_t at) const {
        SessionResult result = request_.failure;
        test::memory::Begin(failure, at);
        try {
            result = request_.run();
        } catch (const std::bad_alloc&) {
            // The host had no memory to name the file and did not call the plug-in.
        }
        test::memory::End();
        return result;
    }

    void Try(test::memory::Failure failure, std::size_t at) {
        ++tally_.points;
        const std::string where =
            std::string(request_.name) + ", allocation " + std::to_string(at) +
            (failure == test::memory::Failure::Once ? "" : " and all that follow");
        std::fflush(stdout);
        std::snprintf(currentPoint, sizeof currentPoint, "%s", where.c_str());
        const std::ptrdiff_t blocksBefore = test::memory::BlocksInUse();

        const SessionResult result = RunFailing(failure, at);
        if (result != SessionResult::Ok && result != request_.failure &&
            result != SessionResult::ReadFailed) {
            tally_.Problem(where, "result " + std::to_string(static_cast<int>(result)));
        }
        if (!request_.isAsItShould(result)) {
            tally_.Problem(where, "with result " + std::to_string(static_cast<int>(result)) +
                                      " it left what it should not");
        }
        request_.forget();
        if (refhost::LiveNodes() != liveNodes_) {
            tally_.Problem(where, "host objects leak");
        }
        if (OpenFiles() != openFiles_) {
            tally_.Problem(where, "a file stays open");
        }
        const SessionResult next = request_.run();
        if (next != SessionResult::Ok || !request_.isAsItShould(next)) {
            tally_.Problem(where, "the next request failed");
        }
        request_.forget();
        if (test::memory::BlocksInUse() > blocksBefore) {
            ListLosses(where, failure, at);
        }
    }

    void ListLosses(const std::string& where, test::memory::Failure failure, std::size_t at) {
        test::memory::RememberPlaces();
        RunFailing(failure, at);
        request_.forget();
        request_.run();
        request_.forget();
        const auto places = test::memory::PlacesOfBlocksInUse();
        if (places.empty()) {
            tally_.Problem(where, "a leak that a second run does not have");
        }
        for (const auto& callers : places) {
            if (const auto place = LibraryPlace(callers)) {
                ++tally_.lostByLibrary[*place];
            } else {
                tally_.Problem(where, "a leak" + Joined(callers));
            }
        }
    }

    Request request_;
    Tally& tally_;
    std::size_t liveNodes_ = 0;
    std::ptrdiff_t openFiles_ = 0;
};

/// Runs the first request of a process out of memory, later each time, until there is enough.
/// One-time objects cannot be created then.
void TryFirstRequests(const char* name,
                      const std::function<SessionResult(refhost::Plugin&)>& request,
                      std::size_t stride, Tally& tally) {
    for (std::size_t at = 0;; at += stride) {
        ++tally.points;
        const std::string where = std::string("the first request, ") + name + ", allocation " +
                                  std::to_string(at) + " and all that follow";
        std::fflush(stdout);
        const pid_t child = ::fork();
        if (child == 0) {
            test::UseFeaturesUnderTest();
            refhost::Plugin plugin;
            test::memory::Begin(test::memory::Failure::Onwards, at);
            try {
                request(plugin);
            } catch (const std::bad_alloc&) {
                // The host had no memory and did not call the plug-in.
            }
            const bool wasEnough = test::memory::End() <= at;
            ::_exit(wasEnough ? 0 : 1);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        if (!WIFEXITED(status)) {
            tally.Problem(where, "it ended the process");
        } else if (WEXITSTATUS(status) == 0) {
            return;
        }
    }
}

SessionResult Read(refhost::Plugin& plugin, const std::u16string& path, orvo::Session& into) {
    const auto node = refhost::SessionNode::Make();
    node->SetLogTarget(refhost::Ref<refhost::LogTarget>::Adopt(new refhost::LogTarget));
    const SessionResult result = plugin.Read(path, node->Edit());
    into = std::move(node->Value());
    return result;
}

SessionResult Write(refhost::Plugin& plugin, const std::u16string& path,
                    refhost::SessionNode& session) {
    const SessionResult result = plugin.Write(path, session.Query());
    plugin.ReleaseContext();
    return result;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: MemoryFaults SESSION [STRIDE]\n");
        return 2;
    }
    const std::size_t stride = argc > 2 ? std::stoul(argv[2]) : 1;
    const std::u16string source = kelcore::PathFromBytes(argv[1]);
    std::set_terminate([] {
        std::fprintf(stderr, "ended at: %s\n", currentPoint);
        std::abort();
    });

    const test::TemporaryFolder folder;
    const std::filesystem::path target = folder / "session.orvo";
    Tally tally;
    orvo::Session read;
    TryFirstRequests(
        "read", [&](refhost::Plugin& first) { return Read(first, source, read); }, stride, tally);
    TryFirstRequests(
        "read of a missing file",
        [&](refhost::Plugin& first) {
            return Read(first, kelcore::PathFromBytes(target.string()), read);
        },
        stride, tally);
    TryFirstRequests(
        "write",
        [&](refhost::Plugin& first) {
            const auto empty = refhost::SessionNode::Make(orvo::Session());
            return Write(first, kelcore::PathFromBytes(target.string()), *empty);
        },
        stride, tally);

    test::UseFeaturesUnderTest();
    refhost::Plugin plugin;
    const orvo::Session expected = refhost::ReadSession(plugin, source).session;
    // Consumes the trace: lines on standard error contain the time, for which the C library keeps
    // the time zone until the end.
    kelcore::trace::SetOutput([](std::string_view /*category*/, std::string_view /*text*/) {});
    Experiment(
        {"read", [&] { return Read(plugin, source, read); }, SessionResult::ReadFailed,
         [&](SessionResult result) { return result != SessionResult::Ok || read == expected; },
         [&] { read = {}; }},
        tally)
        .Run(stride);

    const std::string oldBytes = "what stood there before";
    auto session = refhost::SessionNode::Make(expected);
    const auto restore = [&] {
        std::ofstream(target, std::ios::binary) << oldBytes;
        session = refhost::SessionNode::Make(expected);
    };
    std::string newBytes;
    restore();
    Write(plugin, kelcore::PathFromBytes(target.string()), *session);
    newBytes = Content(target);
    restore();
    Experiment(
        {"write", [&] { return Write(plugin, kelcore::PathFromBytes(target.string()), *session); },
         SessionResult::WriteFailed,
         [&](SessionResult result) {
             const std::string content = Content(target);
             const bool alone = std::distance(std::filesystem::directory_iterator(folder.Path()),
                                              std::filesystem::directory_iterator()) == 1;
             return alone &&
                    (result == SessionResult::Ok ? content == newBytes : content == oldBytes);
         },
         restore},
        tally)
        .Run(stride);

    std::printf("%zu points, %zu problems\n", tally.points, tally.problems);
    for (const auto& [place, count] : tally.lostByLibrary) {
        std::printf("leaked by the XML library, %zu times: %s\n", count, place.c_str());
    }
    return tally.problems == 0 ? 0 : 1;
}
