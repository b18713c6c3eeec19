#include <fmt/format.h>

#include <limits>
#include <memory>
#include <string>
#include <tuple>

#include "cli/files/Kind.h"
#include "cli/files/Output.h"
#include "cli/files/PluginCheck.h"
#include "cli/files/SaveSession.h"
#include "cli/verbs/Verb.h"
#include "platform/kelcore/Types.h"
#include "toolkit/GeneratedSession.h"

// orvo generate [--tracks N] [--clips N] [--slots N] [--keyframes N] [--seed N] [--to KIND] OUT

namespace cli {
namespace {

struct GenerateOptions {
    std::string out;
    std::string to;  // as typed; if empty, the name decides
    toolkit::GeneratedSize size;
    kelcore::uint64 seed = 1;
};

/// An estimate for the progress bar: keyframes take less, clips more.
kelcore::uint64 ExpectedSizeOfJson(const toolkit::GeneratedSize& size) {
    constexpr kelcore::uint64 kBytesOfAnItem = 200;
    return kBytesOfAnItem * toolkit::CountItems(size);
}

ExitCode RunGenerate(const GenerateOptions& options) {
    const Output out(options.out);
    const Kind kind = FindKind(options.to, options.out).value_or(Kind::Orvo);
    Progress progress(out.Name(), PhasesOfSaving(kind));
    if (kind == Kind::Json) {
        return SaveJson(toolkit::GenerateSession(options.size, options.seed), {}, out, progress,
                        ExpectedSizeOfJson(options.size));
    }
    RequirePlugin();
    return SaveWholeSession(toolkit::GenerateSession(options.size, options.seed), out, progress);
}

/// Each number has its own range; this limits their total.
void CheckSize(const toolkit::GeneratedSize& size) {
    const kelcore::uint64 items = toolkit::CountItems(size);
    if (items > toolkit::kMostGeneratedItems) {
        throw CLI::ValidationError(
            fmt::format("that would be {} tracks, clips, effects and keyframes, but the "
                        "limit is {}; reduce one of the numbers",
                        items, toolkit::kMostGeneratedItems));
    }
}

}  // namespace

void AddGenerate(CLI::App& tool, Action& chosen) {
    constexpr kelcore::uint32 kMostTracks = 10'000;
    constexpr kelcore::uint32 kMost = 1'000'000;
    auto options = std::make_shared<GenerateOptions>();
    CLI::App* const verb =
        tool.add_subcommand("generate", "Generate a session of any size, for trying things.");
    verb->add_option("OUT", options->out, "the output; - for standard output")
        ->required()
        ->check(FileName());
    AddKindOption(*verb, "--to", options->to,
                  "its kind, orvo or json, if the name does not imply it; else orvo");
    verb->add_option("--tracks", options->size.tracks,
                     "total number of tracks, including the master")
        ->type_name("N")
        ->transform(WholeNumber(1, kMostTracks))
        ->capture_default_str();
    const std::tuple<const char*, kelcore::uint32*, const char*> counts[] = {
        {"--clips", &options->size.clips, "clips on each track except busses and master"},
        {"--slots", &options->size.slots, "effects on each track except video"},
        {"--keyframes", &options->size.keyframes, "keyframes for each fader and each effect"}};
    for (const auto& [name, count, description] : counts) {
        verb->add_option(name, *count, description)
            ->type_name("N")
            ->transform(WholeNumber(0, kMost))
            ->capture_default_str();
    }
    verb->add_option("--seed", options->seed, "selects one of many sessions of that size")
        ->type_name("N")
        ->transform(WholeNumber(0, std::numeric_limits<kelcore::uint64>::max()))
        ->capture_default_str();
    verb->footer(
        "Examples:\n"
        "  orvo generate song.orvo\n"
        "  orvo generate --tracks 160 --seed 7 large.orvo\n"
        "  orvo generate song.json\n"
        "  orvo generate --tracks 1 --clips 0 --slots 0 --keyframes 0 - | orvo info -\n\n"
        "The same numbers give the same session everywhere. Its media do not exist.");
    verb->callback([options, &chosen] {
        CheckSize(options->size);
        chosen = [options] { return RunGenerate(*options); };
    });
}

}  // namespace cli
