#include "cli/ProgressBar.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <utility>

#include "cli/Messages.h"
#include "toolkit/TextPlaces.h"

namespace cli {
namespace {

constexpr std::chrono::milliseconds kQuickEnough{500};
constexpr std::size_t kWidth = 28;
constexpr std::size_t kFrame = 2;
constexpr std::string_view kWipeLine = "\r\x1b[K";
constexpr std::string_view kEllipsis = "...";

std::size_t LessOrNone(std::size_t count, std::size_t taken) {
    return count - std::min(count, taken);
}

/// "[##....]"
std::string Bar(kelcore::uint32 done, kelcore::uint32 total, std::size_t width) {
    const std::size_t share = std::min(done, total);
    const std::size_t filled = total == 0 ? 0 : share * width / total;
    return fmt::format("[{:#>{}}{:.>{}}]", "", filled, "", width - filled);
}

/// How many columns a character of so many bytes takes at the most.
std::size_t ColumnsOf(std::size_t size) {
    return size < 3 ? 1 : 2;
}

/// How many bytes at the begin of the text fit the columns.
std::size_t FittingSize(std::string_view text, std::size_t columns) {
    std::size_t fitting = 0;
    for (std::size_t taken = 0; fitting < text.size();) {
        const std::size_t size = toolkit::CharacterSize(text.substr(fitting));
        taken += ColumnsOf(size);
        if (taken > columns) {
            break;
        }
        fitting += size;
    }
    return fitting;
}

/// The label as it fits the columns; empty where no character of it does.
std::string Cut(const std::string& label, std::size_t columns) {
    if (FittingSize(label, columns) == label.size()) {
        return label;
    }
    const std::size_t size = FittingSize(label, LessOrNone(columns, kEllipsis.size()));
    return size == 0 ? "" : label.substr(0, size) + std::string(kEllipsis);
}

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
    fmt::print(stderr, "{}{}", kWipeLine,
               FormatProgress(label_, done, total, ErrorTerminalColumns()));
    std::fflush(stderr);
}

std::string FormatProgress(const std::string& label, kelcore::uint32 done, kelcore::uint32 total,
                           std::size_t columns) {
    const std::size_t room = LessOrNone(columns, 1);
    const std::string bar = Bar(done, total, std::min(kWidth, LessOrNone(room, kFrame)));
    const std::string shownLabel = Cut(label, LessOrNone(room, bar.size() + 1));
    return shownLabel.empty() ? bar.substr(0, room) : bar + " " + shownLabel;
}

}  // namespace cli
