#include <cstdio>
#include <exception>

#include "bench/Verb.h"
#include "platform/kelcore/Trace.h"

namespace {

constexpr const char* kDescription =
    "Measures the plug-in beside the bare XML library on the same session in the same run.";

constexpr const char* kExamples =
    R"(Examples:
  orvo-bench read song.orvo
  orvo-bench write --rounds 5 song.orvo
  orvo-bench view song.orvo
  orvo-bench life --json

bench/README.md says what each number is.)";

int RunProgram(int argumentCount, const char* const* arguments) {
    CLI::App program(kDescription, "orvo-bench");
    bench::Action action;
    program.footer(kExamples);
    program.require_subcommand(1);
    bench::AddRead(program, action);
    bench::AddWrite(program, action);
    bench::AddView(program, action);
    bench::AddLife(program, action);
    try {
        program.parse(argumentCount, arguments);
    } catch (const CLI::ParseError& outcome) {
        return program.exit(outcome) == 0 ? 0 : 2;
    }
    // Some measured reads end early on purpose; their failures are not worth a message.
    kelcore::trace::SetEnabled(kelcore::trace::kReaderCategory, false);
    action();
    return 0;
}

}  // namespace

int main(int argumentCount, char** arguments) {
    try {
        return RunProgram(argumentCount, arguments);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "orvo-bench: %s\n", failure.what());
        return 1;
    }
}
