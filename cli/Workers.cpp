#include "cli/Workers.h"

#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <map>
#include <memory>
#include <system_error>
#include <utility>
#include <vector>

namespace cli {
namespace {

/// How many items each worker may be ahead of the one that is consumed next.
constexpr std::size_t kAhead = 16;

[[noreturn]] void Fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

/// Returns false at the end of the stream.
bool ReadAll(int descriptor, void* target, std::size_t size) {
    auto* bytes = static_cast<char*>(target);
    while (size != 0) {
        const ssize_t got = ::read(descriptor, bytes, size);
        if (got == 0 || (got < 0 && errno != EINTR)) {
            return false;
        }
        if (got > 0) {
            bytes += got;
            size -= static_cast<std::size_t>(got);
        }
    }
    return true;
}

/// Returns false if nobody reads.
bool WriteAll(int socket, const void* source, std::size_t size) {
    const auto* bytes = static_cast<const char*>(source);
    while (size != 0) {
        const ssize_t put = ::send(socket, bytes, size, MSG_NOSIGNAL);
        if (put < 0 && errno != EINTR) {
            return false;
        }
        if (put > 0) {
            bytes += put;
            size -= static_cast<std::size_t>(put);
        }
    }
    return true;
}

/// A process that takes the numbers of items from a socket and gives back their results.
class Worker {
public:
    explicit Worker(const Produce& produce) {
        std::array<int, 2> sockets{};
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets.data()) != 0) {
            Fail("cannot make a socket");
        }
        socket_ = sockets[0];
        const pid_t parent = ::getpid();
        process_ = ::fork();
        if (process_ == 0) {
            Serve(produce, sockets[1], parent);
        }
        ::close(sockets[1]);
        if (process_ < 0) {
            ::close(socket_);
            Fail("cannot start a process");
        }
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    /// Ends the process. The signal lets it remove its temporary files.
    ~Worker() {
        ::kill(process_, SIGTERM);
        while (::waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
        }
        ::close(socket_);
    }

    void Begin(std::size_t item) {
        item_ = item;
        const std::uint64_t number = item;
        static_cast<void>(WriteAll(socket_, &number, sizeof number));
    }

    /// The item that it works on, if any.
    std::optional<std::size_t> Item() const { return item_; }

    int Socket() const { return socket_; }

    /// The result for the item; no value if the process is no more.
    std::optional<std::string> Take() {
        item_.reset();
        std::uint64_t size = 0;
        if (!ReadAll(socket_, &size, sizeof size)) {
            return std::nullopt;
        }
        std::string result(size, '\0');
        return ReadAll(socket_, result.data(), size) ? std::optional(std::move(result))
                                                     : std::nullopt;
    }

private:
    /// What the process does.
    [[noreturn]] static void Serve(const Produce& produce, int socket, pid_t parent) noexcept {
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (::getppid() != parent) {  // it ended before the line above
            ::_exit(0);
        }
        std::uint64_t item = 0;
        while (ReadAll(socket, &item, sizeof item)) {
            const std::string result = produce(item);
            const std::uint64_t size = result.size();
            if (!WriteAll(socket, &size, sizeof size) ||
                !WriteAll(socket, result.data(), result.size())) {
                break;
            }
        }
        ::_exit(0);
    }

    int socket_ = -1;
    pid_t process_ = -1;
    std::optional<std::size_t> item_;
};

class Run {
public:
    Run(std::size_t count, std::size_t workers, const Produce& produce, const Consume& consume)
        : count_(count), produce_(produce), consume_(consume) {
        for (std::size_t i = 0; i < std::min(count, workers); ++i) {
            workers_.push_back(std::make_unique<Worker>(produce));
        }
    }

    void ToTheEnd() {
        while (consumed_ != count_) {
            for (const auto& worker : workers_) {
                GiveWork(*worker);
            }
            TakeResults();
            PassOn();
        }
    }

private:
    void GiveWork(Worker& worker) {
        if (!worker.Item() && begun_ != count_ && begun_ < consumed_ + kAhead * workers_.size()) {
            worker.Begin(begun_++);
        }
    }

    /// Waits for at least one.
    void TakeResults() {
        std::vector<pollfd> polled;
        for (const auto& worker : workers_) {
            polled.push_back({worker->Item() ? worker->Socket() : -1, POLLIN, 0});
        }
        if (::poll(polled.data(), polled.size(), -1) < 0 && errno != EINTR) {
            Fail("cannot wait for processes");
        }
        for (std::size_t i = 0; i < polled.size(); ++i) {
            if (polled[i].revents != 0) {
                TakeResult(workers_[i]);
            }
        }
    }

    void TakeResult(std::unique_ptr<Worker>& worker) {
        const std::size_t item = *worker->Item();
        const auto [place, isNew] = results_.emplace(item, worker->Take());
        if (!place->second) {
            worker = std::make_unique<Worker>(produce_);
        }
    }

    void PassOn() {
        for (auto next = results_.find(consumed_); next != results_.end();
             next = results_.find(consumed_)) {
            consume_(consumed_++, std::move(next->second));
            results_.erase(next);
        }
    }

    std::size_t count_;
    const Produce& produce_;
    const Consume& consume_;
    std::vector<std::unique_ptr<Worker>> workers_;
    std::map<std::size_t, std::optional<std::string>> results_;  // not passed on yet
    std::size_t begun_ = 0;
    std::size_t consumed_ = 0;
};

}  // namespace

void RunInWorkers(std::size_t count, std::size_t workers, const Produce& produce,
                  const Consume& consume) {
    Run(count, workers, produce, consume).ToTheEnd();
}

}  // namespace cli
