#pragma once

#include <deque>
#include <utility>

namespace cli {

/// Keeps a value until the process ends and never destroys it: the system takes a large session's
/// memory back at once, while freeing its million parts takes as long as copying its file.
template <class Value>
Value& LeaveToSystem(Value value) {
    static auto& left = *new std::deque<Value>();
    return left.emplace_back(std::move(value));
}

}  // namespace cli
