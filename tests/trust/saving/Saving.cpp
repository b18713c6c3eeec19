#include "tests/trust/saving/Saving.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"

namespace test {

Saved SaveInPeace(refhost::Plugin& plugin, const orvo::Session& session,
                  const std::string& folder) {
    const std::string path = folder + "/peace.orvo";
    const auto written = refhost::WriteSession(plugin, kelcore::PathFromBytes(path), session);
    const std::optional<std::string> bytes = ContentOf(path);
    if (written.result != tses::SessionResult::Ok || !bytes || bytes->empty()) {
        throw std::runtime_error("an undisturbed save failed");
    }
    Saved saved{session, *bytes, SessionOf(plugin, path)};
    std::filesystem::remove(path);
    return saved;
}

orvo::Session SessionOf(refhost::Plugin& plugin, const std::string& path) {
    refhost::ReadResult read = refhost::ReadSession(plugin, kelcore::PathFromBytes(path));
    if (read.result != tses::SessionResult::Ok) {
        throw std::runtime_error("cannot read " + path);
    }
    return std::move(read.session);
}

orvo::Session WithMoreFiles(orvo::Session session, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const auto id = static_cast<kelcore::uint32>(100000 + i);
        const std::string path = "/recordings/of the day/take " + std::to_string(i) + ".wav";
        session.files.push_back({.id = id, .path = path});
    }
    return session;
}

std::optional<std::string> ContentOf(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream.is_open()) {
        return std::nullopt;
    }
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

bool IsTemporaryName(std::string_view name) {
    return name.find(".orvo-tmp-") != std::string_view::npos;
}

std::size_t CountStrays(const std::string& folder) {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        count += IsTemporaryName(entry.path().filename().native()) ? 1U : 0U;
    }
    return count;
}

pid_t Begin(const std::function<void()>& work) {
    std::fflush(stdout);
    const pid_t process = fork();
    if (process < 0) {
        throw std::runtime_error("cannot create a process");
    }
    if (process == 0) {
        try {
            work();
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s\n", error.what());
            _exit(1);
        }
        std::fflush(stdout);
        _exit(0);
    }
    return process;
}

int End(pid_t process) {
    int status = 0;
    while (waitpid(process, &status, 0) < 0) {
        if (errno != EINTR) {
            throw std::runtime_error("cannot wait for a process");
        }
    }
    return status;
}

}  // namespace test
