#pragma once

#include <optional>
#include <string>

#include <orvo/EditorState.h>
#include "platform/kelcore/Types.h"

namespace toolkit {

/// A position in samples as "hh:mm:ss:ff", to the nearest frame. With drop frame it is
/// "hh:mm:ss;ff", and some frame numbers are left out. No value if the format is not timecode or
/// has no rate.
std::optional<std::string> FormatTimecode(kelcore::int64 samples, kelcore::uint32 sampleRate,
                                          const orvo::TimeFormat& format);

}  // namespace toolkit
