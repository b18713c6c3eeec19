#include "cli/verbs/CheckReport.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <sstream>
#include <string_view>

#include "cli/terminal/JsonList.h"
#include "cli/terminal/Messages.h"

namespace cli {
namespace {

using nlohmann::ordered_json;
using orvo::Finding;
using orvo::Severity;

std::string WordOf(Severity severity) {
    std::ostringstream word;
    word << severity;
    return word.str();
}

std::string PlaceOf(const Finding& finding) {
    return finding.line != 0 ? fmt::format("{}:{}", finding.line, finding.column) : finding.path;
}

std::string Coloured(Severity severity) {
    const int colour = severity == Severity::Error ? 31 : 33;  // red, yellow
    return fmt::format("\x1b[1;{}m{}\x1b[0m", colour, WordOf(severity));
}

ordered_json ToJson(const Finding& finding) {
    return {{"severity", WordOf(finding.severity)},
            {"code", finding.code},
            {"line", finding.line},
            {"column", finding.column},
            {"path", finding.path},
            {"what", finding.what}};
}

Finding FindingFromJson(const ordered_json& json) {
    const orvo::CheckCode* const code = orvo::FindCheckCode(json.at("code").get<std::string>());
    return {.severity = code->severity,
            .code = std::string(code->code),
            .file = {},
            .line = json.at("line"),
            .column = json.at("column"),
            .path = json.at("path"),
            .what = json.at("what")};
}

/// A path as a URI reference.
std::string UriOf(std::string_view path) {
    std::string uri = path.starts_with('/') ? "file://" : "";
    for (const char byte : path) {
        const auto value = static_cast<unsigned char>(byte);
        const bool isPlain = value < 0x80 && (std::isalnum(value) != 0 || byte == '/' ||
                                              byte == '-' || byte == '.' || byte == '_');
        uri += isPlain ? std::string(1, byte) : fmt::format("%{:02X}", value);
    }
    return uri;
}

ordered_json SarifPlace(const std::string& file, const Finding& finding) {
    ordered_json place = {{"physicalLocation", {{"artifactLocation", {{"uri", UriOf(file)}}}}}};
    if (finding.line != 0) {
        place["physicalLocation"]["region"] = {{"startLine", finding.line},
                                               {"startColumn", finding.column}};
    }
    if (!finding.path.empty()) {
        place["logicalLocations"] = ordered_json::array({{{"fullyQualifiedName", finding.path}}});
    }
    return place;
}

ordered_json SarifRule(const orvo::CheckCode& code) {
    return {{"id", code.code},
            {"shortDescription", {{"text", code.title}}},
            {"fullDescription", {{"text", code.explanation}}},
            {"help", {{"text", code.remedy}}},
            {"defaultConfiguration", {{"level", WordOf(code.severity)}}}};
}

}  // namespace

bool CheckReport::Has(Severity severity) const {
    return std::ranges::find(findings, severity, &Finding::severity) != findings.end();
}

CheckReport Unreadable(const std::string& file, std::string why) {
    constexpr std::string_view kCode = "unreadable";
    return {file,
            {{.severity = orvo::FindCheckCode(kCode)->severity,
              .code = std::string(kCode),
              .what = std::move(why)}}};
}

std::string VerdictOf(const CheckReport& report) {
    return report.Has(Severity::Error)     ? "errors"
           : report.Has(Severity::Warning) ? "warnings"
                                           : "good";
}

ordered_json ToJson(const CheckReport& report) {
    ordered_json findings = ordered_json::array();
    for (const Finding& finding : report.findings) {
        findings.push_back(ToJson(finding));
    }
    return {{"file", report.file}, {"verdict", VerdictOf(report)}, {"findings", findings}};
}

CheckReport CheckReportFromJson(const ordered_json& json) {
    CheckReport report{json.at("file"), {}};
    for (const ordered_json& finding : json.at("findings")) {
        report.findings.push_back(FindingFromJson(finding));
    }
    return report;
}

std::string ToText(const CheckReport& report, bool coloured) {
    std::string text;
    for (const Finding& finding : report.findings) {
        const std::string place = PlaceOf(finding);
        text += Printable(report.file) + ":" + (place.empty() ? "" : Printable(place) + ":") + " " +
                (coloured ? Coloured(finding.severity) : WordOf(finding.severity)) + ": " +
                Printable(finding.what) + " [" + finding.code + "]\n";
    }
    return text;
}

std::string Explain(const orvo::CheckCode& code) {
    return fmt::format("{} ({})\n  {}\n  {}\n  Example: {}\n  To do: {}\n", code.code,
                       WordOf(code.severity), code.title, code.explanation, code.example,
                       code.remedy);
}

std::string SarifBegin(const std::string& version) {
    ordered_json rules = ordered_json::array();
    for (const orvo::CheckCode& code : orvo::CheckCodes()) {
        rules.push_back(SarifRule(code));
    }
    const ordered_json driver = {{"name", "orvo"}, {"version", version}, {"rules", rules}};
    return R"({"version": "2.1.0", "$schema": "https://json.schemastore.org/sarif-2.1.0.json", )"
           R"("runs": [{"tool": {"driver": )" +
           DumpJson(driver) + R"(}, "columnKind": "unicodeCodePoints", "results": [)" + "\n";
}

std::vector<ordered_json> SarifResults(const CheckReport& report) {
    std::vector<ordered_json> results;
    for (const Finding& finding : report.findings) {
        results.push_back({{"ruleId", finding.code},
                           {"level", WordOf(finding.severity)},
                           {"message", {{"text", finding.what}}},
                           {"locations", ordered_json::array({SarifPlace(report.file, finding)})}});
    }
    return results;
}

std::string SarifEnd() {
    return "\n]}]}\n";
}

}  // namespace cli
