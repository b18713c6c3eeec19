#include "bench/Report.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

namespace bench {
namespace {

using Json = nlohmann::ordered_json;

double PerElement(std::uint64_t count, std::uint64_t elements) {
    return elements > 0 ? static_cast<double>(count) / static_cast<double>(elements) : 0;
}

template <class Value>
Json ByContender(const Report& report, Value value) {
    Json json = Json::object();
    for (const std::string& name : report.names) {
        json[name] = value(report.timings.byName.at(name));
    }
    return json;
}

void AddMemory(const Report& report, Json& json) {
    for (const auto& [name, use] : report.memory) {
        json["peak_kib"][name] = use.peakKib;
        json["allocations"][name] = use.allocations;
        json["allocations_per_element"][name] = PerElement(use.allocations, report.elements);
        if (use.steadyAllocations) {
            json["steady_allocations_per_element"][name] =
                PerElement(*use.steadyAllocations, report.steadyElements);
        }
    }
}

double MegabytesPerSecond(const Report& report, const Timing& timing) {
    return timing.wallMs > 0 ? static_cast<double>(report.bytes) / 1e3 / timing.wallMs : 0;
}

std::string MemoryColumns(const Report& report, const std::string& name) {
    const auto use = report.memory.find(name);
    if (use == report.memory.end()) {
        return {};
    }
    std::string columns = fmt::format("{:>12}{:>12.3f}", use->second.peakKib,
                                      PerElement(use->second.allocations, report.elements));
    if (use->second.steadyAllocations) {
        columns += fmt::format("{:>12.3f}",
                               PerElement(*use->second.steadyAllocations, report.steadyElements));
    }
    return columns;
}

}  // namespace

std::vector<std::string> NamesOf(const Contenders& contenders) {
    std::vector<std::string> names;
    for (const Contender& contender : contenders) {
        names.push_back(contender.name);
    }
    return names;
}

std::string ShowAsJson(const Report& report) {
    Json json = ByContender(report, [](const Timing& timing) { return timing.wallMs; });
    json["ratio"] = ByContender(report, [](const Timing& timing) { return timing.wallRatio; });
    json["user_ms"] = ByContender(report, [](const Timing& timing) { return timing.userMs; });
    json["user_ratio"] = ByContender(report, [](const Timing& timing) { return timing.userRatio; });
    AddMemory(report, json);
    for (const auto& [name, same] : report.sameBytes) {
        json["same_bytes"][name] = same;
    }
    for (const auto& [key, value] : report.more) {
        json[key] = value;
    }
    json["bytes"] = report.bytes;
    json["elements"] = report.elements;
    json["rounds"] = report.timings.rounds;
    json["runs_of_round"] = report.timings.runsOfRound;
    return json.dump(2);
}

std::string ShowAsText(const Report& report) {
    std::string text = fmt::format("{}: {} bytes, {} elements; medians of {} rounds of {} runs\n\n",
                                   report.title, report.bytes, report.elements,
                                   report.timings.rounds, report.timings.runsOfRound);
    text += fmt::format("{:<24}{:>12}{:>8}{:>12}{:>8}{:>9}", "", "wall ms", "ratio", "user ms",
                        "ratio", "MB/s");
    text += report.memory.empty() ? "\n"
                                  : fmt::format("{:>12}{:>12}{:>12}\n", "peak KiB", "alloc/el.",
                                                report.steadyElements > 0 ? "steady/el." : "");
    for (const std::string& name : report.names) {
        const Timing& timing = report.timings.byName.at(name);
        text += fmt::format("{:<24}{:>12.3f}{:>8.3f}{:>12.3f}{:>8.3f}{:>9.1f}{}\n", name,
                            timing.wallMs, timing.wallRatio, timing.userMs, timing.userRatio,
                            MegabytesPerSecond(report, timing), MemoryColumns(report, name));
    }
    for (const auto& [name, same] : report.sameBytes) {
        text += fmt::format("\n{} writes {} bytes as the plug-in with the reference host", name,
                            same ? "the same" : "OTHER");
    }
    for (const auto& [key, value] : report.more) {
        text += fmt::format("\n{}: {:.3f}", key, value);
    }
    return text + "\n";
}

}  // namespace bench
