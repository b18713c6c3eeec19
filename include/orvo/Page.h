#pragma once

#include <optional>
#include <string>
#include <vector>

#include <orvo/Api.h>
#include <orvo/Draw.h>
#include <orvo/Json.h>
#include <orvo/Layout.h>
#include <orvo/Model.h>

/// A session as a page for a browser: one HTML file that holds its script, its style and its data,
/// and that asks nothing of any network unless told to watch its server. Its
/// Content-Security-Policy lets no other script run.
///
///     orvo::Layout layout = orvo::MakeLayout(session);
///     std::string page = orvo::MakePage(layout, session, orvo::ReadWaveforms(layout));
///
/// No text of a session becomes markup. Malformed UTF-8 becomes U+FFFD. Positions beyond 2^53 are
/// drawn where the nearest number of that precision lies.
///
/// All functions may run in any number of threads and throw nothing but std::bad_alloc, and what
/// the caller's own functions throw.
namespace orvo {

struct PageOptions {
    std::string title{};  ///< such as the session's name
    /// An address, relative to that of the page, whose text changes when the session does. The page
    /// asks for it every second and then loads itself again. Empty: the page asks for nothing.
    std::string watch{};
};

/// Writes the page in blocks.
/// @param session    that the layout was made of; its JSON is what the page shows of a thing
/// @param waveforms  those of `Layout::media`; may be fewer
ORVO_API void MakePage(const Layout& layout, const Session& session,
                       const std::vector<std::optional<Waveform>>& waveforms, const TextSink& sink,
                       const PageOptions& options = {});

/// The same as one text.
ORVO_API std::string MakePage(const Layout& layout, const Session& session,
                              const std::vector<std::optional<Waveform>>& waveforms = {},
                              const PageOptions& options = {});

}  // namespace orvo
