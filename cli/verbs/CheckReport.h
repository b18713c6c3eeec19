#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include <orvo/Check.h>

namespace cli {

/// What is said about one file.
struct CheckReport {
    std::string file;  ///< as named on the command line
    std::vector<orvo::Finding> findings;

    bool Has(orvo::Severity severity) const;
};

/// Of a file that could not be looked into.
CheckReport Unreadable(const std::string& file, std::string why);

/// "errors", "warnings" or "good".
std::string VerdictOf(const CheckReport& report);

nlohmann::ordered_json ToJson(const CheckReport& report);
CheckReport CheckReportFromJson(const nlohmann::ordered_json& json);

/// A line for each finding.
/// @param coloured  for a terminal
std::string ToText(const CheckReport& report, bool coloured);

/// Everything that is known about a kind of finding.
std::string Explain(const orvo::CheckCode& code);

// SARIF 2.1.0, a log of one run. `SarifBegin`, the results separated by commas, `SarifEnd`.

std::string SarifBegin(const std::string& version);
std::vector<nlohmann::ordered_json> SarifResults(const CheckReport& report);
std::string SarifEnd();

}  // namespace cli
