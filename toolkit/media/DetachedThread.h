#pragma once

#include <functional>

namespace toolkit {

/// Runs work that the system may hold up for ever in a thread that nobody waits for, or here if
/// there can be no thread. Signals are left to the other threads, because the handlers of a program
/// may count on threads of its own. The work must not throw.
void RunDetached(const std::function<void()>& work);

}  // namespace toolkit
