#pragma once

#include <fmt/ranges.h>

#include <CLI/CLI.hpp>
#include <functional>
#include <string>
#include <utility>
#include <vector>

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

/// Validates one of several words: any other is a usage error that lists them.
CLI::Validator OneOf(std::vector<std::string> words);

/// Words of the command line and what they stand for.
template <class Meaning>
using Words = std::vector<std::pair<std::string, Meaning>>;

/// Adds an option whose value is one of the words. It stores what the word stands for.
template <class Meaning, class Value>
CLI::Option* AddChoice(CLI::App& verb, const std::string& option, const Words<Meaning>& words,
                       Value& chosen, const std::string& description) {
    std::vector<std::string> names;
    for (const auto& [name, meaning] : words) {
        names.push_back(name);
    }
    const auto choose = [words, &chosen](const std::string& text) {
        for (const auto& [name, meaning] : words) {
            if (name == text) {
                chosen = meaning;
            }
        }
    };
    return verb.add_option_function<std::string>(option, choose, description)
        ->type_name(fmt::format("{}", fmt::join(names, "|")))
        ->check(OneOf(std::move(names)));
}

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
void AddView(CLI::App& tool, Action& chosen);
void AddGenerate(CLI::App& tool, Action& chosen);

}  // namespace cli
