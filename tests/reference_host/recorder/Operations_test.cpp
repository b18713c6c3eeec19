#include "reference_host/recorder/Operations.h"
#include "tests/support/SourceFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

namespace refhost {
namespace {

// "IEditSession.GetFile -> object", one for each row of docs/host-interfaces.md that a recorder
// stands in for.
std::vector<std::string> OperationsOfThePage() {
    std::vector<std::string> operations;
    std::string interfaceName;
    std::ifstream page(test::SourceFolder() / "docs/host-interfaces.md");
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with("### ")) {
            interfaceName = line.substr(4);
        }
        const bool isRecorded = interfaceName.starts_with("IEdit") ||
                                interfaceName.starts_with("IQuery") ||
                                interfaceName == "IHostLogTarget";
        const std::size_t quote = line.find('`');
        if (!isRecorded || quote == std::string::npos ||
            line.find("UnusedSlot") != std::string::npos) {
            continue;
        }
        const std::string signature = line.substr(quote + 1);
        const std::size_t nameEnd = signature.find('(');
        const std::size_t nameStart = signature.rfind(' ', nameEnd) + 1;
        operations.push_back(interfaceName + "." +
                             signature.substr(nameStart, nameEnd - nameStart) +
                             (signature.starts_with("I") ? " -> object" : ""));
    }
    return operations;
}

TEST(Operations, TheListMatchesThePageOfSlots) {
    std::vector<std::string> listed;
    for (const HostOperation& operation : HostOperations()) {
        listed.push_back(std::string(operation.interfaceName) + "." + std::string(operation.name) +
                         (operation.returnsObject ? " -> object" : ""));
    }
    EXPECT_EQ(listed, OperationsOfThePage());
}

}  // namespace
}  // namespace refhost
