#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/BareParsers.h"
#include "bench/NullHost.h"
#include "bench/Program.h"
#include "bench/Report.h"
#include "bench/Verb.h"
#include "bench/WorkFolder.h"
#include "platform/kelcore/Paths.h"
#include "reference_host/Sessions.h"
#include "toolkit/GeneratedSession.h"

// orvo-bench life [--sessions N] [--rounds N] [--json]

namespace bench {
namespace {

struct LifeOptions {
    std::string folder;
    std::size_t sessions = 10'000;
    std::size_t rounds = 5;
    bool json = false;
};

// Loading

constexpr std::size_t kLoads = 21;

struct LoadTimes {
    double plugin = 0;
    double floor = 0;  // of a plug-in that only starts the XML library
};

/// In milliseconds, in a process that has loaded none of it before.
double MillisecondsToLoad(const std::filesystem::path& library) {
    return std::stod(OutputOfProgram({NeighbourPath("orvo-bench-load"), library.string()}));
}

/// The medians of both libraries, loaded in turn.
LoadTimes MeasureLoads() {
    const std::filesystem::path plugin = refhost::DefaultPluginPath();
    const std::filesystem::path floor =
        std::filesystem::path(OwnPath()).parent_path().parent_path() / "lib/orvo-bench-floor.so";
    std::vector<double> pluginTimes;
    std::vector<double> floorTimes;
    for (std::size_t i = 0; i < kLoads; ++i) {
        pluginTimes.push_back(MillisecondsToLoad(plugin));
        floorTimes.push_back(MillisecondsToLoad(floor));
    }
    return {Median(std::move(pluginTimes)), Median(std::move(floorTimes))};
}

// Small sessions

/// About 2 KB: one track and little else.
orvo::Session MakeSmallSession(kelcore::uint64 seed) {
    orvo::Session session =
        toolkit::GenerateSession({.tracks = 1, .clips = 0, .slots = 0, .keyframes = 0}, seed);
    orvo::AudioTrack& track = session.audioTracks.front();
    track.effectsRack.reset();
    track.mute.reset();
    track.pan.reset();
    track.eq.reset();
    session.trackVisibilityPresets.clear();
    session.properties.clear();
    session.metronome.globalTrackInfo.reset();
    session.xmpMetadata.clear();
    return session;
}

std::vector<std::string> WriteSmallSessions(refhost::Plugin& plugin, const std::string& folder,
                                            std::size_t count) {
    std::vector<std::string> paths;
    for (std::size_t i = 0; i < count; ++i) {
        paths.push_back(fmt::format("{}/{}.orvo", folder, i));
        const auto written = refhost::WriteSession(plugin, kelcore::PathFromBytes(paths.back()),
                                                   MakeSmallSession(i));
        if (written.result != tses::SessionResult::Ok) {
            throw std::runtime_error(paths.back() + " cannot be written");
        }
    }
    return paths;
}

template <class ReadOne>
Contender ReadAll(const char* name, const std::vector<std::string>& paths, ReadOne readOne) {
    return {.name = name, .run = [&paths, readOne] { return std::ranges::all_of(paths, readOne); }};
}

/// The paths and the plug-in must outlive the contenders.
Contenders MakeContenders(refhost::Plugin& plugin, const std::vector<std::string>& paths) {
    return {ReadAll(kFloor, paths, ParseWithXerces),
            ReadAll(kNullHost, paths,
                    [&](const std::string& path) {
                        return plugin.Read(kelcore::PathFromBytes(path), NullHost()) ==
                               tses::SessionResult::Ok;
                    }),
            ReadAll(kReferenceHost, paths, [&](const std::string& path) {
                return refhost::ReadSession(plugin, kelcore::PathFromBytes(path)).result ==
                       tses::SessionResult::Ok;
            })};
}

std::uint64_t SizeOf(const std::vector<std::string>& paths) {
    std::uint64_t bytes = 0;
    for (const std::string& path : paths) {
        bytes += std::filesystem::file_size(path);
    }
    return bytes;
}

void RunLife(const LifeOptions& options) {
    const XercesLibrary library;
    refhost::UseFeatureDefaults();
    refhost::Plugin plugin;
    const WorkFolder folder(options.folder);
    const auto paths = WriteSmallSessions(plugin, folder.Path(), options.sessions);
    const Contenders contenders = MakeContenders(plugin, paths);
    Report report = {.title = fmt::format("reading {} small sessions", paths.size()),
                     .names = NamesOf(contenders),
                     .timings = TimeInTurn(contenders, options.rounds)};
    report.bytes = SizeOf(paths);
    for (const std::string& path : paths) {
        report.elements += CountElements(path);
    }
    const LoadTimes loads = MeasureLoads();
    report.more = {{"load_ms", loads.plugin},
                   {"load_floor_ms", loads.floor},
                   {"sessions", static_cast<double>(paths.size())}};
    fmt::print("{}\n", options.json ? ShowAsJson(report) : ShowAsText(report));
}

}  // namespace

void AddLife(CLI::App& program, Action& chosen) {
    auto options = std::make_shared<LifeOptions>();
    CLI::App* const verb = program.add_subcommand(
        "life", "Load the plug-in, and read many small sessions through one that is loaded.");
    verb->add_option("--sessions", options->sessions, "how many small sessions")
        ->check(CLI::PositiveNumber.description(""))
        ->capture_default_str();
    verb->add_option("--rounds", options->rounds, "how many rounds")
        ->check(CLI::PositiveNumber.description(""))
        ->capture_default_str();
    verb->add_option("--folder", options->folder, "where to put the sessions");
    verb->add_flag("--json", options->json, "print a JSON object");
    verb->callback([options, &chosen] { chosen = [options] { RunLife(*options); }; });
}

}  // namespace bench
