#pragma once

#include <cstddef>

namespace test {

/// While it lives, the allocation with this number (from 0, counted on this thread) by `operator
/// new` throws std::bad_alloc, once.
class FailingAllocation {
public:
    explicit FailingAllocation(std::size_t number);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    /// Whether that many allocations were made.
    bool Happened() const;
};

}  // namespace test
