#include "cli/terminal/ShownSize.h"

#include <fmt/format.h>

#include <array>
#include <string_view>

namespace cli {

std::string ShownSize(kelcore::uint64 bytes) {
    constexpr double kStep = 1000;
    constexpr double kRoundsUp = 999.95;
    constexpr std::array<std::string_view, 5> kUnits = {"kB", "MB", "GB", "TB", "PB"};
    if (bytes < static_cast<kelcore::uint64>(kStep)) {
        return fmt::format("{} byte{}", bytes, bytes == 1 ? "" : "s");
    }
    double size = static_cast<double>(bytes) / kStep;
    std::size_t unit = 0;
    for (; size >= kRoundsUp && unit + 1 < kUnits.size(); ++unit) {
        size /= kStep;
    }
    return fmt::format("{:.1f} {}", size, kUnits[unit]);
}

}  // namespace cli
