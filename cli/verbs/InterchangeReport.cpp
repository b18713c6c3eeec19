#include "cli/verbs/InterchangeReport.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <nlohmann/json.hpp>
#include <sstream>
#include <vector>

#include "cli/terminal/JsonList.h"
#include "cli/terminal/Messages.h"

namespace cli {
namespace {

using nlohmann::ordered_json;

std::string WordOf(orvo::Fidelity fidelity) {
    std::ostringstream word;
    word << fidelity;
    return word.str();
}

std::size_t CountLostByNature(const orvo::InterchangeReport& report) {
    std::size_t sum = 0;
    for (const auto& [what, count] : report.lostByNature) {
        sum += count;
    }
    return sum;
}

}  // namespace

std::string ListFacts(const orvo::InterchangeReport& report) {
    std::string lines;
    for (const orvo::InterchangeFact& fact : report.facts) {
        std::ostringstream line;
        line << fact;
        lines += Printable(line.str()) + '\n';
    }
    for (const auto& [what, count] : report.lostByNature) {
        lines += fmt::format("no place in such a file: {} {}\n", count, what);
    }
    return lines;
}

std::string Summarize(const orvo::InterchangeReport& report) {
    std::vector<std::string> counts;
    for (const orvo::Fidelity fidelity : orvo::kFidelities) {
        if (report.Count(fidelity) != 0) {
            counts.push_back(fmt::format("{} {}", report.Count(fidelity), WordOf(fidelity)));
        }
    }
    if (const std::size_t byNature = CountLostByNature(report); byNature != 0) {
        counts.push_back(fmt::format("{} without a place in such a file", byNature));
    }
    return counts.empty() ? "nothing lost" : fmt::format("values: {}", fmt::join(counts, ", "));
}

std::string ReportAsJson(const orvo::InterchangeReport& report) {
    ordered_json facts = ordered_json::array();
    for (const orvo::InterchangeFact& fact : report.facts) {
        facts.push_back({{"place", fact.place},
                         {"fidelity", WordOf(fact.fidelity)},
                         {"what", fact.what},
                         {"value", fact.value}});
    }
    ordered_json counts;
    for (const orvo::Fidelity fidelity : orvo::kFidelities) {
        counts[WordOf(fidelity)] = report.Count(fidelity);
    }
    constexpr int kIndent = 2;
    return DumpJson({{"facts", std::move(facts)},
                     {"counts", std::move(counts)},
                     {"lostByNature", report.lostByNature}},
                    kIndent) +
           '\n';
}

}  // namespace cli
