#pragma once

#include <functional>
#include <string>

namespace test {

/// Runs `work` in a child process and returns the text it returns; "exception: ..." if it threw,
/// "died" if it ended in another way.
std::string RunInChild(const std::function<std::string()>& work);

/// The same as a user without any privileges.
std::string RunUnprivileged(const std::function<std::string()>& work);

/// Runs `work` in a child process and then kills the child (SIGKILL) before anything is unwound.
void RunAndKill(const std::function<void()>& work);

}  // namespace test
