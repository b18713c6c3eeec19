#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <utility>

#include "cli/ExitCode.h"
#include "platform/kelcore/Types.h"

namespace cli {

/// Runs the chosen verb after the command line has been parsed.
class Action {
public:
    Action() = default;

    /// @param trouble  the exit status if `run` throws
    template <class Run>
    Action(Run run, ExitCode trouble = ExitCode::Failure)
        : run_(std::move(run)), trouble_(trouble) {}

    ExitCode operator()() const { return run_(); }
    ExitCode Trouble() const { return trouble_; }

private:
    std::function<ExitCode()> run_;
    ExitCode trouble_ = ExitCode::Failure;
};

/// Validates the name of an output file: a name that no file can have is a usage error.
CLI::Validator FileName();

/// Validates a whole number: anything but decimal digits in the range is a usage error that states
/// the range. Use it with `transform`, not `check`: it strips leading zeros, which CLI11 would take
/// for an octal prefix.
CLI::Validator WholeNumber(kelcore::uint64 lowest, kelcore::uint64 highest);

/// Each function adds a verb and its options to the tool. When the user chooses the verb, `chosen`
/// becomes its action. Nothing is loaded or read before the action runs.
void AddCheck(CLI::App& tool, Action& chosen);
void AddInfo(CLI::App& tool, Action& chosen);
void AddTrace(CLI::App& tool, Action& chosen);
void AddConvert(CLI::App& tool, Action& chosen);
void AddCollect(CLI::App& tool, Action& chosen);
void AddRedact(CLI::App& tool, Action& chosen);
void AddRelink(CLI::App& tool, Action& chosen);
void AddDiff(CLI::App& tool, Action& chosen);
void AddMerge(CLI::App& tool, Action& chosen);
void AddGenerate(CLI::App& tool, Action& chosen);

}  // namespace cli
