#pragma once

#include <string>
#include <vector>

#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

namespace test {

/// The built tool, beside the test program.
std::string ToolPath();

/// A plug-in that reads and writes nothing; tests/support/IdlePlugin.cpp says what it can be told.
std::string IdlePluginPath();

/// Runs the built tool with these arguments in a folder.
Outcome RunTool(std::vector<std::string> arguments, const TemporaryFolder& folder,
                const std::string& input = {});

/// The same as a user to whom permissions apply, whoever runs the test.
Outcome RunToolUnprivileged(std::vector<std::string> arguments, const TemporaryFolder& folder);

/// A session file with two media, of which "here.wav" beside it exists if the test makes it.
extern const char* const kSmallSession;

}  // namespace test
