#pragma once

#include <optional>
#include <string>

#include <orvo/EditorState.h>
#include "platform/kelcore/Types.h"

namespace toolkit {

/// A position in samples as "hh:mm:ss:ff", to the nearest frame; with drop frame "hh:mm:ss;ff",
/// where NTSC leaves out numbers of frames. Nothing if the format is no timecode, or has no rate.
std::optional<std::string> FormatTimecode(kelcore::int64 samples, kelcore::uint32 sampleRate,
                                          const orvo::TimeFormat& format);

}  // namespace toolkit
