#include "toolkit/interchange/Reporter.h"

#include <algorithm>

namespace toolkit::interchange {

void Reporter::Add(orvo::Fidelity fidelity, std::string_view place, std::string_view what,
                   std::string_view value) {
    ++report_.counts[static_cast<std::size_t>(fidelity)];
    if (report_.facts.size() < limit_) {
        report_.facts.push_back({.place = std::string(place),
                                 .fidelity = fidelity,
                                 .what = std::string(what),
                                 .value = std::string(value)});
    }
}

void Reporter::CountLost(std::string_view what, std::size_t count) {
    if (count > 0) {
        report_.lostByNature[std::string(what)] += count;
    }
}

void Reporter::Warn(std::string_view what, std::string_view advice) {
    const bool isKnown = std::ranges::any_of(
        warnings_, [&](const orvo::Message& warning) { return warning.what == what; });
    if (!isKnown) {
        warnings_.push_back({.severity = orvo::Severity::Warning,
                             .what = std::string(what),
                             .advice = std::string(advice)});
    }
}

}  // namespace toolkit::interchange
