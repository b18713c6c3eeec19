#pragma once

#include <functional>
#include <string>

namespace test {

/// Runs `work` in a child process and returns its text: "exception: ..." if it threw, "died" if the
/// child ended in any other way.
std::string RunInChild(const std::function<std::string()>& work);

/// Likewise, as a user without privileges.
std::string RunUnprivileged(const std::function<std::string()>& work);

/// Runs `work` in a child process, then kills the child (SIGKILL) before it unwinds anything.
void RunAndKill(const std::function<void()>& work);

}  // namespace test
