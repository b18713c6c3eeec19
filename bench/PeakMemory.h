#pragma once

#include <cstdint>

namespace bench {

/// The peak of a piece of work's memory, above what the process used when the work began. Make a
/// new one for each piece.
class PeakMemory {
public:
    /// Returns free memory to the system first, so that the work cannot reuse it unseen.
    PeakMemory();

    /// The peak since construction, in KiB.
    std::uint64_t Kib() const;

private:
    std::uint64_t before_;
};

}  // namespace bench
