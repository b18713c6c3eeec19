#include <sys/socket.h>
#include <unistd.h>

#include <cstddef>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"
#include "reference_host/LiveNodes.h"
#include "reference_host/Sessions.h"
#include "tests/trust/documents/Confinement.h"
#include "tests/trust/documents/OpenedFiles.h"

// HostileReader FILE [COPY]: reads a file as a host would and saves the result to COPY if given.
// Prints as JSON what happened, what was opened, and what it cost. Creating a socket or starting a
// program ends it; --socket and --program do so on purpose.

namespace {

/// The peak memory use of this program. (getrusage may report that of the parent.)
long PeakKibibytes() {
    std::ifstream status("/proc/self/status");
    const std::string field = "VmHWM:";
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(field)) {
            return std::stol(line.substr(field.size()));
        }
    }
    return -1;
}

/// The files and sockets that `work` opens.
template <class Work>
std::vector<std::string> OpenedBy(Work work) {
    const std::size_t before = test::Opened().size();
    test::RecordOpened(true);
    work();
    test::RecordOpened(false);
    const std::vector<std::string> opened = test::Opened();
    return {opened.begin() + static_cast<std::ptrdiff_t>(before), opened.end()};
}

nlohmann::json ReadAndReport(refhost::Plugin& plugin, const std::u16string& path,
                             refhost::ReadResult& read) {
    const long peakBefore = PeakKibibytes();
    const std::clock_t begin = std::clock();  // processor time: other programs may delay this one
    const auto opened = OpenedBy([&] { read = refhost::ReadSession(plugin, path); });
    const double seconds = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;

    std::vector<std::string> messages;
    for (const std::u16string& message : read.messages) {
        messages.push_back(kelcore::UTF16to8(message));
    }
    return {{"result", static_cast<int>(read.result)},
            {"messages", messages},
            {"seconds", seconds},
            {"peakKiB", PeakKibibytes() - peakBefore},
            {"opened", opened},
            {"liveNodes", refhost::LiveNodes()}};
}

nlohmann::json SaveAndReport(refhost::Plugin& plugin, const std::u16string& path,
                             const orvo::Session& session) {
    refhost::WriteResult written;
    const auto opened = OpenedBy([&] { written = refhost::WriteSession(plugin, path, session); });
    return {{"result", static_cast<int>(written.result)}, {"opened", opened}};
}

/// Tries something that the filter must stop.
int TryForbidden(std::string_view what) {
    if (what == "--socket") {
        return ::socket(AF_INET, SOCK_STREAM, 0);
    }
    return ::execl("/bin/true", "true", static_cast<char*>(nullptr));
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.empty() || arguments.size() > 2) {
        std::fprintf(stderr, "usage: HostileReader FILE [COPY]\n");
        return 2;
    }
    refhost::UseFeatureDefaults();
    refhost::Plugin plugin;
    test::ForbidSocketsAndPrograms();
    if (arguments[0].starts_with("--")) {
        return TryForbidden(arguments[0]);
    }
    refhost::ReadResult read;
    nlohmann::json report = ReadAndReport(plugin, kelcore::PathFromBytes(arguments[0]), read);
    if (arguments.size() > 1) {
        report["saved"] = SaveAndReport(plugin, kelcore::PathFromBytes(arguments[1]), read.session);
    }
    std::puts(report.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace).c_str());
    return 0;
}
