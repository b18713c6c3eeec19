#include "bench/Memory.h"

#include <nlohmann/json.hpp>
#include <stdexcept>

#include "bench/AllocationCount.h"
#include "bench/PeakMemory.h"

namespace bench {

MemoryUse MeasureMemory(const Contender& contender) {
    RunOnce(contender);
    contender.prepare();
    MemoryUse use;
    const PeakMemory peak;
    const std::uint64_t before = AllocationCount();
    const bool done = contender.run();
    use.allocations = AllocationCount() - before;
    use.peakKib = peak.Kib();
    contender.finish();
    if (!done) {
        throw std::runtime_error(contender.name + " could not do the work");
    }
    return use;
}

std::uint64_t CountAllocations(const Contender& contender) {
    contender.prepare();
    const std::uint64_t before = AllocationCount();
    contender.run();
    const std::uint64_t allocations = AllocationCount() - before;
    contender.finish();
    return allocations;
}

std::string ToText(const MemoryUse& use) {
    nlohmann::json json = {{"peak_kib", use.peakKib}, {"allocations", use.allocations}};
    if (use.steadyAllocations) {
        json["steady_allocations"] = *use.steadyAllocations;
    }
    return json.dump();
}

MemoryUse MemoryUseFromText(const std::string& text) {
    const nlohmann::json json = nlohmann::json::parse(text);
    MemoryUse use = {.peakKib = json.at("peak_kib"), .allocations = json.at("allocations")};
    if (json.contains("steady_allocations")) {
        use.steadyAllocations = json.at("steady_allocations");
    }
    return use;
}

}  // namespace bench
