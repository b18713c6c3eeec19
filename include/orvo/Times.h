#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <orvo/Api.h>
#include <orvo/EditorState.h>
#include <orvo/Message.h>
#include <orvo/Model.h>

/// Positions on the timeline as text, and text as positions. A position is a number of samples from
/// the start of the timeline, at the session's sample rate. It may be negative.
///
/// The arithmetic is exact at every sample rate, for all 64 bits of a position. Formatting rounds
/// to the nearest unit of the text (a millisecond, a frame, a subdivision), and halves away from 0.
/// Parsing a formatted text gives a position that is formatted the same, provided that a unit lasts
/// at least two samples and that the text was not rounded beyond 64 bits of samples.
///
/// All functions may run in any number of threads and throw nothing but std::bad_alloc.
namespace orvo {

/// The position that was parsed.
struct PositionResult {
    bool ok = false;
    std::int64_t position = 0;        ///< in samples; 0 after a failure
    std::vector<Message> messages{};  ///< why parsing failed; without a file or line

    explicit operator bool() const { return ok; }
    friend bool operator==(const PositionResult&, const PositionResult&) = default;
};

// Hours, minutes and seconds

/// The most decimals of a second that are formatted.
inline constexpr unsigned kMostDecimals = 9;

/// "h:mm:ss.mmm", with "-" before a position that is negative and does not round to 0. With 9
/// decimals, parsing gives the original position at every sample rate below 1 GHz.
/// @param decimals  the digits after the point, capped at `kMostDecimals`; 0 omits the point
/// @return no value if the sample rate is 0
ORVO_API std::optional<std::string> FormatTime(std::int64_t position, std::uint32_t sampleRate,
                                               unsigned decimals = 3);

/// The same in seconds only: "3723.500".
ORVO_API std::optional<std::string> FormatSeconds(std::int64_t position, std::uint32_t sampleRate,
                                                  unsigned decimals = 3);

/// Parses "h:mm:ss", "m:ss" or "s", optionally with "-" before it and with a point and up to 18
/// decimals at the end. Seconds after minutes, and minutes after hours, are less than 60.
/// @return the nearest sample. Fails for any other text, for a position beyond 64 bits, and if the
///         sample rate is 0
ORVO_API PositionResult ParseTime(std::string_view text, std::uint32_t sampleRate);

// Timecode

/// How timecode counts frames.
struct FrameRate {
    std::uint32_t count = 25;  ///< frames in a second of timecode; at least 1
    bool ntsc = false;         ///< a second of timecode lasts 1.001 s: 30 frames are 29.97 a second
    /// Skips the first `count / 15` frame numbers of each minute (2 at 30, 4 at 60) except every
    /// tenth minute, so that NTSC timecode keeps up with the clock. Requires a multiple of 30.
    bool dropFrame = false;

    friend bool operator==(const FrameRate&, const FrameRate&) = default;
};

/// Prints "30 frames a second, NTSC, drop frame".
ORVO_API std::ostream& operator<<(std::ostream& out, const FrameRate& rate);

/// The frame rate of a session's timecode. `TimeDisplay::Ntsc30` and the like imply theirs.
/// `TimeDisplay::Timecode` has the `frameRate` and `ntsc` of the format, and its `dropFrame` for
/// NTSC at a multiple of 30. The meaning of `customFrameRate` is the host's; it is ignored.
/// @return no value if the format is not timecode or its frame rate is not above 0
ORVO_API std::optional<FrameRate> FrameRateOf(const TimeFormat& format);

/// "hh:mm:ss:ff", or "hh:mm:ss;ff" with drop frame, with "-" before a position that is
/// negative and does not round to 0. Frames have as many digits as the highest frame number, at
/// least two. Hours continue after 23.
/// @return no value if the sample rate or the count of the frame rate is 0, or if drop frame is set
///         and the count is not a multiple of 30
ORVO_API std::optional<std::string> FormatTimecode(std::int64_t position, std::uint32_t sampleRate,
                                                   const FrameRate& rate);

/// Parses what `FormatTimecode` returns, with any number of digits. With drop frame, the separator
/// before the frames may be a colon, too.
/// @return the first sample that is not before the start of the frame. Fails for any other text,
///         for a skipped frame number, for a position beyond 64 bits, and where `FormatTimecode`
///         returns no value
ORVO_API PositionResult ParseTimecode(std::string_view text, std::uint32_t sampleRate,
                                      const FrameRate& rate);

// Bars and beats

/// "bar:beat.subdivision", such as "3:2.05". Bars and beats count from 1, subdivisions from 0. Bar
/// 0 ends at the start of the timeline. Subdivisions have as many digits as the highest number; the
/// text is "bar:beat" if a beat has fewer than two.
///
/// The tempo is rounded to a millionth of a beat a minute and applies to the whole timeline: tempo
/// changes are in the host's own layout and are ignored. So is the note of a beat, because the
/// tempo counts beats.
/// @return no value if the sample rate is 0, if the tempo or the beats of a bar are not above 0, or
///         if any of them or the subdivisions exceeds 1000000
ORVO_API std::optional<std::string> FormatBarsAndBeats(std::int64_t position,
                                                       std::uint32_t sampleRate,
                                                       const MusicalTime& time);

/// Parses what `FormatBarsAndBeats` returns, with any number of digits. Subdivisions may be
/// omitted.
/// @return the first sample that is not before the start of the subdivision. Fails for any other
///         text, for a position beyond 64 bits, and where `FormatBarsAndBeats` returns no value
ORVO_API PositionResult ParseBarsAndBeats(std::string_view text, std::uint32_t sampleRate,
                                          const MusicalTime& time);

// As a session shows times

/// A position in the session's `timeFormat`: as samples, as timecode, as bars and beats, or as
/// `FormatTime` returns it. `FormatTime` is also used for the host's own formats, for
/// timecode without a frame rate and for bars and beats without a tempo. If the sample rate is 0,
/// the text is the number of samples.
///
/// Timecode starts at 0: `smpteStart` is ignored, because its unit is the host's. So is
/// `timeFormat.linkedToDefaults`, which makes an application use its own preference instead.
ORVO_API std::string FormatPosition(const Session& session, std::int64_t position);

/// Parses what `FormatPosition` returns for the session.
ORVO_API PositionResult ParsePosition(const Session& session, std::string_view text);

}  // namespace orvo
