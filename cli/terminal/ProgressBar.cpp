#include "cli/terminal/ProgressBar.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <stdexcept>
#include <system_error>

#include "cli/RemovalAtSignal.h"
#include "cli/terminal/Columns.h"
#include "cli/terminal/ErrorTerminal.h"
#include "cli/terminal/Messages.h"

namespace cli {
namespace {

constexpr std::chrono::milliseconds kQuickEnough{500};
constexpr std::chrono::milliseconds kInterval{100};
constexpr kelcore::uint32 kResolution = 10000;
constexpr std::size_t kWidth = 28;
constexpr std::size_t kShortest = 8;
constexpr std::size_t kFrame = 2;
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

/// The number of bytes at the start of the text that fit the columns.
std::size_t FittingSize(std::string_view text, std::size_t columns) {
    std::size_t fitting = 0;
    for (std::size_t taken = 0; fitting < text.size();) {
        const ShownCharacter next = FirstShownCharacter(text.substr(fitting));
        taken += next.columns;
        if (taken > columns) {
            break;
        }
        fitting += next.size;
    }
    return fitting;
}

/// Cuts the label to the columns; empty if not even one character fits.
std::string Cut(const std::string& label, std::size_t columns) {
    if (FittingSize(label, columns) == label.size()) {
        return label;
    }
    const std::size_t size = FittingSize(label, LessOrNone(columns, kEllipsis.size()));
    return size == 0 ? "" : label.substr(0, size) + std::string(kEllipsis);
}

}  // namespace

Progress::Progress(std::string subject, std::vector<ProgressPhase> phases)
    : subject_(Printable(subject)), label_(subject_), phases_(std::move(phases)) {
    if (!HasErrorTerminal()) {
        return;
    }
    const WithoutSignals inherited;
    try {
        drawer_ = std::jthread([this](const std::stop_token& stop) { Draw(stop); });
    } catch (const std::system_error&) {
        // Work without a bar.
    }
}

Progress::~Progress() {
    if (drawer_.joinable()) {
        drawer_.request_stop();
        drawer_.join();
        const StatusLinePause wiped;
    }
}

Progress::Phase Progress::Begin(const std::string& name, std::string subject) {
    const std::scoped_lock lock(mutex_);
    const auto phase =
        std::find_if(phases_.begin() + static_cast<std::ptrdiff_t>(begun_), phases_.end(),
                     [&name](const ProgressPhase& each) { return each.name == name; });
    if (phase == phases_.end()) {
        throw std::logic_error("no remaining phase is called " + name);
    }
    label_ = name + " " + (subject.empty() ? subject_ : Printable(subject));
    begun_ = static_cast<std::size_t>(phase - phases_.begin()) + 1;
    phaseShare_ = 0;
    source_ = {};
    return {*this, begun_};
}

double Progress::Share() {
    const std::scoped_lock lock(mutex_);
    return ShareLocked();
}

double Progress::ShareLocked() {
    if (source_) {
        phaseShare_ = source_().value_or(phaseShare_);
    }
    double done = 0;
    double total = 0;
    for (std::size_t i = 0; i < phases_.size(); ++i) {
        const double share = i + 1 < begun_ ? 1 : i + 1 == begun_ ? phaseShare_ : 0;
        done += phases_[i].weight * std::clamp(share, 0.0, 1.0);
        total += phases_[i].weight;
    }
    share_ = std::max(share_, total > 0 ? done / total : 0);
    return share_;
}

void Progress::Draw(const std::stop_token& stop) noexcept {
    try {
        DrawUntil(stop);
    } catch (...) {
        // Continue without a bar.
    }
}

void Progress::DrawUntil(const std::stop_token& stop) {
    std::condition_variable_any wait;
    std::unique_lock lock(mutex_);
    auto next = std::chrono::steady_clock::now() + kQuickEnough;
    while (!wait.wait_until(lock, stop, next, [] { return false; }) && !stop.stop_requested()) {
        const auto done = static_cast<kelcore::uint32>(ShareLocked() * kResolution);
        ShowStatusLine(FormatProgress(label_, done, kResolution, ErrorTerminalColumns()));
        next = std::chrono::steady_clock::now() + kInterval;
    }
}

void Progress::SetShare(std::size_t phase, double share) {
    const std::scoped_lock lock(mutex_);
    if (phase == begun_) {
        phaseShare_ = share;
    }
}

void Progress::SetSource(std::size_t phase, ShareSource source) {
    const std::scoped_lock lock(mutex_);
    if (phase == begun_) {
        source_ = std::move(source);
    }
}

Progress::Phase::~Phase() {
    if (progress_ != nullptr) {
        progress_->SetSource(number_, {});
        progress_->SetShare(number_, 1);
    }
}

void Progress::Phase::Update(kelcore::uint64 done, kelcore::uint64 total) const {
    if (total != 0) {
        progress_->SetShare(number_, static_cast<double>(done) / static_cast<double>(total));
    }
}

void Progress::Phase::Watch(ShareSource source) const {
    progress_->SetSource(number_, std::move(source));
}

std::string FormatProgress(const std::string& label, kelcore::uint32 done, kelcore::uint32 total,
                           std::size_t columns) {
    const std::size_t room = LessOrNone(columns, 1);
    const std::size_t besideLabel = LessOrNone(room, kFrame + 1 + ColumnsOf(label));
    const std::size_t width =
        std::min(std::clamp(besideLabel, kShortest, kWidth), LessOrNone(room, kFrame));
    const std::string bar = Bar(done, total, width);
    const std::string shownLabel = Cut(label, LessOrNone(room, bar.size() + 1));
    return shownLabel.empty() ? bar.substr(0, room) : bar + " " + shownLabel;
}

}  // namespace cli
