#pragma once

#include <mutex>

namespace orvo {

/// Waits until no request of this library is under way, and keeps others from starting. The
/// plug-in starts and stops the XML library, which counts its users without a lock.
std::unique_lock<std::mutex> WaitForTurn();

}  // namespace orvo
