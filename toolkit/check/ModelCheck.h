#pragma once

#include <string>
#include <vector>

#include <orvo/Model.h>
#include "toolkit/check/Codes.h"

namespace toolkit {

/// Something in a session that is wrong.
struct ModelFinding {
    Code code;
    std::string path;  ///< in the session's JSON
    std::string what;
};

/// What does not fit together in a session, apart from its media.
std::vector<ModelFinding> CheckModel(const orvo::Session& session);

}  // namespace toolkit
