#pragma once

namespace test {

/// From here on the system ends this process, with SIGSYS, when it makes a socket or starts a
/// program, by whatever call of whatever library.
/// @throws std::runtime_error if the system cannot
void ForbidSocketsAndPrograms();

}  // namespace test
