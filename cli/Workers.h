#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace cli {

/// What a worker gives for an item.
using Produce = std::function<std::string(std::size_t item)>;

/// Takes the result for an item; no value if its worker was killed by it.
using Consume = std::function<void(std::size_t item, std::optional<std::string> result)>;

/// Runs `produce` for the items from 0 to `count` in processes of their own, which share nothing
/// with this one from then on, and passes the results to `consume` in order, each as soon as those
/// before it have been passed. Holds the results of a few items only. Workers end with this
/// process, however it ends.
/// @param workers  processes at a time, at least 1
/// @throws std::system_error  if the system refuses a process
void RunInWorkers(std::size_t count, std::size_t workers, const Produce& produce,
                  const Consume& consume);

}  // namespace cli
