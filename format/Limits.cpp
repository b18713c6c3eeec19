#include "format/Limits.h"

#include <array>

namespace tses::limits {

std::string InWords(kelcore::uint64 bytes) {
    constexpr std::array kUnits = {" KiB", " MiB", " GiB"};
    std::size_t unit = 0;
    kelcore::uint64 count = bytes / kKiB;
    for (; count % 1024 == 0 && unit + 1 < kUnits.size(); ++unit) {
        count /= 1024;
    }
    return std::to_string(count) + kUnits.at(unit);
}

}  // namespace tses::limits
