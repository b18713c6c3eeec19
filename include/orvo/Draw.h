#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <orvo/Api.h>
#include <orvo/Canvas.h>
#include <orvo/Layout.h>

/// Pictures of sessions:
///
///     orvo::Layout layout = orvo::MakeLayout(session);
///     std::string svg = orvo::DrawSvg(layout, orvo::ReadWaveforms(layout), {.title = "Song"});
///
/// All functions may run in any number of threads and throw nothing but std::bad_alloc.
namespace orvo {

/// The lowest and highest value of a stretch of sound, in any channel, from -1 to 1.
struct Peak {
    float lowest = 0;
    float highest = 0;
};

/// Peaks that follow each other.
struct PeakRun {
    std::uint64_t first = 0;  ///< how many peaks of the file come before
    std::vector<Peak> peaks{};
};

/// A sound file in little.
struct Waveform {
    std::uint32_t sampleRate = 0;
    std::uint64_t frames = 0;         ///< samples of each channel
    std::uint32_t framesPerPeak = 1;  ///< the file's last peak may stand for fewer
    std::vector<PeakRun> runs{};      ///< what is known of the file, in order and apart

    /// The lowest and highest value from one frame up to another, and a little around them; none
    /// where nothing is known.
    ORVO_API std::optional<Peak> Span(double begin, double end) const;

    /// The peaks of the whole file; null if they are not known.
    ORVO_API const std::vector<Peak>* Whole() const;
};

struct WaveformOptions {
    /// Of the picture in pixels. Only what is in the layout's range is read, as finely as such a
    /// picture needs it. None: whole files, 65,536 peaks each or 10 a second, whichever is more; if
    /// there are many files, fewer, and four million in all.
    std::optional<double> width{};
    /// A folder where peaks of long files are kept and found again; empty: none. Files in it whose
    /// sound has another size or time by now, or that are damaged, are replaced. What cannot be
    /// saved is read anew the next time.
    std::string cache{};
    /// Asked now and then, in any thread; true ends the read.
    std::function<bool()> isStopped{};
};

/// Reads the layout's sound files, several at a time. Opens regular files only. A file system that
/// does not answer within ten seconds counts as one without the file.
/// @return for each file in `Layout::media` its waveform; none if it is missing, cannot be read, is
///         not a sound, or the read was stopped, and given a width also if no clip in the range
///         plays it. The same with a cache and without
ORVO_API std::vector<std::optional<Waveform>> ReadWaveforms(const Layout& layout,
                                                            const WaveformOptions& options = {});

enum class Theme {
    Light,
    Dark,
    Print  ///< on white, with little ink
};

struct DrawOptions {
    std::string title{};  ///< above the picture, such as the session's name; empty: none
    double width = 1600;  ///< of the picture, in pixels; at least 400 is taken
    /// Of the picture, in pixels. Rows share what is left of it, without lanes if that is little.
    /// None: as high as they need, up to 12,000.
    std::optional<double> height{};
    Theme theme = Theme::Light;
    bool isSmall = false;  ///< one of many: tracks have their names only
};

/// The size of a picture that `Draw` draws, its title, and the facts of the session.
ORVO_API PictureHead HeadOf(const Layout& layout, const DrawOptions& options = {});

/// Draws a picture from the left upper corner of a canvas. The same arguments draw the same. Boxes
/// too narrow to be seen are drawn together.
/// @param waveforms  those of `Layout::media`; may be fewer
ORVO_API void Draw(Canvas& canvas, const Layout& layout,
                   const std::vector<std::optional<Waveform>>& waveforms,
                   const DrawOptions& options = {});

/// The same as an SVG document.
ORVO_API std::string DrawSvg(const Layout& layout,
                             const std::vector<std::optional<Waveform>>& waveforms,
                             const DrawOptions& options = {});

/// Many sessions in rows of small pictures. Draws each session as it is added and keeps nothing of
/// it.
///
///     orvo::SvgCanvas canvas;
///     orvo::ContactSheet sheet(canvas, {.title = "Songs"});
///     sheet.Add(layout, orvo::ReadWaveforms(layout, {.width = sheet.PictureWidth()}), "One");
///     std::string svg = canvas.Take(sheet.Head());
class ContactSheet {
public:
    /// @param canvas   outlives the sheet
    /// @param options  the title and theme of the whole, and its width
    ORVO_API explicit ContactSheet(Canvas& canvas, const DrawOptions& options = {});
    ORVO_API ~ContactSheet();
    ORVO_API ContactSheet(ContactSheet&& other) noexcept;
    ORVO_API ContactSheet& operator=(ContactSheet&& other) noexcept;

    ORVO_API double PictureWidth() const;  ///< of each session

    /// @param waveforms  those of `Layout::media`; may be fewer
    ORVO_API void Add(const Layout& layout, const std::vector<std::optional<Waveform>>& waveforms,
                      const std::string& title);

    /// What the sheet says of itself by now.
    ORVO_API PictureHead Head() const;

    /// What a sheet of so many sessions says of itself.
    ORVO_API static PictureHead HeadOf(const DrawOptions& options, std::size_t sessions);

private:
    class Drawing;

    std::unique_ptr<Drawing> drawing_;
};

}  // namespace orvo
