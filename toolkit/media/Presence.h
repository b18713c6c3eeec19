#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "toolkit/media/MediaFile.h"
#include "toolkit/media/MediaProperties.h"

namespace toolkit {

enum class Presence {
    Present,
    Missing,
    Silent,  ///< the file system does not answer
};

/// Whether a file is present. May take for ever.
using PresenceTest = std::function<bool(const std::string& path)>;

/// Which of the files are present. Waits for an answer at least that long, and at most twice as
/// long. Does not ask for other files in the folder of one that got none.
std::vector<Presence> FindPresence(const std::vector<std::string>& paths,
                                   std::chrono::milliseconds patience = kMediaPatience,
                                   const PresenceTest& isPresent = IsMediaFile);

}  // namespace toolkit
