#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <orvo/Draw.h>
#include "toolkit/view/ShownFrames.h"

namespace toolkit {

/// Reads the peaks of ranges that begin and end with a peak.
/// @return none if the file cannot be read as a sound, or the read was stopped
std::optional<std::vector<orvo::PeakRun>> ReadPeaks(const std::string& path,
                                                    const ShownFrames& wanted,
                                                    const std::function<bool()>& isStopped);

/// The same peaks, several in one.
/// @param factor  how many
std::vector<orvo::Peak> Coarser(const std::vector<orvo::Peak>& peaks, std::size_t factor);

}  // namespace toolkit
