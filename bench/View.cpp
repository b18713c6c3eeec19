#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include <orvo/Draw.h>
#include <orvo/Layout.h>
#include <orvo/Page.h>
#include <orvo/Session.h>
#include "bench/Memory.h"
#include "bench/Report.h"
#include "bench/Timing.h"
#include "bench/Verb.h"

// orvo-bench view FILE [--rounds N] [--json]

namespace bench {
namespace {

struct ViewOptions {
    std::string file;
    std::size_t rounds = 9;
    bool json = false;
    std::string alone;  // the one contender to run
};

/// The read, and what a picture takes besides.
Contenders MakeViewContenders(const std::string& file, const orvo::Session& session) {
    return {{.name = "read", .run = [&file] { return !!orvo::ReadSession(file); }},
            {.name = "layout", .run = [&session] { return orvo::MakeLayout(session).to > 0; }},
            {.name = "picture",
             .run = [&session] { return !orvo::DrawSvg(orvo::MakeLayout(session), {}).empty(); }},
            {.name = "page", .run = [&session] {
                 return !orvo::MakePage(orvo::MakeLayout(session), session, {}).empty();
             }}};
}

void RunView(const ViewOptions& options) {
    const orvo::ReadResult read = orvo::ReadSession(options.file);
    if (!read) {
        throw std::runtime_error(options.file + " is not a session, or cannot be opened");
    }
    const Contenders contenders = MakeViewContenders(options.file, read.session);
    if (!options.alone.empty()) {
        const auto chosen = std::ranges::find(contenders, options.alone, &Contender::name);
        if (chosen == contenders.end()) {
            throw std::runtime_error("there is nothing named " + options.alone);
        }
        fmt::print("{}\n", ToText(MeasureMemory(*chosen)));
        return;
    }
    Report report = {.title = "drawing " + options.file,
                     .names = NamesOf(contenders),
                     .timings = TimeInTurn(contenders, options.rounds)};
    report.bytes = std::filesystem::file_size(options.file);
    fmt::print("{}\n", options.json ? ShowAsJson(report) : ShowAsText(report));
}

}  // namespace

void AddView(CLI::App& program, Action& chosen) {
    auto options = std::make_shared<ViewOptions>();
    CLI::App* const verb = program.add_subcommand(
        "view", "Read a session, lay it out, draw it as SVG, and make its page.");
    verb->add_option("FILE", options->file, "the session")->required();
    verb->add_option("--rounds", options->rounds, "how many rounds")
        ->check(CLI::PositiveNumber.description(""))
        ->capture_default_str();
    verb->add_flag("--json", options->json, "print a JSON object");
    verb->add_option("--alone", options->alone)->group("");
    verb->callback([options, &chosen] { chosen = [options] { RunView(*options); }; });
}

}  // namespace bench
