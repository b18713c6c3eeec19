#include "cli/serve/PageServer.h"

#include <fmt/format.h>
#include <httplib.h>
#include <sys/random.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <exception>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>
#include <vector>

#include "cli/serve/Gallery.h"

namespace cli {
namespace {

using httplib::Request;
using httplib::Response;

constexpr const char* kLoopback = "127.0.0.1";
constexpr int kForbidden = 403;
constexpr int kNotFound = 404;
constexpr int kNotAllowed = 405;
constexpr int kFailed = 500;
constexpr std::size_t kBlock = 1 << 16;  // of media that are handed out

/// 128 random bits.
std::string NewSecret() {
    std::array<unsigned char, 16> bytes{};
    if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
        throw std::runtime_error("the system has no random numbers");
    }
    std::string secret;
    for (const unsigned char byte : bytes) {
        fmt::format_to(std::back_inserter(secret), "{:02x}", static_cast<unsigned>(byte));
    }
    return secret;
}

void Refuse(Response& response, int status, const char* why) {
    response.status = status;
    response.set_content(std::string(why) + "\n", "text/plain");
}

/// Whether a request names this server, and comes from it if it says where it comes from.
bool IsOwn(const Request& request, int port) {
    const std::string names[] = {fmt::format("{}:{}", kLoopback, port),
                                 fmt::format("localhost:{}", port)};
    const std::string host = request.get_header_value("Host");
    if (host != names[0] && host != names[1]) {
        return false;
    }
    return !request.has_header("Origin") || request.get_header_value("Origin") == "http://" + host;
}

const httplib::Headers& Headers() {
    static const httplib::Headers headers = {
        {"Cache-Control", "no-store"},
        {"Referrer-Policy", "no-referrer"},
        {"X-Content-Type-Options", "nosniff"},
        {"X-Frame-Options", "DENY"},
        {"Cross-Origin-Opener-Policy", "same-origin"},
        {"Cross-Origin-Resource-Policy", "same-origin"},
    };
    return headers;
}

/// For pages that have no policy of their own.
void SetPolicy(Response& response) {
    response.set_header("Content-Security-Policy",
                        "default-src 'none'; style-src 'self'; img-src 'self' data:; "
                        "base-uri 'none'; form-action 'none'; frame-ancestors 'none'");
}

void SendExcuse(Response& response, const std::string& session, const std::string& reason) {
    response.status = kFailed;
    SetPolicy(response);
    response.set_content(ExcuseOf(session, reason), "text/html; charset=utf-8");
}

/// Signals that end the tool, blocked in this thread and those that it starts.
class EndingSignals {
public:
    EndingSignals() {
        sigemptyset(&signals_);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
            sigaddset(&signals_, signal);
        }
        pthread_sigmask(SIG_BLOCK, &signals_, &before_);
    }
    ~EndingSignals() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    EndingSignals(const EndingSignals&) = delete;
    EndingSignals& operator=(const EndingSignals&) = delete;

    void Wait() const {
        int signal = 0;
        sigwait(&signals_, &signal);
    }

private:
    sigset_t signals_{};
    sigset_t before_{};
};

/// Answers requests for the sessions of a shelf.
class Answers {
public:
    explicit Answers(SessionShelf& shelf) : shelf_(shelf) {}

    /// @param what  the address after its secret part
    void Give(const std::string& what, const Request& request, Response& response) {
        const std::string session = request.get_param_value("file");
        if (what.empty() && shelf_.IsGallery()) {
            SetPolicy(response);
            response.set_content(GalleryOf(shelf_.Name(), shelf_.Sessions()),
                                 "text/html; charset=utf-8");
        } else if (what.empty()) {
            GivePage(shelf_.Sessions().front(), response);
        } else if (what == "session") {
            GivePage(session, response);
        } else if (what == "picture") {
            GivePicture(session, request.get_param_value("theme") == "dark", response);
        } else if (what == "state") {
            GiveState(session, response);
        } else if (what == "media") {
            GiveMedia(session, request.get_param_value("number"), response);
        } else if (what == "gallery.css") {
            response.set_content(std::string(kGalleryStyle), "text/css; charset=utf-8");
        } else {
            Refuse(response, kNotFound, "there is no such page");
        }
    }

private:
    void GivePage(const std::string& session, Response& response) {
        const std::string name = AsAddress(session);
        const auto page = shelf_.Page(
            session, {.state = "state?file=" + name, .media = "media?file=" + name + "&number="});
        if (!page) {
            Refuse(response, kNotFound, "there is no such session");
        } else if (!page->ok) {
            SendExcuse(response, session, page->text);
        } else {
            response.set_content(page->text, "text/html; charset=utf-8");
        }
    }

    void GivePicture(const std::string& session, bool isDark, Response& response) {
        const auto picture =
            shelf_.Picture(session, isDark ? orvo::Theme::Dark : orvo::Theme::Light);
        if (!picture || !picture->ok) {
            Refuse(response, picture ? kFailed : kNotFound, "there is no such picture");
            return;
        }
        SetPolicy(response);
        response.set_content(picture->text, "image/svg+xml");
    }

    void GiveState(const std::string& session, Response& response) {
        const auto state = shelf_.State(session);
        if (state) {
            response.set_content(*state, "text/plain");
        } else {
            Refuse(response, kNotFound, "there is no such session");
        }
    }

    void GiveMedia(const std::string& session, const std::string& number, Response& response) {
        const auto path = shelf_.Media(session, number);
        // Of other kinds of files, some wait to be opened.
        const auto file = path && std::filesystem::is_regular_file(*path)
                              ? std::make_shared<std::ifstream>(*path, std::ios::binary)
                              : nullptr;
        if (!file || !*file) {
            Refuse(response, kNotFound, "there are no such media");
            return;
        }
        file->seekg(0, std::ios::end);
        const auto size = static_cast<std::size_t>(file->tellg());
        response.set_content_provider(
            size, "application/octet-stream",
            [file](std::size_t from, std::size_t length, httplib::DataSink& sink) {
                std::vector<char> block(std::min<std::size_t>(length, kBlock));
                file->clear();
                file->seekg(static_cast<std::streamoff>(from));
                file->read(block.data(), static_cast<std::streamsize>(block.size()));
                const auto got = static_cast<std::size_t>(file->gcount());
                return got > 0 && sink.write(block.data(), got);
            });
    }

    SessionShelf& shelf_;
};

}  // namespace

PageServer::PageServer(SessionShelf& shelf)
    : shelf_(shelf), server_(std::make_unique<httplib::Server>()), secret_(NewSecret()) {
    Answer();
}

PageServer::~PageServer() = default;

void PageServer::Answer() {
    server_->set_default_headers(Headers());
    // The library's own options let a second program listen at the same port.
    server_->set_socket_options([](int socket) {
        const int on = 1;
        setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    });
    server_->set_keep_alive_timeout(1);
    server_->set_payload_max_length(1);
    server_->set_pre_routing_handler([this](const Request& request, Response& response) {
        using Handled = httplib::Server::HandlerResponse;
        if (!IsOwn(request, port_)) {
            Refuse(response, kForbidden, "this server answers to its own pages only");
            return Handled::Handled;
        }
        if (request.method != "GET" && request.method != "HEAD") {
            Refuse(response, kNotAllowed, "this server is only read");
            return Handled::Handled;
        }
        const std::string start = "/" + secret_ + "/";
        if (!request.path.starts_with(start)) {
            Refuse(response, kNotFound, "there is no such page");
            return Handled::Handled;
        }
        try {
            Answers(shelf_).Give(request.path.substr(start.size()), request, response);
        } catch (const std::exception& error) {
            SendExcuse(response, request.get_param_value("file"), error.what());
        }
        return Handled::Handled;
    });
}

bool PageServer::Bind(std::uint16_t port) {
    if (port == 0) {
        port_ = server_->bind_to_any_port(kLoopback);
        return port_ > 0;
    }
    port_ = port;
    return server_->bind_to_port(kLoopback, port);
}

std::string PageServer::Address() const {
    return fmt::format("http://{}:{}/{}/", kLoopback, port_, secret_);
}

bool PageServer::Run(const std::function<void()>& whenReady) {
    const EndingSignals signals;
    std::atomic<bool> isEnding = false;
    std::atomic<bool> hasFailed = false;
    std::thread listener([&] {
        server_->listen_after_bind();
        if (!isEnding) {
            hasFailed = true;
            kill(getpid(), SIGTERM);  // wakes the thread that waits below
        }
    });
    while (!server_->is_running() && !hasFailed) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    if (!hasFailed) {
        whenReady();
    }
    signals.Wait();
    isEnding = true;
    server_->stop();
    listener.join();
    return !hasFailed;
}

}  // namespace cli
