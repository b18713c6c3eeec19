#include "cli/verbs/ViewPage.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fmt/format.h>

#include <cstdint>
#include <filesystem>

#include "cli/serve/Gallery.h"
#include "cli/serve/PageServer.h"
#include "cli/terminal/Messages.h"
#include "cli/terminal/StandardStreams.h"

namespace cli {
namespace {

/// Runs a program with one argument to its end.
/// @return whether it ran and succeeded
bool Run(std::string program, std::string argument) {
    char* const arguments[] = {program.data(), argument.data(), nullptr};
    pid_t process = 0;
    if (posix_spawnp(&process, program.c_str(), nullptr, nullptr, arguments, environ) != 0) {
        return false;
    }
    int status = 0;
    return waitpid(process, &status, 0) == process && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

ExitCode Show(const std::string& address, const std::string& subject, const char* what) {
    if (Run("xdg-open", address)) {
        return ExitCode::Good;
    }
    Complain({.subject = subject, .what = what, .advice = "open it in a browser"});
    return ExitCode::Failure;
}

constexpr std::uintmax_t kMebibyte = 1 << 20;

/// Browsers take texts of half a GiB, and a third more than the media is written.
constexpr std::uintmax_t kMostEmbedded = 256 * kMebibyte;

/// @return whether the media to embed are not too large; reports if they are
bool RequireEmbeddable(const std::string& name, const orvo::Layout& layout) {
    std::uintmax_t size = 0;
    for (const std::size_t media : orvo::MediaToHear(layout)) {
        std::error_code failed;
        const std::uintmax_t bytes = std::filesystem::file_size(layout.media[media].path, failed);
        size += failed ? 0 : bytes;
    }
    if (size <= kMostEmbedded) {
        return true;
    }
    Complain({.subject = name,
              .what = fmt::format("not saved: the media have {} MiB, and a page takes {} MiB",
                                  (size + kMebibyte - 1) / kMebibyte, kMostEmbedded / kMebibyte),
              .advice = "link them with --audio link, or choose tracks with --tracks"});
    return false;
}

/// The addresses of the media to hear, from the folder of the page.
std::vector<std::string> AddressesFrom(const std::filesystem::path& page,
                                       const orvo::Layout& layout) {
    namespace fs = std::filesystem;
    const fs::path folder = page.parent_path();
    std::vector<std::string> addresses(layout.media.size());
    for (const std::size_t media : orvo::MediaToHear(layout)) {
        const fs::path path = fs::absolute(layout.media[media].path).lexically_normal();
        for (const fs::path& part : path.lexically_relative(folder)) {
            addresses[media] += (addresses[media].empty() ? "" : "/") + AsAddress(part.string());
        }
    }
    return addresses;
}

}  // namespace

ExitCode SavePage(const Output& out, const orvo::Layout& layout, const orvo::Session& session,
                  const std::vector<std::optional<orvo::Waveform>>& waveforms,
                  orvo::PageOptions options) {
    if (options.audio == orvo::PageAudio::Embedded && !RequireEmbeddable(out.Name(), layout)) {
        return ExitCode::Failure;
    }
    if (options.audio == orvo::PageAudio::Linked) {
        options.mediaAddresses = AddressesFrom(out.FullPath(), layout);
    }
    return out.Save([&](const Output::Sink& sink) {
        orvo::MakePage(layout, session, waveforms, sink, options);
    });
}

ExitCode OpenPage(const std::string& name) {
    // The full path, lest a name be taken for an option or an address.
    return Show(std::filesystem::absolute(name).string(), name,
                "saved, but the system could not show it");
}

ExitCode ServePages(const std::string& name, const SessionShelf::Options& sessions,
                    const ServeOptions& options) {
    if (!std::filesystem::exists(name)) {
        Complain({.subject = name, .what = "there is no such file or folder"});
        return ExitCode::Failure;
    }
    SessionShelf shelf(name, sessions);
    PageServer server(shelf);
    if (!server.Bind(options.port)) {
        Complain({.subject = name,
                  .what = fmt::format("port {} is not free", options.port),
                  .advice = "leave out --port, or choose another one"});
        return ExitCode::Failure;
    }
    const bool wasEnded = server.Run([&] {
        Print(server.Address() + "\n");
        FlushOutput();
        if (options.open) {
            Show(server.Address(), name, "served, but the system could not show it");
        }
    });
    return wasEnded ? ExitCode::Good : ExitCode::Failure;
}

}  // namespace cli
