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

/// Positions on the timeline as texts for people, and back. A position is a count of samples at the
/// session's sample rate, from the begin of the timeline, and may be negative.
///
/// All arithmetic is exact: a text depends on the position alone, and nothing drifts. Every
/// position and every sample rate but 0 has a text. A text is that of the nearest unit that it can
/// show; a position in the middle of two goes away from the begin of the timeline. What reads a
/// text gives back the position that was shown, if a unit of the text lasts at most one sample, and
/// otherwise a position that is shown as the same text, if a unit lasts at least two.
///
/// All functions may run in any number of threads and throw nothing but std::bad_alloc.
namespace orvo {

/// The position that a text means.
struct PositionResult {
    bool ok = false;
    std::int64_t position = 0;        ///< in samples; 0 after a failure
    std::vector<Message> messages{};  ///< why the text means no position, without a place

    explicit operator bool() const { return ok; }
    friend bool operator==(const PositionResult&, const PositionResult&) = default;
};

// Hours, minutes and seconds

/// The most digits behind the point of a second that are printed.
inline constexpr unsigned kMostDecimals = 9;

/// "h:mm:ss.mmm", with "-" in front of a negative position that is not shown as 0.
/// @param decimals  how many digits stand behind the point; 0: no point; more than `kMostDecimals`
///                  are that many
/// @return nothing if the sample rate is 0
ORVO_API std::optional<std::string> FormatTime(std::int64_t position, std::uint32_t sampleRate,
                                               unsigned decimals = 3);

/// The same in seconds alone: "3723.500".
ORVO_API std::optional<std::string> FormatSeconds(std::int64_t position, std::uint32_t sampleRate,
                                                  unsigned decimals = 3);

/// Reads "h:mm:ss", "m:ss" or "s", with or without a sign "-" in front and a point with up to 18
/// digits behind. What has something in front of it is less than 60.
/// @return the nearest sample; a failure for any other text, for a position of more than 64 bits,
///         and if the sample rate is 0
ORVO_API PositionResult ParseTime(std::string_view text, std::uint32_t sampleRate);

// Timecode

/// How timecode counts frames.
struct FrameRate {
    std::uint32_t count = 25;  ///< the frames that are counted as a second, from 1
    bool ntsc = false;         ///< a second of timecode lasts 1.001 seconds: 30 is 29.97 a second
    /// Each minute but every tenth begins with the number `count / 15` (2 at 30, 4 at 60), so that
    /// NTSC keeps the time. Only for multiples of 30.
    bool dropFrame = false;

    friend bool operator==(const FrameRate&, const FrameRate&) = default;
};

/// Prints "30 frames a second, NTSC, drop frame".
ORVO_API std::ostream& operator<<(std::ostream& out, const FrameRate& rate);

/// The frame rate of a session's timecode. That of the NTSC formats is in their names, and the
/// members beside them are not asked; `TimeDisplay::Timecode` takes them as they are, and drops
/// frames of NTSC at multiples of 30 only. `customFrameRate` is the host's own and is not asked.
/// @return nothing if the format is no timecode or its frame rate is not above 0
ORVO_API std::optional<FrameRate> FrameRateOf(const TimeFormat& format);

/// "hh:mm:ss:ff", with drop frame "hh:mm:ss;ff", with "-" in front of a negative position that is
/// not shown as 0. Frames have as many digits as the highest number of one, at least two. Hours go
/// on beyond 23.
/// @return nothing if the sample rate or the frame rate's count is 0, or if frames are dropped at a
///         rate that is no multiple of 30
ORVO_API std::optional<std::string> FormatTimecode(std::int64_t position, std::uint32_t sampleRate,
                                                   const FrameRate& rate);

/// Reads what `FormatTimecode` prints, with any number of digits. A colon before the frames is read
/// with drop frame, too; a semicolon is not without.
/// @return the first sample of the frame: that at its begin, or else the next one. A failure for
///         any other text, for a number that is dropped, for a position of more than 64 bits, and
///         where `FormatTimecode` returns nothing
ORVO_API PositionResult ParseTimecode(std::string_view text, std::uint32_t sampleRate,
                                      const FrameRate& rate);

// Bars and beats

/// "bar:beat.subdivision", as "3:2.05". Bars and beats count from 1, subdivisions from 0; bar 0 is
/// the one before the begin of the timeline. Subdivisions have as many digits as the highest number
/// of one; if a beat has less than two, "bar:beat" is all.
///
/// The tempo is taken to the nearest millionth of a beat a minute, and holds everywhere: changes on
/// the musical timeline, whose layout is the host's own, do not count. The beat is what the tempo
/// counts, whatever its note.
/// @return nothing if the sample rate is 0, if the tempo or the beats of a bar are not above 0, or
///         if one of these or the subdivisions are above 1000000
ORVO_API std::optional<std::string> FormatBarsAndBeats(std::int64_t position,
                                                       std::uint32_t sampleRate,
                                                       const MusicalTime& time);

/// Reads what `FormatBarsAndBeats` prints, with any number of digits, with or without subdivisions.
/// @return the first sample of the subdivision: that at its begin, or else the next one. A failure
///         for any other text, for a position of more than 64 bits, and where `FormatBarsAndBeats`
///         returns nothing
ORVO_API PositionResult ParseBarsAndBeats(std::string_view text, std::uint32_t sampleRate,
                                          const MusicalTime& time);

// As a session shows times

/// A position as `timeFormat` shows it: as samples, timecode, bars and beats, or else as
/// `FormatTime` does, also for the host's own formats, for timecode without a frame rate and for
/// bars and beats without a tempo. If the sample rate is 0, as samples.
///
/// An application shows its own preference instead if `timeFormat.linkedToDefaults` is true. The
/// timecode of the first sample is 0: the unit of `smpteStart` is the host's own, so that it does
/// not count.
ORVO_API std::string FormatPosition(const Session& session, std::int64_t position);

/// Reads what `FormatPosition` prints of the same session.
ORVO_API PositionResult ParsePosition(const Session& session, std::string_view text);

}  // namespace orvo
