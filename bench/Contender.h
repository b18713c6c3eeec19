#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

inline constexpr const char* kFloor = "floor";
inline constexpr const char* kNullHost = "plugin_null_host";
inline constexpr const char* kReferenceHost = "plugin_reference_host";
/// The same with streamed saves.
inline constexpr const char* kStreamedNullHost = "streamed_null_host";
inline constexpr const char* kStreamedReferenceHost = "streamed_reference_host";
/// What no writer can beat: the bytes copied once and written.
inline constexpr const char* kCopy = "copy";

/// One way to do a piece of work, measured beside other ways to do the same.
struct Contender {
    std::string name;  ///< the key in reports
    /// Does the work. False: it failed.
    std::function<bool()> run;
    /// Run before and after each `run`, and not measured.
    std::function<void()> prepare = [] {};
    std::function<void()> finish = [] {};
};

/// The others are compared with the first.
using Contenders = std::vector<Contender>;

/// Prepares, runs and finishes once.
/// @throws std::runtime_error if the work failed
void RunOnce(const Contender& contender);

}  // namespace bench
