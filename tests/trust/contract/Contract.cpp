#include "tests/trust/contract/Contract.h"
#include "tests/support/FeaturesUnderTest.h"

#include <cstdio>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

#include "reference_host/Sessions.h"

// Contract GROUP GOLDEN-FOLDER [--cycles N] [--stride N] [--factor N]: tests one group of things
// that a host may do or fail to do, each case in its own process.

namespace {

struct Group {
    std::string_view name;
    test::Tally (*run)(const test::Options& options);
};
constexpr Group kGroups[] = {
    {"selectors", test::RunSelectors}, {"cycles", test::RunCycles}, {"reloads", test::RunReloads},
    {"processes", test::RunProcesses}, {"nulls", test::RunNulls},   {"throws", test::RunThrows},
    {"counts", test::RunCounts},       {"texts", test::RunTexts},
};

const Group* FindGroup(std::string_view name) {
    for (const Group& group : kGroups) {
        if (group.name == name) {
            return &group;
        }
    }
    return nullptr;
}

bool ReadOptions(std::span<char*> arguments, test::Options& options) {
    for (; arguments.size() >= 2; arguments = arguments.subspan(2)) {
        const std::string_view name = arguments[0];
        const std::size_t value = std::stoul(arguments[1]);
        if (name == "--cycles") {
            options.cycles = value;
        } else if (name == "--stride" && value > 0) {
            options.stride = value;
        } else if (name == "--factor") {
            options.factor = value;
        } else {
            return false;
        }
    }
    return arguments.empty();
}

}  // namespace

int main(int argc, char** argv) {
    const std::span<char*> arguments(argv, static_cast<std::size_t>(argc));
    const Group* const group = argc > 2 ? FindGroup(arguments[1]) : nullptr;
    test::Options options;
    if (group == nullptr || !ReadOptions(arguments.subspan(3), options)) {
        std::fprintf(
            stderr, "usage: Contract GROUP GOLDEN-FOLDER [--cycles N] [--stride N] [--factor N]\n");
        return 2;
    }
    options.goldenFolder = std::filesystem::absolute(arguments[2]);
    test::UseFeaturesUnderTest();
    const test::Tally tally = group->run(options);
    std::printf("contract, %s: %zu cases, %zu problems\n", arguments[1], tally.cases,
                tally.problems);
    return tally.problems == 0 && tally.cases > 0 ? 0 : 1;
}
