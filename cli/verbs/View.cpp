#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include <orvo/Draw.h>
#include <orvo/Page.h>
#include <orvo/Times.h>
#include "cli/files/AnySession.h"
#include "cli/files/LeftToSystem.h"
#include "cli/files/Output.h"
#include "cli/files/PluginCheck.h"
#include "cli/files/PngCanvas.h"
#include "cli/files/ReadProgress.h"
#include "cli/terminal/Messages.h"
#include "cli/terminal/ProgressBar.h"
#include "cli/terminal/Stream.h"
#include "cli/verbs/Verb.h"
#include "cli/verbs/ViewPage.h"
#include "toolkit/FileNames.h"

// orvo view FILE... -o OUT [--contact-sheet] [--as FORM] [--from TIME] [--to TIME]
//           [--tracks PATTERN] [--width N] [--height N] [--theme THEME] [--[no-]lanes]
//           [--no-waveforms] [--cache DIR] [--title TEXT] [--audio HOW] [--open]
// orvo view --serve FILE|FOLDER [--port N] [--cache DIR] [--audio link] [--open]

namespace cli {
namespace {

enum class PictureForm { Svg, Png, Html };

struct ViewOptions {
    std::vector<std::string> files;
    bool contactSheet = false;
    std::string kind;  // of a file whose name implies none
    std::string out;
    std::optional<PictureForm> form;
    std::string from;
    std::string to;
    orvo::LayoutOptions layout;
    orvo::DrawOptions draw;
    std::optional<std::string> title;
    bool lanes = false;
    bool noLanes = false;
    bool noWaveforms = false;
    orvo::PageAudio audio = orvo::PageAudio::None;
    std::string cache;
    bool serve = false;
    ServeOptions pages;
    double scale = 2;
};

const std::map<std::string, PictureForm> kForms = {
    {"html", PictureForm::Html}, {"png", PictureForm::Png}, {"svg", PictureForm::Svg}};
const std::map<std::string, orvo::PageAudio> kAudio = {{"embed", orvo::PageAudio::Embedded},
                                                       {"link", orvo::PageAudio::Linked}};
const std::map<std::string, orvo::Theme> kThemes = {
    {"dark", orvo::Theme::Dark}, {"light", orvo::Theme::Light}, {"print", orvo::Theme::Print}};

/// @throws CLI::ValidationError  if neither the option nor the name says it
PictureForm FormOf(const ViewOptions& options) {
    if (options.out.empty()) {
        throw CLI::ValidationError("say where to save: -o OUT; or --serve");
    }
    if (options.form) {
        return *options.form;
    }
    const auto form = kForms.find(toolkit::ExtensionOf(options.out));
    if (form == kForms.end()) {
        throw CLI::ValidationError(
            "\"" + options.out +
            "\" does not end in .svg, .png or .html; say --as svg, png or html");
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

std::string LastPart(const std::string& name) {
    return name.substr(name.find_last_of('/') + 1);
}

/// Reads sessions and draws them, each in its phases of the progress.
class Drawing {
public:
    explicit Drawing(const ViewOptions& options)
        : options_(options),
          layoutOptions_(options.layout),
          waveformOptions_{.width = options.draw.width, .cache = options.cache},
          progress_("sessions", PhasesOf(options.files)) {
        layoutOptions_.lanes = !options.noLanes && !options.contactSheet;
    }

    /// @return the file; nothing, after a report, if that fails
    std::optional<std::string> Picture(PictureForm form) {
        if (options_.contactSheet) {
            return ContactSheet(form);
        }
        const std::optional<Scene> scene = ReadOneOrTwo();
        if (!scene) {
            return std::nullopt;
        }
        orvo::DrawOptions draw = options_.draw;
        draw.title = scene->title;
        return DrawnOn(form, orvo::HeadOf(*scene->layout, draw), [&](orvo::Canvas& canvas) {
            orvo::Draw(canvas, *scene->layout, scene->waveforms, draw);
            return orvo::HeadOf(*scene->layout, draw);
        });
    }

    /// Its reader may look closer, so it has the sounds as a whole.
    ExitCode SaveAsPage(const Output& out) {
        waveformOptions_.width.reset();
        const std::optional<Scene> scene = ReadOneOrTwo();
        if (!scene) {
            return ExitCode::Failure;
        }
        const Progress::Phase drawing = progress_.Begin(kDrawing, scene->title);
        return SavePage(out, *scene->layout, *scene->session, scene->waveforms,
                        {.title = scene->title, .audio = options_.audio});
    }

    /// Whether every session is in the picture.
    bool IsWhole() const { return isWhole_; }

private:
    static std::vector<ProgressPhase> PhasesOf(const std::vector<std::string>& files) {
        std::vector<ProgressPhase> phases;
        for (const std::string& file : files) {
            phases.push_back({kReading, SizeOrOne(file)});
            phases.push_back({kListening, SizeOrOne(file)});
        }
        phases.push_back({kDrawing});
        return phases;
    }

    std::optional<NamedSession> ReadFile(const std::string& file) {
        return ReadToLookAt(file, KindToLookAt(file, options_.kind), progress_);
    }

    const NamedSession* Read(const std::string& file) {
        const std::optional<NamedSession>& read = LeaveToSystem(ReadFile(file));
        return read ? &*read : nullptr;
    }

    std::vector<std::optional<orvo::Waveform>> Listen(const orvo::Layout& layout,
                                                      const std::string& name) {
        if (options_.noWaveforms) {
            return {};
        }
        const Progress::Phase listening = progress_.Begin(kListening, name);
        return orvo::ReadWaveforms(layout, waveformOptions_);
    }

    /// What is drawn. It points to what is left to the system.
    struct Scene {
        const orvo::Session* session;
        const orvo::Layout* layout;
        std::vector<std::optional<orvo::Waveform>> waveforms;
        std::string title;
    };

    /// @return nothing, after a report, if no track is left of the session
    std::optional<Scene> SceneOf(const orvo::Session& session, orvo::Layout layout,
                                 const std::string& name) {
        if (!HasTracks(layout)) {
            return std::nullopt;
        }
        const orvo::Layout& kept = LeaveToSystem(std::move(layout));
        return Scene{&session, &kept, Listen(kept, name), options_.title.value_or(name)};
    }

    std::optional<Scene> ReadOneOrTwo() {
        return options_.files.size() == 2 ? CompareTwo() : ReadOne();
    }

    std::optional<Scene> ReadOne() {
        const NamedSession* const read = Read(options_.files.front());
        if (read == nullptr || !ParseLimits(read->session)) {
            return std::nullopt;
        }
        return SceneOf(read->session, orvo::MakeLayout(read->session, layoutOptions_),
                       LastPart(read->name));
    }

    std::optional<Scene> CompareTwo() {
        const NamedSession* const before = Read(options_.files.front());
        const NamedSession* const after = Read(options_.files.back());
        if (before == nullptr || after == nullptr || !ParseLimits(after->session)) {
            return std::nullopt;
        }
        return SceneOf(after->session,
                       orvo::MakeChangeLayout(before->session, after->session, layoutOptions_),
                       LastPart(before->name) + " → " + LastPart(after->name));
    }

    /// The file of what `draw` draws on a canvas.
    /// @param most  what the picture says of itself at its highest
    /// @param draw  returns what it says of itself
    template <class Draw>
    std::string DrawnOn(PictureForm form, const orvo::PictureHead& most, const Draw& draw) {
        if (form == PictureForm::Png) {
            PngCanvas canvas(most.width, most.height, options_.scale);
            const orvo::PictureHead head = draw(canvas);
            const Progress::Phase drawing = progress_.Begin(kDrawing, head.title);
            return canvas.Take(head.height);
        }
        orvo::SvgCanvas canvas;
        return canvas.Take(draw(canvas));
    }

    /// @return nothing if no session can be read
    std::optional<std::string> ContactSheet(PictureForm form) {
        orvo::DrawOptions draw = options_.draw;
        draw.title = options_.title.value_or("Sessions");
        bool isAnyThere = false;
        std::string file = DrawnOn(form, orvo::ContactSheet::HeadOf(draw, options_.files.size()),
                                   [&](orvo::Canvas& canvas) {
                                       orvo::ContactSheet sheet(canvas, draw);
                                       isAnyThere = AddSessions(sheet);
                                       return sheet.Head();
                                   });
        return isAnyThere ? std::optional(std::move(file)) : std::nullopt;
    }

    /// Sessions that cannot be read are reported and left out. Keeps one at a time.
    /// @return whether there are any others
    bool AddSessions(orvo::ContactSheet& sheet) {
        bool isAnyThere = false;
        waveformOptions_.width = sheet.PictureWidth();
        for (const std::string& file : options_.files) {
            if (const std::optional<NamedSession> read = ReadFile(file)) {
                const orvo::Layout layout = orvo::MakeLayout(read->session, layoutOptions_);
                sheet.Add(layout, Listen(layout, read->name), LastPart(read->name));
                isAnyThere = true;
            } else {
                isWhole_ = false;
            }
        }
        return isAnyThere;
    }

    bool ParseLimits(const orvo::Session& session) {
        return ParseLimit(session, "--from", options_.from, layoutOptions_.from) &&
               ParseLimit(session, "--to", options_.to, layoutOptions_.to) && AreLimitsInOrder();
    }

    /// Reports if not.
    bool AreLimitsInOrder() const {
        const bool areInOrder =
            !layoutOptions_.from || !layoutOptions_.to || *layoutOptions_.from < *layoutOptions_.to;
        if (!areInOrder) {
            Complain({.subject = "--to " + options_.to,
                      .what = "not after --from " + options_.from,
                      .advice = "choose a later time"});
        }
        return areInOrder;
    }

    /// Whether there are tracks if some were asked for; reports if not.
    bool HasTracks(const orvo::Layout& layout) const {
        const bool areAskedFor = options_.layout.tracks != orvo::LayoutOptions().tracks;
        const bool hasTracks = !areAskedFor || !layout.rows.empty();
        if (!hasTracks) {
            Complain({.subject = "--tracks " + options_.layout.tracks,
                      .what = "no track has such a name",
                      .advice = "see \"orvo info --tracks " + options_.files.back() + "\""});
        }
        return hasTracks;
    }

    const ViewOptions& options_;
    orvo::LayoutOptions layoutOptions_;
    orvo::WaveformOptions waveformOptions_;
    Progress progress_;
    bool isWhole_ = true;
};

/// @return whether the folder is there; reports if not
bool MakeCache(const ViewOptions& options) {
    std::error_code error;
    if (!options.cache.empty() && !std::filesystem::is_directory(options.cache, error)) {
        std::filesystem::create_directories(options.cache, error);
        if (error) {
            Complain({.subject = "--cache " + options.cache,
                      .what = "the folder cannot be made",
                      .advice = error.message()});
            return false;
        }
    }
    return true;
}

ExitCode RunServe(const ViewOptions& options) {
    RequirePlugin();
    if (!MakeCache(options)) {
        return ExitCode::Failure;
    }
    SessionShelf::Options sessions{.layout = options.layout,
                                   .waveforms = !options.noWaveforms,
                                   .audio = options.audio != orvo::PageAudio::None,
                                   .cache = options.cache};
    sessions.layout.lanes = !options.noLanes;
    return ServePages(options.files.front(), sessions, options.pages);
}

ExitCode RunView(const ViewOptions& options, PictureForm form) {
    const Output out(options.out);
    for (const std::string& file : options.files) {
        out.RequireOther(file);
    }
    if (!MakeCache(options)) {
        return ExitCode::Failure;
    }
    for (const std::string& file : options.files) {
        if (KindToLookAt(file, options.kind) == Kind::Orvo) {
            RequirePlugin();
            break;
        }
    }
    Drawing drawing(options);
    if (form == PictureForm::Html) {
        const ExitCode saved = drawing.SaveAsPage(out);
        return saved == ExitCode::Good && options.pages.open ? OpenPage(options.out) : saved;
    }
    const std::optional<std::string> picture = drawing.Picture(form);
    if (!picture) {
        return ExitCode::Failure;
    }
    const ExitCode saved = out.Save([&picture](const Output::Sink& sink) { sink(*picture); });
    return drawing.IsWhole() ? saved : ExitCode::Failure;
}

/// @throws CLI::ValidationError  for what a server does not do
void RequireServable(const ViewOptions& options) {
    if (options.files.size() > 1 || options.files.front() == kStream) {
        throw CLI::ValidationError("one file or folder is served");
    }
    if (!options.out.empty() || !options.from.empty() || !options.to.empty()) {
        throw CLI::ValidationError("--serve saves nothing, and serves whole timelines");
    }
    if (options.audio == orvo::PageAudio::Embedded) {
        throw CLI::ValidationError("a server hands the media out: --audio link");
    }
}

/// @throws CLI::ValidationError  for what does not go together
void RequireDrawable(const ViewOptions& options, PictureForm form) {
    if (form == PictureForm::Html && options.contactSheet) {
        throw CLI::ValidationError("a contact sheet is a picture: draw it as .svg or .png");
    }
    if (options.lanes && (options.noLanes || options.contactSheet)) {
        throw CLI::ValidationError(options.noLanes ? "--lanes or --no-lanes: choose one"
                                                   : "a contact sheet has no automation");
    }
    if (options.audio != orvo::PageAudio::None &&
        (form != PictureForm::Html || options.files.size() > 1)) {
        throw CLI::ValidationError("--audio is for the page of one session: -o OUT.html");
    }
    if (options.pages.open && (form != PictureForm::Html || options.out == "-")) {
        throw CLI::ValidationError("--open shows a page: save one with -o OUT.html");
    }
    if (options.files.size() > 2 && !options.contactSheet) {
        throw CLI::ValidationError(
            "one session is drawn, or what changed between two; add --contact-sheet for more");
    }
}

}  // namespace

void AddView(CLI::App& tool, Action& chosen) {
    auto options = std::make_shared<ViewOptions>();
    CLI::App* const verb = tool.add_subcommand("view", "Draw a session's timeline.");
    verb->add_option("FILE", options->files,
                     "a session, or its JSON; two: what changed between them; - for standard input")
        ->required();
    verb->add_flag("--contact-sheet", options->contactSheet,
                   "one picture of many sessions, without automation");
    verb->add_option("-o,--output", options->out,
                     "the picture, .svg or .png, or the page, .html; - for standard output")
        ->type_name("OUT")
        ->check(FileName());
    CLI::Option* const serve = verb->add_flag(
        "--serve", options->serve,
        "serve the page of FILE, or of each session in the folder FILE, on this computer only, and "
        "load it again when the session changes; Ctrl-C ends it");
    verb->add_option("--port", options->pages.port, "of the served pages; else a free one")
        ->type_name("N")
        ->needs(serve)
        ->check(CLI::Range(1, 65'535).description(""));
    verb->add_option("--as", options->form, "svg, png or html, if the name does not imply it")
        ->type_name("FORM")
        ->transform(CLI::Transformer(kForms).description(""));
    AddKindOption(*verb, "--kind", options->kind,
                  "of FILE, orvo or json, if the name does not imply it; else orvo");
    verb->add_option("--from", options->from, "where the picture begins")->type_name("TIME");
    verb->add_option("--to", options->to, "where it ends")->type_name("TIME");
    verb->add_option("--tracks", options->layout.tracks,
                     "only tracks whose name fits, such as \"Vocal*\"")
        ->type_name("PATTERN");
    verb->add_flag("--lanes", options->lanes, "with automation (the default)");
    verb->add_flag("--no-lanes", options->noLanes, "without automation");
    verb->add_flag("--no-waveforms", options->noWaveforms, "without a look into the media");
    verb->add_option("--cache", options->cache,
                     "a folder that keeps what was heard in long media, for the next time")
        ->type_name("DIR");
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
    verb->add_option("--audio", options->audio,
                     "embed or link: a page that plays the clips, with the media in it or beside "
                     "it; with --serve, link")
        ->type_name("HOW")
        ->transform(CLI::Transformer(kAudio).description(""));
    verb->add_flag("--open", options->pages.open, "show the page in the browser of this system");
    verb->footer(
        "Examples:\n"
        "  orvo view song.orvo -o song.svg\n"
        "  orvo view --theme dark --from 0:30 --to 1:00 song.orvo -o chorus.png\n"
        "  orvo view --tracks 'Vocal*' --no-lanes song.orvo -o vocals.svg\n"
        "  orvo view song.orvo -o song.html --open\n"
        "  orvo view --audio embed song.orvo -o song.html\n"
        "  orvo view monday.orvo tuesday.orvo -o changes.svg\n"
        "  orvo view --contact-sheet /archive/*.orvo -o archive.png\n"
        "  orvo view --serve --open sessions\n\n"
        "Media that are not there are hatched. Times are as the session shows them, or h:mm:ss.");
    verb->callback([options, &chosen] {
        if (options->serve) {
            RequireServable(*options);
            chosen = [options] { return RunServe(*options); };
            return;
        }
        const PictureForm form = FormOf(*options);
        RequireDrawable(*options, form);
        chosen = [options, form] { return RunView(*options, form); };
    });
}

}  // namespace cli
