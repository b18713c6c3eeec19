#include <fmt/format.h>

#include <limits>
#include <memory>
#include <string>
#include <tuple>

#include "cli/Kind.h"
#include "cli/Output.h"
#include "cli/SaveSession.h"
#include "cli/Verb.h"
#include "platform/kelcore/Types.h"
#include "reference_host/Plugin.h"
#include "reference_host/Sessions.h"
#include "toolkit/GeneratedSession.h"

// orvo generate [--tracks N] [--clips N] [--slots N] [--keyframes N] [--seed N] [--to KIND] OUT

namespace cli {
namespace {

struct Options {
    std::string out;
    std::string to;  // as written; empty: as the name says
    toolkit::GeneratedSize size;
    kelcore::uint64 seed = 1;
};

/// For the progress only: a keyframe takes less, a clip more.
kelcore::uint64 ExpectedSizeOfJson(const toolkit::GeneratedSize& size) {
    constexpr kelcore::uint64 kBytesOfAnItem = 400;
    return kBytesOfAnItem * toolkit::CountItems(size);
}

ExitCode RunGenerate(const Options& options) {
    const Output out(options.out);
    const Kind kind = FindKind(options.to, options.out).value_or(Kind::Orvo);
    Progress progress(out.Name(), PhasesOfSaving(kind));
    if (kind == Kind::Json) {
        return SaveJson(toolkit::GenerateSession(options.size, options.seed), out, progress,
                        ExpectedSizeOfJson(options.size));
    }
    refhost::UseFeatureDefaults();
    refhost::Plugin plugin;
    return SaveWholeSession(plugin, toolkit::GenerateSession(options.size, options.seed), out,
                            progress);
}

/// Each number may be as large as it likes to be, but not all of them together.
void CheckSize(const toolkit::GeneratedSize& size) {
    const kelcore::uint64 items = toolkit::CountItems(size);
    if (items > toolkit::kMostGeneratedItems) {
        throw CLI::ValidationError(
            fmt::format("that would be {} tracks, clips, effects and keyframes, more than the {} "
                        "that are made; ask for less of something",
                        items, toolkit::kMostGeneratedItems));
    }
}

}  // namespace

void AddGenerate(CLI::App& tool, Action& chosen) {
    constexpr kelcore::uint32 kMostTracks = 10'000;
    constexpr kelcore::uint32 kMost = 1'000'000;
    auto options = std::make_shared<Options>();
    CLI::App* const verb = tool.add_subcommand(
        "generate", "Make a session up, as large as it is wanted, to try things on.");
    verb->add_option("OUT", options->out, "what to write; - for standard output")
        ->required()
        ->check(FileName());
    AddKindOption(*verb, "--to", options->to,
                  "its kind, orvo or json, if its name does not tell; else orvo");
    verb->add_option("--tracks", options->size.tracks, "tracks of all kinds, the master among them")
        ->type_name("N")
        ->transform(WholeNumber(1, kMostTracks))
        ->capture_default_str();
    const std::tuple<const char*, kelcore::uint32*, const char*> counts[] = {
        {"--clips", &options->size.clips, "clips on each track that has clips"},
        {"--slots", &options->size.slots, "effects on each track but video"},
        {"--keyframes", &options->size.keyframes, "keyframes of each fader and each effect"}};
    for (const auto& [name, count, description] : counts) {
        verb->add_option(name, *count, description)
            ->type_name("N")
            ->transform(WholeNumber(0, kMost))
            ->capture_default_str();
    }
    verb->add_option("--seed", options->seed, "another seed gives another session of that size")
        ->type_name("N")
        ->transform(WholeNumber(0, std::numeric_limits<kelcore::uint64>::max()))
        ->capture_default_str();
    verb->footer(
        "Examples:\n"
        "  orvo generate song.orvo\n"
        "  orvo generate --tracks 160 --seed 7 large.orvo\n"
        "  orvo generate song.json\n"
        "  orvo generate --tracks 1 --clips 0 --slots 0 --keyframes 0 - | orvo info -\n\n"
        "The same numbers give the same session everywhere. Its media exist on no machine.");
    verb->callback([options, &chosen] {
        CheckSize(options->size);
        chosen = [options] { return RunGenerate(*options); };
    });
}

}  // namespace cli
