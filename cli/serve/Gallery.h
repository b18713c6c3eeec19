#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// A text as a part of an address.
std::string AsAddress(std::string_view text);

/// A page with a picture of each session, as a link to its page.
std::string GalleryOf(const std::string& folder, const std::vector<std::string>& sessions);

/// A page that says in lines why there is no other, and that loads itself again.
std::string ExcuseOf(const std::string& session, const std::string& reasons);

/// The style of both.
extern const std::string_view kGalleryStyle;

}  // namespace cli
