#include "tests/platform/support/TemporaryFolder.h"

#include <stdlib.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "platform/kelcore/Paths.h"

namespace test {

TemporaryFolder::TemporaryFolder()
    : path_((std::filesystem::temp_directory_path() / "orvo-test-XXXXXX").native()) {
    if (mkdtemp(path_.data()) == nullptr || chmod(path_.c_str(), 0777) != 0) {
        throw std::runtime_error("no temporary folder at " + path_);
    }
    // Behind links, so that tests may compare it with what the system reports.
    path_ = std::filesystem::canonical(path_).native();
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string TemporaryFolder::Bytes(std::string_view name) const {
    return path_ + "/" + std::string(name);
}

std::u16string TemporaryFolder::Path16(std::string_view name) const {
    return kelcore::PathFromBytes(Bytes(name));
}

std::vector<std::string> TemporaryFolder::Names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_)) {
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

std::string ReadFile(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        throw std::runtime_error("cannot read " + path);
    }
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace test
