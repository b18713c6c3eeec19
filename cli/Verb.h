#pragma once

#include <CLI/CLI.hpp>
#include <functional>

#include "cli/ExitCode.h"
#include "platform/kelcore/Types.h"

namespace cli {

/// What the chosen verb does once the command line has been read.
using Action = std::function<ExitCode()>;

/// For the name of a file that is to be written: one that no file can have is a usage error.
CLI::Validator FileName();

/// For a whole number: anything but decimal digits, and what is out of range, is a usage error that
/// states the range. To be a transformation (`transform`), not a check: it takes away the zeros in
/// front, which CLI11 would take for the mark of an octal number.
CLI::Validator WholeNumber(kelcore::uint64 lowest, kelcore::uint64 highest);

/// Each adds its verb and the verb's options to the tool. When the verb is chosen, `chosen` becomes
/// its action. Nothing is loaded or read before that is called.
void AddInfo(CLI::App& tool, Action& chosen);
void AddTrace(CLI::App& tool, Action& chosen);
void AddConvert(CLI::App& tool, Action& chosen);
void AddGenerate(CLI::App& tool, Action& chosen);

}  // namespace cli
