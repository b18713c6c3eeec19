#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>

#include "bench/BareParsers.h"
#include "bench/FileBytes.h"
#include "bench/Program.h"
#include "bench/ReadContenders.h"
#include "bench/Report.h"
#include "bench/Verb.h"
#include "bench/WorkFolder.h"
#include "reference_host/Sessions.h"

// orvo-bench read FILE [--rounds N] [--json]

namespace bench {
namespace {

struct ReadOptions {
    std::string file;
    std::string folder;
    std::size_t rounds = 9;
    bool json = false;
    std::string alone;              // the one contender whose memory to measure
    std::vector<std::string> cuts;  // with `alone`: the two cut copies of the file
};

// What is allocated in the steady state is the difference between two beginnings of the file: what
// a parser needs for itself, and for its report that the file ends too early, is the same in both.

constexpr std::size_t kFirstCut = 10;  // percent of the file
constexpr std::size_t kSecondCut = 90;

std::string WriteCut(const std::string& content, std::size_t hundredths, const std::string& path) {
    const std::size_t wanted = content.size() * hundredths / 100;
    const std::size_t end = content.rfind('>', wanted) + 1;  // 0 if there is none
    std::ofstream(path, std::ios::binary) << std::string_view(content).substr(0, end);
    return path;
}

/// The contender of that name.
Contender Choose(const Contenders& contenders, const std::string& name) {
    const auto chosen = std::find_if(contenders.begin(), contenders.end(),
                                     [&](const Contender& each) { return each.name == name; });
    if (chosen == contenders.end()) {
        throw std::runtime_error("there is no reader named " + name);
    }
    return *chosen;
}

/// Measured in a process of its own.
void PrintMemory(refhost::Plugin& plugin, const ReadOptions& options) {
    const auto choose = [&](const std::string& path) {
        return Choose(MakeReadContenders(plugin, path), options.alone);
    };
    MemoryUse use = MeasureMemory(choose(options.file));
    const std::uint64_t atFirst = CountAllocations(choose(options.cuts.at(0)));
    const std::uint64_t atSecond = CountAllocations(choose(options.cuts.at(1)));
    use.steadyAllocations = atSecond > atFirst ? atSecond - atFirst : 0;
    fmt::print("{}\n", ToText(use));
}

void AddReadMemory(const ReadOptions& options, Report& report) {
    const WorkFolder folder(options.folder);
    const std::string content = BytesOf(options.file);
    const std::string first = WriteCut(content, kFirstCut, folder.Path() + "/first.orvo");
    const std::string second = WriteCut(content, kSecondCut, folder.Path() + "/second.orvo");
    report.steadyElements = CountElements(second) - CountElements(first);
    for (const std::string& name : report.names) {
        report.memory[name] = MemoryUseFromText(OutputOfProgram(
            {OwnPath(), "read", options.file, "--alone", name, "--cuts", first, second}));
    }
}

void RunRead(const ReadOptions& options) {
    const XercesLibrary library;
    refhost::UseFeatureDefaults();
    refhost::Plugin plugin;
    if (!options.alone.empty()) {
        PrintMemory(plugin, options);
        return;
    }
    if (!ParseWithXerces(options.file)) {
        throw std::runtime_error(options.file + " is not well-formed, or cannot be opened");
    }
    const Contenders contenders = MakeReadContenders(plugin, options.file);
    Report report = {.title = "reading " + options.file,
                     .names = NamesOf(contenders),
                     .timings = TimeInTurn(contenders, options.rounds)};
    report.bytes = std::filesystem::file_size(options.file);
    report.elements = CountElements(options.file);
    AddReadMemory(options, report);
    fmt::print("{}\n", options.json ? ShowAsJson(report) : ShowAsText(report));
}

}  // namespace

void AddRead(CLI::App& program, Action& chosen) {
    auto options = std::make_shared<ReadOptions>();
    CLI::App* const verb = program.add_subcommand(
        "read", "Read a session with the bare parser, with the plug-in and with other parsers.");
    verb->add_option("FILE", options->file, "the session")->required();
    verb->add_option("--rounds", options->rounds, "how many rounds")
        ->check(CLI::PositiveNumber.description(""))
        ->capture_default_str();
    verb->add_option("--folder", options->folder, "where to put temporary files");
    verb->add_flag("--json", options->json, "print a JSON object");
    verb->add_option("--alone", options->alone)->group("");
    verb->add_option("--cuts", options->cuts)->group("")->expected(2);
    verb->callback([options, &chosen] { chosen = [options] { RunRead(*options); }; });
}

}  // namespace bench
