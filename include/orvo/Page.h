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
/// and that asks nothing of any network unless told to watch its server or to play linked media.
/// Its Content-Security-Policy lets no other script run. A layout of two sessions is shown as what
/// changed between them; `session` is then the second one.
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

/// How a page gets at the media that its audio clips play.
enum class PageAudio {
    None,      ///< it is only looked at
    Embedded,  ///< it holds the files, whose size grows by a third
    Linked     ///< it asks for them at `PageOptions::mediaAddresses`
};

struct PageOptions {
    std::string title{};  ///< such as the session's name
    /// An address, relative to that of the page, whose text changes when the session does. The page
    /// asks for it every second and then loads itself again. Empty: the page asks for nothing.
    std::string watch{};
    /// Unless none, the page plays the audio clips, as far as a browser can read their media: with
    /// gains, pans, mutes, fades and loops, without effects and sends. It says what is not heard.
    PageAudio audio = PageAudio::None;
    /// Of linked media, by their places in `Layout::media`: addresses, relative to that of the
    /// page, with escapes as in all addresses. Media with an empty one, or none, are not heard.
    /// Browsers refuse them to a page that was opened from the disk, which then lets its reader
    /// choose them.
    std::vector<std::string> mediaAddresses{};
};

/// The places in `layout.media` of files that are there and that audio clips play.
ORVO_API std::vector<std::size_t> MediaToHear(const Layout& layout);

/// Writes the page in blocks. Reads media to be embedded; those that cannot be read are not heard.
/// @param session    that the layout was made of; its JSON is what the page shows of a thing
/// @param waveforms  those of `Layout::media`, of whole files; may be fewer
ORVO_API void MakePage(const Layout& layout, const Session& session,
                       const std::vector<std::optional<Waveform>>& waveforms, const TextSink& sink,
                       const PageOptions& options = {});

/// The same as one text.
ORVO_API std::string MakePage(const Layout& layout, const Session& session,
                              const std::vector<std::optional<Waveform>>& waveforms = {},
                              const PageOptions& options = {});

}  // namespace orvo
