#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "platform/kelcore/Types.h"

namespace cli {

/// A bar on standard error while work lasts: only on a terminal, and only from half a second on, so
/// that what is quick leaves no trace. It is wiped away at the end.
class ProgressBar {
public:
    /// @param label  what is being done, "reading a.orvo"
    explicit ProgressBar(std::string label);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /// `done` of `total` steps are complete.
    void Update(kelcore::uint32 done, kelcore::uint32 total);

private:
    std::string label_;
    std::chrono::steady_clock::time_point start_;
    bool shown_ = false;
};

/// "[####......] reading a.orvo", without colour or cursor movement. It fits a line of so many
/// columns, the last of which stays free, as some terminals go to the next line behind it: what is
/// too long of the label becomes "...", and only where there is no room for one the bar is shorter.
/// @param label  UTF-8 without controls
std::string FormatProgress(const std::string& label, kelcore::uint32 done, kelcore::uint32 total,
                           std::size_t columns);

}  // namespace cli
