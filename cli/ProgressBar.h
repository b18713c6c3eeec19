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

/// The phase in which a verb reads its input.
inline constexpr const char* kReading = "reading";

/// A part of some work. Weights say how long the parts take, compared with each other.
struct ProgressPhase {
    std::string name;  ///< what is being done: "reading"
    double weight = 1;
};

/// Returns how far a phase is, from 0 to 1; nothing if unknown.
using ShareSource = std::function<std::optional<double>()>;

/// One bar over all phases of some work, on standard error: only on a terminal, and from half a
/// second on to the end, so that what is quick leaves no trace. It is drawn ten times a second,
/// whether anything is reported or not, never goes back, and is wiped away at the end.
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

    /// @param subject  what the work is about, for the label: "reading a.orvo"
    Progress(std::string subject, std::vector<ProgressPhase> phases);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Begins the next phase of that name; those in front of it are over, or are left out.
    /// @param subject  of this phase; empty: that of the whole work
    /// @throws std::logic_error if there is none
    Phase Begin(const std::string& name, std::string subject = {});

    /// How much of the whole is done, from 0 to 1. Never less than it was.
    double Share();

private:
    void Draw(const std::stop_token& stop) noexcept;
    void DrawUntil(const std::stop_token& stop);
    void SetShare(std::size_t phase, double share);
    void SetSource(std::size_t phase, ShareSource source);
    double ShareLocked();

    std::mutex mutex_;  // guards all below it but the thread
    std::string subject_;
    std::string label_;
    std::vector<ProgressPhase> phases_;
    std::size_t begun_ = 0;  // how many phases
    double phaseShare_ = 0;
    double share_ = 0;
    ShareSource source_;
    std::jthread drawer_;
};

/// A phase that has begun. It ends with this object, at the latest when the next one begins.
class Progress::Phase {
public:
    ~Phase();
    Phase(Phase&& other) noexcept
        : progress_(std::exchange(other.progress_, nullptr)), number_(other.number_) {}
    Phase& operator=(Phase&&) = delete;

    /// `done` of `total` bytes, objects or steps are complete.
    void Update(kelcore::uint64 done, kelcore::uint64 total) const;

    /// Polls `source` from the drawing thread until the phase ends.
    void Watch(ShareSource source) const;

private:
    friend class Progress;
    Phase(Progress& progress, std::size_t number) : progress_(&progress), number_(number) {}

    Progress* progress_;  // null: it was moved away
    std::size_t number_;
};

/// "[####......] reading a.orvo", without colour or cursor movement. It fits a line of so many
/// columns, the last of which stays free, as some terminals go to the next line behind it. The bar
/// shrinks to eight signs before the end of the label becomes "...", and further only without a
/// label.
/// @param label  UTF-8 without controls
std::string FormatProgress(const std::string& label, kelcore::uint32 done, kelcore::uint32 total,
                           std::size_t columns);

}  // namespace cli
