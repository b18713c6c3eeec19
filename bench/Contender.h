#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

inline constexpr const char* kFloor = "floor";
inline constexpr const char* kNullHost = "plugin_null_host";
inline constexpr const char* kReferenceHost = "plugin_reference_host";

/// One of those that do the same piece of work, to be measured beside the others.
struct Contender {
    std::string name;  ///< its key in reports
    /// Does the work; false if it could not be done.
    std::function<bool()> run;
    /// Before and after each run, not measured.
    std::function<void()> prepare = [] {};
    std::function<void()> finish = [] {};
};

/// The first is what the others are compared with.
using Contenders = std::vector<Contender>;

/// Runs it once with what comes before and after.
/// @throws std::runtime_error if the work could not be done
void RunOnce(const Contender& contender);

}  // namespace bench
