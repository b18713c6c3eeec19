#include "cli/verbs/Verb.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "toolkit/FileNames.h"

namespace cli {
namespace {

/// Parses all of `digits` as a decimal number.
std::optional<kelcore::uint64> ParseDecimal(const std::string& digits) {
    kelcore::uint64 number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

}  // namespace

CLI::Validator FileName() {
    const auto problemOf = [](const std::string& name) -> std::string {
        if (name.empty()) {
            return "the name is empty; name a file";
        }
        return toolkit::IsNamedAsFolder(name) ? "\"" + name + "\" names a folder; name a file in it"
                                              : "";
    };
    return {problemOf, ""};
}

CLI::Validator OneOf(std::vector<std::string> words) {
    const auto problemOf = [words = std::move(words)](const std::string& text) -> std::string {
        const bool isKnown = std::find(words.begin(), words.end(), text) != words.end();
        return isKnown ? "" : fmt::format("\"{}\" is not one of {}", text, fmt::join(words, ", "));
    };
    return {problemOf, ""};
}

CLI::Validator WholeNumber(kelcore::uint64 lowest, kelcore::uint64 highest) {
    const auto problemOf = [lowest, highest](std::string& text) -> std::string {
        const std::optional<kelcore::uint64> number = ParseDecimal(text);
        if (!number || *number < lowest || *number > highest) {
            return fmt::format("\"{}\" is not a whole number from {} to {}", text, lowest, highest);
        }
        text = std::to_string(*number);
        return {};
    };
    return {problemOf, ""};
}

}  // namespace cli
