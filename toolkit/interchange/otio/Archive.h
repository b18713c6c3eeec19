#pragma once

#include <string_view>

/// The entries of an archive (.otioz).
namespace toolkit::interchange::otio {

inline constexpr std::string_view kContentEntry = "content.otio";
inline constexpr std::string_view kVersionEntry = "version.txt";
inline constexpr std::string_view kVersionText = "1.0.0";
inline constexpr std::string_view kMediaFolder = "media/";

}  // namespace toolkit::interchange::otio
