#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "cli/serve/SessionShelf.h"

namespace httplib {
class Server;
}

namespace cli {

/// Serves pages on this computer only: listens on the loopback address, answers only under an
/// address with a random part, and refuses requests that name another host, come from the pages of
/// others, or do not only read.
class PageServer {
public:
    /// Not yet heard by anybody.
    explicit PageServer(SessionShelf& shelf);
    ~PageServer();
    PageServer(const PageServer&) = delete;
    PageServer& operator=(const PageServer&) = delete;

    /// Takes a port, or a free one if it is 0.
    /// @return whether that succeeded
    bool Bind(std::uint16_t port);

    /// Such as "http://127.0.0.1:4711/8d4c.../".
    std::string Address() const;

    /// Answers until SIGINT, SIGTERM or SIGHUP. Calls `whenReady` once it answers.
    /// @return whether a signal ended it, not an error
    bool Run(const std::function<void()>& whenReady);

private:
    void Answer();

    SessionShelf& shelf_;
    std::unique_ptr<httplib::Server> server_;
    std::string secret_;
    int port_ = 0;
};

}  // namespace cli
