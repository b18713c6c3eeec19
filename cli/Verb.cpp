#include "cli/Verb.h"

#include <string>

namespace cli {

CLI::Validator FileName() {
    const auto problemOf = [](const std::string& name) -> std::string {
        if (name.empty()) {
            return "the name is empty; name a file";
        }
        return name.ends_with('/') ? "\"" + name + "\" is a folder; name a file in it" : "";
    };
    return {problemOf, ""};
}

}  // namespace cli
