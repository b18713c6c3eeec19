#include <orvo/Page.h>

#include "session/json/SessionJson.h"
#include "toolkit/view/page/PageData.h"
#include "toolkit/view/page/PageSounds.h"
#include "toolkit/view/page/PageTemplate.h"
#include "toolkit/view/page/PageText.h"

namespace orvo {
namespace {

/// Passes the template on up to the mark, and returns what follows the mark.
std::string_view PassUpTo(std::string_view rest, std::string_view mark, const TextSink& sink) {
    const std::size_t place = rest.find(mark);
    sink(rest.substr(0, place));
    return rest.substr(place + mark.size());
}

}  // namespace

void MakePage(const Layout& layout, const Session& session,
              const std::vector<std::optional<Waveform>>& waveforms, const TextSink& sink,
              const PageOptions& options) {
    std::string_view rest = PassUpTo(page::kTemplate, page::kConnectMark, sink);
    const bool asks = !options.watch.empty() || options.audio == PageAudio::Linked;
    sink(asks ? "'self'" : "'none'");
    rest = PassUpTo(rest, page::kTitleMark, sink);
    sink(page::AsMarkup(options.title));
    rest = PassUpTo(rest, page::kPictureMark, sink);
    sink(page::DataOf(layout, waveforms, options));
    rest = PassUpTo(rest, page::kSessionMark, sink);
    json::Write(session, {.layout = json::JsonWriter::Layout::Compact, .isInScript = true}, {},
                sink);
    rest = PassUpTo(rest, page::kSoundsMark, sink);
    if (options.audio == PageAudio::Embedded) {
        page::WriteSounds(layout, sink);
    }
    sink(rest);
}

std::string MakePage(const Layout& layout, const Session& session,
                     const std::vector<std::optional<Waveform>>& waveforms,
                     const PageOptions& options) {
    std::string text;
    MakePage(
        layout, session, waveforms, [&](std::string_view block) { text += block; }, options);
    return text;
}

}  // namespace orvo
