#pragma once

#include <cstdint>
#include <string>

#include <orvo/Interchange.h>
#include <orvo/Model.h>
#include <orvo/Times.h>

namespace toolkit::interchange {

/// The frame rate of a list: that of the options, else that of the session's time format if it is
/// timecode, else 25.
/// @throws Failure  if it is no rate of timecode, or drops frames and may not
orvo::FrameRate FrameRateOfList(const orvo::Session& session, const orvo::ExportOptions& options);

/// Counts samples in frames.
class FrameClock {
public:
    FrameClock(std::uint32_t sampleRate, const orvo::FrameRate& rate)
        : sampleRate_(sampleRate), rate_(rate) {}

    const orvo::FrameRate& Rate() const { return rate_; }

    /// Frames in a second of the clock, not of timecode.
    double FramesPerSecond() const;

    /// The nearest frame; halves are rounded away from 0.
    std::int64_t FramesOf(std::int64_t samples) const;

    /// Whether a frame begins at the sample.
    bool IsOnFrame(std::int64_t samples) const;

    /// The first frame that has no timecode, because a day is over.
    std::int64_t EndOfDay() const;

    /// "hh:mm:ss:ff", or "hh:mm:ss;ff" if numbers are skipped.
    /// @param frame  from 0 to before the end of the day
    std::string TimecodeOf(std::int64_t frame) const;

private:
    std::uint32_t sampleRate_;
    orvo::FrameRate rate_;
};

}  // namespace toolkit::interchange
