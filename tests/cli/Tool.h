#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

namespace test {

/// The built tool, next to the test program.
std::string ToolPath();

/// A plug-in that reads and writes nothing; tests/support/IdlePlugin.cpp describes its settings.
std::string IdlePluginPath();

/// Runs the built tool in a folder.
Outcome RunTool(std::vector<std::string> arguments, const TemporaryFolder& folder,
                const std::string& input = {});

/// Likewise, but as a user who is subject to permissions, whoever runs the test.
Outcome RunToolUnprivileged(std::vector<std::string> arguments, const TemporaryFolder& folder);

/// The tool in a folder of the test's own.
class ToolTest : public testing::Test {
protected:
    /// Runs the tool, which must succeed and print nothing.
    void RunQuietly(std::vector<std::string> arguments) const;

    bool Exists(const char* name) const;

    TemporaryFolder folder_;
};

/// A session file with two media. The test may create "here.wav" next to it.
extern const char* const kSmallSession;

}  // namespace test
