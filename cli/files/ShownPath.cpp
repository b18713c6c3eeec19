#include "cli/files/ShownPath.h"

#include <filesystem>

#include "cli/terminal/Messages.h"
#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"

namespace cli {

std::string ShownPath(const std::string& path) {
    const std::filesystem::path full(kelcore::PathToBytes(kelcore::UTF8to16(path)));
    const std::filesystem::path relative = full.lexically_relative(std::filesystem::current_path());
    const bool below = !relative.empty() && *relative.begin() != "..";
    return Printable((below ? relative : full).string());
}

}  // namespace cli
