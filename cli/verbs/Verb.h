#pragma once

#include <CLI/CLI.hpp>
#include <functional>

#include "cli/ExitCode.h"
#include "platform/kelcore/Types.h"

namespace cli {

/// Runs the chosen verb after the command line has been parsed.
using Action = std::function<ExitCode()>;

/// Validates the name of an output file: a name that no file can have is a usage error.
CLI::Validator FileName();

/// Validates a whole number: anything but decimal digits in the range is a usage error that states
/// the range. Use it with `transform`, not `check`: it strips leading zeros, which CLI11 would take
/// for an octal prefix.
CLI::Validator WholeNumber(kelcore::uint64 lowest, kelcore::uint64 highest);

/// Each function adds a verb and its options to the tool. When the user chooses the verb, `chosen`
/// becomes its action. Nothing is loaded or read before the action runs.
void AddInfo(CLI::App& tool, Action& chosen);
void AddTrace(CLI::App& tool, Action& chosen);
void AddConvert(CLI::App& tool, Action& chosen);
void AddGenerate(CLI::App& tool, Action& chosen);

}  // namespace cli
