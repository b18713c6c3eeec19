#include <gmock/gmock.h>

#include <regex>
#include <sstream>

#include "session/json/SessionJson.h"
#include "tests/support/SourceFolder.h"
#include "tests/support/TemporaryFolder.h"

namespace orvo::json {
namespace {

/// The keys that the page describes, as "Object.key": a heading for each object, a table row for
/// each key.
std::vector<std::string> DescribedKeys(const std::string& page) {
    const std::regex heading("### (\\w+)");
    const std::regex row("\\| `(\\w+)` \\|.*");
    std::vector<std::string> keys;
    std::string object;
    std::istringstream lines(page);
    for (std::string line; std::getline(lines, line);) {
        std::smatch match;
        if (std::regex_match(line, match, heading)) {
            object = match[1];
        } else if (std::regex_match(line, match, row)) {
            keys.push_back(object + "." + match[1].str());
        }
    }
    return keys;
}

TEST(JsonPageTest, DescribesEveryKeyAndNoOther) {
    const std::string page = ::test::ReadFile(::test::SourceFolder() / "docs/json.md");
    EXPECT_THAT(DescribedKeys(page), ::testing::UnorderedElementsAreArray(JsonKeys()));
}

}  // namespace
}  // namespace orvo::json
