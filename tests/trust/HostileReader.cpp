#include <cstdio>
#include <ctime>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"
#include "reference_host/LiveNodes.h"
#include "reference_host/Sessions.h"
#include "tests/trust/OpenedFiles.h"

// HostileReader FILE: reads one file as a host would and says, as JSON, what came of it and what it
// cost.

namespace {

/// The most memory that this program has had at once. (What getrusage tells may be its parent's.)
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

nlohmann::json ReadAndReport(refhost::Plugin& plugin, const std::u16string& path) {
    const long peakBefore = PeakKibibytes();
    const std::clock_t begin = std::clock();  // of this process: others may keep it waiting
    test::RecordOpened(true);
    const refhost::ReadResult read = refhost::ReadSession(plugin, path);
    test::RecordOpened(false);
    const double seconds = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;

    std::vector<std::string> messages;
    for (const std::u16string& message : read.messages) {
        messages.push_back(kelcore::UTF16to8(message));
    }
    return {{"result", static_cast<int>(read.result)},
            {"messages", messages},
            {"seconds", seconds},
            {"peakKiB", PeakKibibytes() - peakBefore},
            {"opened", test::Opened()},
            {"liveNodes", refhost::LiveNodes()}};
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: HostileReader FILE\n");
        return 2;
    }
    refhost::UseFeatureDefaults();
    refhost::Plugin plugin;
    const nlohmann::json report = ReadAndReport(plugin, kelcore::PathFromBytes(argv[1]));
    std::puts(report.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace).c_str());
    return 0;
}
