#pragma once

#include <string>

#include "platform/kelcore/Types.h"

namespace cli {

/// A number of bytes for people: "12 bytes", "1.5 MB".
std::string ShownSize(kelcore::uint64 bytes);

}  // namespace cli
