#include <fmt/format.h>

#include <csignal>
#include <exception>
#include <new>
#include <string>
#include <vector>

#include "cli/terminal/Messages.h"
#include "cli/terminal/StandardStreams.h"
#include "cli/terminal/Stream.h"
#include "cli/terminal/Suggestions.h"
#include "cli/verbs/Verb.h"

namespace {

constexpr const char* kDescription =
    "Inspects, checks, converts and generates session files of the multitrack editor Tembra.";

constexpr const char* kExamples =
    R"(Examples:
  orvo info song.orvo                  what is in it, and which media are missing
  orvo info --json *.orvo              the same for programs
  orvo check song.orvo                 what is wrong in it, and where
  orvo trace song.orvo                 every call that a host gets while it is read
  orvo convert song.orvo song.json     the whole session as JSON
  orvo convert song.json copy.orvo     and back
  orvo relink song.orvo --search /media --in-place
                                       find its missing media
  orvo collect song.orvo /backup/song  the session and its media in one folder
  orvo redact song.orvo -o report.orvo without names, paths and texts
  orvo diff old.orvo new.orvo          what changed between the two
  orvo merge base.orvo a.orvo b.orvo -o c.orvo
                                       both changes in one session
  orvo generate song.orvo              a session to try things on

Exit status: 0 good, 1 something is wrong or failed, 2 the command line makes no sense.)";

void DescribeTool(CLI::App& tool) {
    tool.set_version_flag("--version", "orvo " ORVO_VERSION);
    tool.footer(kExamples);
    tool.require_subcommand(1);
    tool.get_formatter()->column_width(36);
}

/// The verb that was recognised, for the hint: "orvo info".
std::string ChosenName(const CLI::App& tool) {
    const auto verbs = tool.get_subcommands();
    return verbs.empty() ? "orvo" : "orvo " + verbs.front()->get_name();
}

/// The error, and similar names that may have been meant.
std::string WithSuggestion(const std::string& what, const std::string& name,
                           const std::vector<std::string>& known) {
    const std::vector<std::string> near = cli::NearMatches(name, known);
    return near.empty() ? what : fmt::format("{}; did you mean {}?", what, fmt::join(near, " or "));
}

std::string UnknownVerb(const CLI::App& tool, const std::string& name) {
    std::vector<std::string> verbs;
    for (const CLI::App* const verb : tool.get_subcommands(nullptr)) {
        verbs.push_back(verb->get_name());
    }
    return WithSuggestion("there is no verb \"" + name + "\"", name, verbs);
}

/// @param argument  possibly with a value: "--tracks=4"
std::string UnknownOption(const CLI::App& app, const std::string& argument) {
    const std::string name = argument.substr(0, argument.find('='));
    std::vector<std::string> options;
    for (const CLI::Option* const option : app.get_options()) {
        for (const std::string& known : option->get_lnames()) {
            options.push_back("--" + known);
        }
    }
    return WithSuggestion("there is no option \"" + name + "\"", name, options);
}

/// Describes the argument that is not a verb, or the lack of one.
std::string WhatStandsForAVerb(const CLI::App& tool) {
    for (const std::string& argument : tool.remaining()) {
        if (argument != "--") {
            return argument.starts_with('-') ? UnknownOption(tool, argument)
                                             : UnknownVerb(tool, argument);
        }
    }
    return "no verb was given";
}

/// Describes what is wrong after a verb. Reports a mistyped option first, because it may have
/// caused the other errors.
std::string WhatIsWrong(const CLI::App& verb, const CLI::ParseError& outcome) {
    for (const std::string& argument : verb.remaining()) {
        if (argument == "--") {
            break;
        }
        if (argument.starts_with('-') && argument != cli::kStream) {
            return UnknownOption(verb, argument);
        }
    }
    return outcome.what();
}

cli::ExitCode ReportParse(const CLI::App& tool, const CLI::ParseError& outcome) {
    if (outcome.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
        tool.exit(outcome);  // prints the help or the version
        return cli::ExitCode::Good;
    }
    const auto verbs = tool.get_subcommands();
    cli::Complain(
        {.subject = {},
         .what = verbs.empty() ? WhatStandsForAVerb(tool) : WhatIsWrong(*verbs.front(), outcome),
         .advice = "try \"" + ChosenName(tool) + " --help\""});
    return cli::ExitCode::Usage;
}

cli::ExitCode RunTool(int argumentCount, const char* const* arguments, cli::Action& action) {
    CLI::App tool(kDescription, "orvo");
    DescribeTool(tool);
    cli::AddInfo(tool, action);
    cli::AddCheck(tool, action);
    cli::AddTrace(tool, action);
    cli::AddConvert(tool, action);
    cli::AddRelink(tool, action);
    cli::AddCollect(tool, action);
    cli::AddRedact(tool, action);
    cli::AddDiff(tool, action);
    cli::AddMerge(tool, action);
    cli::AddView(tool, action);
    cli::AddGenerate(tool, action);
    try {
        tool.parse(argumentCount, arguments);
    } catch (const CLI::ParseError& outcome) {
        return ReportParse(tool, outcome);
    }
    return action();
}

cli::ExitCode RunToolToTheEnd(int argumentCount, const char* const* arguments,
                              cli::Action& action) {
    const cli::ExitCode code = RunTool(argumentCount, arguments, action);
    cli::FlushOutput();
    return code;
}

}  // namespace

int main(int argumentCount, char** arguments) {
    // Exceeding the limit on file sizes must fail with a message.
    std::signal(SIGXFSZ, SIG_IGN);
    cli::Action action;
    try {
        return static_cast<int>(RunToolToTheEnd(argumentCount, arguments, action));
    } catch (const cli::OutputError& failure) {
        cli::Complain({.subject = "standard output",
                       .what = "cannot be written",
                       .advice = failure.code().message()});
    } catch (const std::bad_alloc&) {
        cli::Complain({.subject = {},
                       .what = "there is not enough memory",
                       .advice = "close other programs, or work on a smaller file"});
    } catch (const std::exception& failure) {
        cli::Complain({.subject = {}, .what = failure.what()});
    }
    return static_cast<int>(action.Trouble());
}
