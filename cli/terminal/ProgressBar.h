#pragma once

#include <cstddef>
#include <functional>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/kelcore/Types.h"

namespace cli {

/// The name of the phase that reads the input.
inline constexpr const char* kReading = "reading";

/// A phase of some work. Weights express the durations of phases relative to each other.
struct ProgressPhase {
    std::string name;  ///< the current activity: "reading"
    double weight = 1;
};

/// Returns the completed share of a phase, from 0 to 1; nothing if unknown.
using ShareSource = std::function<std::optional<double>()>;

/// A progress bar for all phases of some work, on standard error. It appears only on a terminal and
/// only after half a second, so that short work leaves no trace. It redraws itself ten times a
/// second, never goes back, and disappears at the end.
///
///     Progress progress("a.orvo", {{"reading", 3}, {"checking", 1}});
///     {
///         const Progress::Phase phase = progress.Begin("reading");
///         phase.Watch(ShareRead(path));
///         ...
///     }
///     const Progress::Phase phase = progress.Begin("checking");
///     phase.Update(done, total);
class Progress {
public:
    class Phase;

    /// @param subject  the object of the work, for the label: "reading a.orvo"
    Progress(std::string subject, std::vector<ProgressPhase> phases);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Begins the next phase with that name. Earlier phases count as finished.
    /// @param subject  of this phase; if empty, that of the whole work
    /// @throws std::logic_error  if no such phase remains
    Phase Begin(const std::string& name, std::string subject = {});

    /// The completed share of the whole work, from 0 to 1. Never decreases.
    double Share();

private:
    void Draw(const std::stop_token& stop) noexcept;
    void DrawUntil(const std::stop_token& stop);
    void SetShare(std::size_t phase, double share);
    void SetSource(std::size_t phase, ShareSource source);
    double ShareLocked();

    std::mutex mutex_;  // guards the members below, except the thread
    std::string subject_;
    std::string label_;
    std::vector<ProgressPhase> phases_;
    std::size_t begun_ = 0;  // number of phases
    double phaseShare_ = 0;
    double share_ = 0;
    ShareSource source_;
    std::jthread drawer_;
};

/// A running phase. It ends with this object or when the next phase begins.
class Progress::Phase {
public:
    ~Phase();
    Phase(Phase&& other) noexcept
        : progress_(std::exchange(other.progress_, nullptr)), number_(other.number_) {}
    Phase& operator=(Phase&&) = delete;

    /// Reports that `done` of `total` bytes, objects or steps are complete.
    void Update(kelcore::uint64 done, kelcore::uint64 total) const;

    /// Polls `source` from the drawing thread until the phase ends.
    void Watch(ShareSource source) const;

private:
    friend class Progress;
    Phase(Progress& progress, std::size_t number) : progress_(&progress), number_(number) {}

    Progress* progress_;  // null after a move
    std::size_t number_;
};

/// Formats "[####......] reading a.orvo" without colour or cursor movement. Leaves the last column
/// free, because some terminals wrap after it. The bar shrinks to eight characters before the end
/// of the label becomes "..."; it shrinks further only without a label.
/// @param label  UTF-8 without control characters
std::string FormatProgress(const std::string& label, kelcore::uint32 done, kelcore::uint32 total,
                           std::size_t columns);

}  // namespace cli
