#include "tests/platform/support/FileFolder.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "platform/kelcore/Paths.h"

namespace test {

FileFolder::FileFolder() {
    std::filesystem::permissions(Path(), std::filesystem::perms::all);
}

std::string FileFolder::Bytes(std::string_view name) const {
    return (*this / name).native();
}

std::u16string FileFolder::Path16(std::string_view name) const {
    return kelcore::PathFromBytes(Bytes(name));
}

std::vector<std::string> FileFolder::Names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(Path())) {
        names.push_back(entry.path().filename().native());
    }
    std::sort(names.begin(), names.end());
    return names;
}

void WriteFile(const std::string& path, std::string_view content) {
    std::ofstream stream(path, std::ios::binary);
    stream << content;
    if (!stream.flush()) {
        throw std::runtime_error("cannot write " + path);
    }
}

}  // namespace test
