#pragma once

#include <cstddef>

namespace test {

/// During its lifetime, makes one allocation by `operator new` throw std::bad_alloc: the one with
/// this number, counting from 0 on this thread.
class FailingAllocation {
public:
    explicit FailingAllocation(std::size_t number);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    /// Whether that allocation was reached.
    static bool Happened();
};

}  // namespace test
