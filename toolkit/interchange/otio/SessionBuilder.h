#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <orvo/Model.h>
#include "toolkit/interchange/Format.h"
#include "toolkit/interchange/otio/Flatten.h"

namespace toolkit::interchange::otio {

/// A file of the session whose URL is relative, so that it may be in the archive.
struct RelativeMedia {
    std::size_t file = 0;  ///< in the session's list
    std::string name{};    ///< the decoded URL
};

struct BuiltSession {
    orvo::Session session{};
    std::vector<RelativeMedia> media{};
};

/// The samples a second of the session that a document becomes: what `metadata.orvo` says, else the
/// first rate in it that is one of sound, else that of the options.
std::uint32_t SampleRateOf(const Node& top, const Import& job);

/// Makes a session of what was found. What `metadata.orvo` says counts where the file itself does
/// not say otherwise.
/// @throws Failure, Cancelled
BuiltSession BuildSession(const FoundTimeline& found, std::uint32_t sampleRate, const Import& job);

}  // namespace toolkit::interchange::otio
