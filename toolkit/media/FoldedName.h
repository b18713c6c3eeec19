#pragma once

#include <string>
#include <string_view>

namespace toolkit {

/// A form of a file name that is the same for names that some file system takes for the same: in
/// any letter case, and with combined or separate accents. Bytes that are not UTF-8 stay.
std::string FoldedName(std::string_view name);

}  // namespace toolkit
