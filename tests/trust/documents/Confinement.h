#pragma once

namespace test {

/// From now on the system ends this process with SIGSYS if it creates a socket or starts a program,
/// whatever call or library it uses.
/// @throws std::runtime_error  if the system does not support that
void ForbidSocketsAndPrograms();

}  // namespace test
