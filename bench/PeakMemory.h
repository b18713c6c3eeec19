#pragma once

#include <cstdint>

namespace bench {

/// The memory that a piece of work needs at its peak, beyond what the program had in use when the
/// work began. Made anew for each piece.
class PeakMemory {
public:
    /// Gives what is free back to the system, so that it is not taken from there unseen.
    PeakMemory();

    /// KiB, from the making of this on.
    std::uint64_t Kib() const;

private:
    std::uint64_t before_;
};

}  // namespace bench
