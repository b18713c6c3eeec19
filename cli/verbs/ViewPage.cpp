#include "cli/verbs/ViewPage.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include <orvo/Page.h>
#include "cli/terminal/Messages.h"

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
    if (Run("xdg-open", std::filesystem::absolute(name).string())) {
        return ExitCode::Good;
    }
    Complain({.subject = name,
              .what = "saved, but the system could not show it",
              .advice = "open it in a browser"});
    return ExitCode::Failure;
}

}  // namespace cli
