#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <orvo/Interchange.h>
#include "toolkit/ModelPath.h"

namespace toolkit::interchange {

/// Collects what a conversion changes.
class Reporter {
public:
    /// @param limit  the most facts to keep
    explicit Reporter(std::size_t limit) : limit_(limit) {}

    void Add(orvo::Fidelity fidelity, std::string_view place, std::string_view what,
             std::string_view value = {});
    void Add(orvo::Fidelity fidelity, const ModelPath& place, std::string_view what,
             std::string_view value = {}) {
        Add(fidelity, place.Text(), what, value);
    }

    /// Counts what the format has nothing for.
    /// @param what  in the plural: "takes"
    void CountLost(std::string_view what, std::size_t count = 1);

    /// Something that contradicts the conventions, said once however often it occurs.
    void Warn(std::string_view what, std::string_view advice);

    const orvo::InterchangeReport& Report() const { return report_; }
    orvo::InterchangeReport TakeReport() { return std::move(report_); }
    std::vector<orvo::Message> TakeWarnings() { return std::move(warnings_); }

private:
    std::size_t limit_;
    orvo::InterchangeReport report_;
    std::vector<orvo::Message> warnings_;
};

}  // namespace toolkit::interchange
