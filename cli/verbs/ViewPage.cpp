#include "cli/verbs/ViewPage.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fmt/format.h>

#include <filesystem>

#include <orvo/Page.h>
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

}  // namespace

ExitCode SavePage(const Output& out, const orvo::Layout& layout, const orvo::Session& session,
                  const std::vector<std::optional<orvo::Waveform>>& waveforms,
                  const std::string& title) {
    return out.Save([&](const Output::Sink& sink) {
        orvo::MakePage(layout, session, waveforms, sink, {.title = title});
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
