#include "cli/ProgressBar.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <utility>

#include "cli/Messages.h"

namespace cli {
namespace {

constexpr std::chrono::milliseconds kQuickEnough{500};
constexpr kelcore::uint32 kWidth = 28;
constexpr std::string_view kWipeLine = "\r\x1b[K";

}  // namespace

ProgressBar::ProgressBar(std::string label)
    : label_(Printable(label)), start_(std::chrono::steady_clock::now()) {}

ProgressBar::~ProgressBar() {
    if (shown_) {
        fmt::print(stderr, "{}", kWipeLine);
    }
}

void ProgressBar::Update(kelcore::uint32 done, kelcore::uint32 total) {
    const bool lasts = std::chrono::steady_clock::now() - start_ > kQuickEnough;
    if (!lasts || !HasErrorTerminal()) {
        return;
    }
    shown_ = true;
    fmt::print(stderr, "{}{}", kWipeLine, FormatProgress(label_, done, total));
    std::fflush(stderr);
}

std::string FormatProgress(const std::string& label, kelcore::uint32 done, kelcore::uint32 total) {
    const kelcore::uint64 share = std::min(done, total);
    const kelcore::uint64 filled = total == 0 ? 0 : share * kWidth / total;
    return fmt::format("[{:#>{}}{:.>{}}] {}", "", filled, "", kWidth - filled, label);
}

}  // namespace cli
