#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <orvo/Draw.h>
#include <orvo/Times.h>
#include "cli/files/AnySession.h"
#include "cli/files/LeftToSystem.h"
#include "cli/files/Output.h"
#include "cli/files/PluginCheck.h"
#include "cli/files/Png.h"
#include "cli/files/ReadProgress.h"
#include "cli/terminal/Messages.h"
#include "cli/terminal/ProgressBar.h"
#include "cli/terminal/Stream.h"
#include "cli/verbs/Verb.h"
#include "toolkit/FileNames.h"

// orvo view FILE -o OUT [--as FORM] [--from TIME] [--to TIME] [--tracks PATTERN] [--width N]
//                [--height N] [--theme THEME] [--no-lanes] [--no-waveforms] [--title TEXT]

namespace cli {
namespace {

enum class PictureForm { Svg, Png };

struct ViewOptions {
    std::string file;
    std::string kind;  // of a file whose name implies none
    std::string out;
    std::optional<PictureForm> form;
    std::string from;
    std::string to;
    orvo::LayoutOptions layout;
    orvo::DrawOptions draw;
    std::optional<std::string> title;
    bool noLanes = false;
    bool noWaveforms = false;
    double scale = 2;
};

const std::map<std::string, PictureForm> kForms = {{"png", PictureForm::Png},
                                                   {"svg", PictureForm::Svg}};
const std::map<std::string, orvo::Theme> kThemes = {
    {"dark", orvo::Theme::Dark}, {"light", orvo::Theme::Light}, {"print", orvo::Theme::Print}};

/// @throws CLI::ValidationError  if neither the option nor the name says it
PictureForm FormOf(const ViewOptions& options) {
    if (options.form) {
        return *options.form;
    }
    const auto form = kForms.find(toolkit::ExtensionOf(options.out));
    if (form == kForms.end()) {
        throw CLI::ValidationError("\"" + options.out +
                                   "\" does not end in .svg or .png; say --as svg or --as png");
    }
    return form->second;
}

/// Takes the session's own form of times, and hours, minutes and seconds.
/// @return whether the text is a time; reports if not
bool ParseLimit(const orvo::Session& session, const char* option, const std::string& text,
                std::optional<std::int64_t>& limit) {
    if (text.empty()) {
        return true;
    }
    orvo::PositionResult parsed = orvo::ParsePosition(session, text);
    if (!parsed) {
        parsed = orvo::ParseTime(text, session.sampleRate);
    }
    if (!parsed) {
        Complain({.subject = std::string(option) + " " + text,
                  .what = "not a time of this session",
                  .advice = "write it like " + orvo::FormatPosition(session, session.duration)});
        return false;
    }
    limit = parsed.position;
    return true;
}

constexpr const char* kListening = "reading the media of";
constexpr const char* kDrawing = "drawing";

std::string TitleOf(const ViewOptions& options, const std::string& name) {
    return options.title.value_or(name.substr(name.find_last_of('/') + 1));
}

ExitCode RunView(const ViewOptions& options, PictureForm form) {
    const Output out(options.out);
    const Kind kind = KindToLookAt(options.file, options.kind);
    if (kind == Kind::Orvo) {
        RequirePlugin();
    }
    Progress progress(options.file, {{kReading}, {kListening}, {kDrawing}});
    const std::optional<NamedSession>& read =
        LeaveToSystem(ReadToLookAt(options.file, kind, progress));
    orvo::LayoutOptions range = options.layout;
    if (!read || !ParseLimit(read->session, "--from", options.from, range.from) ||
        !ParseLimit(read->session, "--to", options.to, range.to)) {
        return ExitCode::Failure;
    }
    range.lanes = !options.noLanes;
    const orvo::Layout& layout = LeaveToSystem(orvo::MakeLayout(read->session, range));
    std::vector<std::optional<orvo::Waveform>> waveforms;
    if (!options.noWaveforms) {
        const Progress::Phase listening = progress.Begin(kListening, read->name);
        waveforms = orvo::ReadWaveforms(layout);
    }
    const Progress::Phase drawing = progress.Begin(kDrawing, read->name);
    orvo::DrawOptions draw = options.draw;
    draw.title = TitleOf(options, read->name);
    const std::string svg = orvo::DrawSvg(layout, waveforms, draw);
    const std::string picture = form == PictureForm::Svg ? svg : DrawPng(svg, options.scale);
    return out.Save([&picture](const Output::Sink& sink) { sink(picture); });
}

}  // namespace

void AddView(CLI::App& tool, Action& chosen) {
    auto options = std::make_shared<ViewOptions>();
    CLI::App* const verb = tool.add_subcommand("view", "Draw a session's timeline.");
    verb->add_option("FILE", options->file, "the session, or its JSON; - for standard input")
        ->required();
    verb->add_option("-o,--output", options->out,
                     "the picture, .svg or .png; - for standard output")
        ->type_name("OUT")
        ->required()
        ->check(FileName());
    verb->add_option("--as", options->form, "svg or png, if the name does not imply it")
        ->type_name("FORM")
        ->transform(CLI::Transformer(kForms).description(""));
    AddKindOption(*verb, "--kind", options->kind,
                  "of FILE, orvo or json, if the name does not imply it; else orvo");
    verb->add_option("--from", options->from, "where the picture begins")->type_name("TIME");
    verb->add_option("--to", options->to, "where it ends")->type_name("TIME");
    verb->add_option("--tracks", options->layout.tracks,
                     "only tracks whose name fits, such as \"Vocal*\"")
        ->type_name("PATTERN");
    verb->add_flag("--no-lanes", options->noLanes, "without automation");
    verb->add_flag("--no-waveforms", options->noWaveforms, "without a look into the media");
    verb->add_option("--width", options->draw.width, "in pixels")
        ->type_name("N")
        ->check(CLI::Range(400, 20'000).description(""))
        ->capture_default_str();
    verb->add_option("--height", options->draw.height, "in pixels; else as high as the tracks need")
        ->type_name("N")
        ->check(CLI::Range(60, 20'000).description(""));
    verb->add_option("--scale", options->scale, "pixels of a PNG to each of these")
        ->type_name("N")
        ->check(CLI::Range(0.1, 8.0).description(""))
        ->capture_default_str();
    verb->add_option("--theme", options->draw.theme, "light, dark or print")
        ->type_name("THEME")
        ->transform(CLI::Transformer(kThemes).description(""));
    verb->add_option("--title", options->title, "above the picture; else the name of FILE")
        ->type_name("TEXT");
    verb->footer(
        "Examples:\n"
        "  orvo view song.orvo -o song.svg\n"
        "  orvo view --theme dark --from 0:30 --to 1:00 song.orvo -o chorus.png\n"
        "  orvo view --tracks 'Vocal*' --no-lanes song.orvo -o vocals.svg\n\n"
        "Media that are not there are hatched. Times are as the session shows them, or h:mm:ss.");
    verb->callback([options, &chosen] {
        const PictureForm form = FormOf(*options);
        chosen = [options, form] { return RunView(*options, form); };
    });
}

}  // namespace cli
