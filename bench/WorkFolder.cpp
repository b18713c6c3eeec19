#include "bench/WorkFolder.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace bench {
namespace {

constexpr const char* kFolderInMemory = "/dev/shm";

std::string DefaultParent() {
    std::error_code ignored;
    return std::filesystem::is_directory(kFolderInMemory, ignored)
               ? kFolderInMemory
               : std::filesystem::temp_directory_path().string();
}

}  // namespace

WorkFolder::WorkFolder(const std::string& parent)
    : path_((parent.empty() ? DefaultParent() : parent) + "/orvo-bench-XXXXXX") {
    if (::mkdtemp(path_.data()) == nullptr) {
        throw std::runtime_error("no folder can be made in " + parent +
                                 "; name another one with --folder");
    }
}

WorkFolder::~WorkFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

}  // namespace bench
