#include "bench/PeakMemory.h"

#include <malloc.h>

#include <fstream>
#include <stdexcept>
#include <string>

namespace bench {
namespace {

/// The number in a line of the system's status of this process, "VmRSS:     1234 kB".
std::uint64_t StatusKib(const std::string& key) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        std::uint64_t kib = 0;
        if (word == key + ":" && status >> kib) {
            return kib;
        }
    }
    throw std::runtime_error("/proc/self/status has no line " + key);
}

/// Resets the system's record of the peak to what is in use now.
void ForgetPeak() {
    std::ofstream references("/proc/self/clear_refs");
    if (!(references << '5' << std::flush)) {
        throw std::runtime_error("/proc/self/clear_refs cannot be written");
    }
}

}  // namespace

PeakMemory::PeakMemory() {
    malloc_trim(0);
    ForgetPeak();
    before_ = StatusKib("VmRSS");
}

std::uint64_t PeakMemory::Kib() const {
    const std::uint64_t peak = StatusKib("VmHWM");
    return peak > before_ ? peak - before_ : 0;
}

}  // namespace bench
