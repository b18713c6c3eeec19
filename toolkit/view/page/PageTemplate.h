#pragma once

#include <string_view>

namespace orvo::page {

/// The page without a session, from web/dist/page.html. Has each of the marks below once.
extern const std::string_view kTemplate;

inline constexpr std::string_view kConnectMark = "@orvo:connect@";
inline constexpr std::string_view kTitleMark = "@orvo:title@";
inline constexpr std::string_view kPictureMark = "@orvo:picture@";
inline constexpr std::string_view kSessionMark = "@orvo:session@";
inline constexpr std::string_view kSoundsMark = "@orvo:sounds@";

}  // namespace orvo::page
