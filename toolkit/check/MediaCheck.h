#pragma once

#include <functional>
#include <string>
#include <vector>

#include <orvo/Model.h>
#include "toolkit/check/ModelCheck.h"
#include "toolkit/media/MediaProperties.h"

namespace toolkit {

using MediaReader = std::function<MediaResult(const std::string& path)>;

/// What does not fit together between a session and its media files. Looks into each once.
std::vector<ModelFinding> CheckMedia(const orvo::Session& session, const MediaReader& read);

}  // namespace toolkit
