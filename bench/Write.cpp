#include <fmt/format.h>

#include <filesystem>
#include <memory>
#include <string>

#include "bench/BareParsers.h"
#include "bench/FileBytes.h"
#include "bench/Program.h"
#include "bench/Report.h"
#include "bench/Verb.h"
#include "bench/WorkFolder.h"
#include "bench/WriteContenders.h"
#include "reference_host/Sessions.h"

// orvo-bench write FILE [--rounds N] [--folder FOLDER] [--json]

namespace bench {
namespace {

struct WriteOptions {
    std::string file;
    std::string folder;
    std::size_t rounds = 9;
    bool json = false;
    std::string alone;  // the one contender whose memory to measure
};

/// Measured in a process of its own.
void PrintMemory(WriteContenders& writers, const std::string& name) {
    fmt::print("{}\n", ToText(MeasureMemory(writers.Make(name))));
}

void AddWriteMemory(const WriteOptions& options, Report& report) {
    for (const std::string& name : report.names) {
        std::vector<std::string> arguments = {OwnPath(), "write", options.file, "--alone", name};
        if (!options.folder.empty()) {
            arguments.insert(arguments.end(), {"--folder", options.folder});
        }
        report.memory[name] = MemoryUseFromText(OutputOfProgram(arguments));
    }
}

/// Compares the files after all contenders have written.
void CompareFiles(const WriteContenders& writers, Report& report) {
    const std::string shown = BytesOf(writers.OutputOf(kReferenceHost));
    for (const char* const name :
         {kFloor, kNullHost, kStreamedNullHost, kStreamedReferenceHost, kCopy}) {
        report.sameBytes[name] = BytesOf(writers.OutputOf(name)) == shown;
    }
}

Report Measure(WriteContenders& writers, const WriteOptions& options) {
    Contenders contenders;
    for (const char* const name :
         {kFloor, kNullHost, kReferenceHost, kStreamedNullHost, kStreamedReferenceHost, kCopy}) {
        contenders.push_back(writers.Make(name));
    }
    Report report = {.title = "writing " + options.file,
                     .names = NamesOf(contenders),
                     .timings = TimeInTurn(contenders, options.rounds)};
    const std::string output = writers.OutputOf(kReferenceHost);
    report.bytes = std::filesystem::file_size(output);
    report.elements = CountElements(output);
    CompareFiles(writers, report);
    return report;
}

void RunWrite(const WriteOptions& options) {
    const XercesLibrary library;
    refhost::UseFeatureDefaults();
    refhost::Plugin plugin;
    const WorkFolder folder(options.folder);
    WriteContenders writers(plugin, options.file, folder.Path());
    if (!options.alone.empty()) {
        PrintMemory(writers, options.alone);
        return;
    }
    Report report = Measure(writers, options);
    AddWriteMemory(options, report);
    fmt::print("{}\n", options.json ? ShowAsJson(report) : ShowAsText(report));
}

}  // namespace

void AddWrite(CLI::App& program, Action& chosen) {
    auto options = std::make_shared<WriteOptions>();
    CLI::App* const verb =
        program.add_subcommand("write", "Write a session with the bare DOM and with the plug-in.");
    verb->add_option("FILE", options->file, "the session")->required();
    verb->add_option("--rounds", options->rounds, "how many rounds")
        ->check(CLI::PositiveNumber.description(""))
        ->capture_default_str();
    verb->add_option("--folder", options->folder,
                     "where to write; by default a folder in memory, so that no disk is measured");
    verb->add_flag("--json", options->json, "print a JSON object");
    verb->add_option("--alone", options->alone)->group("");
    verb->callback([options, &chosen] { chosen = [options] { RunWrite(*options); }; });
}

}  // namespace bench
