#include "cli/files/TemporaryFolder.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace cli {
namespace {

/// A template for mkdtemp in the folder for temporary files.
std::string NamePattern() {
    const char* const stated = std::getenv("TMPDIR");
    const std::string place = stated != nullptr && *stated != '\0' ? stated : "/tmp";
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::canonical(place, error);
    return ((error ? std::filesystem::path(place) : folder) / "orvo-XXXXXX").string();
}

}  // namespace

TemporaryFolder::TemporaryFolder() : path_(NamePattern()) {
    const WithoutSignals withoutSignals;
    if (::mkdtemp(path_.data()) == nullptr) {
        const int failure = errno;
        throw std::runtime_error("cannot create a temporary folder in " +
                                 std::filesystem::path(path_).parent_path().string() + ": " +
                                 std::generic_category().message(failure) +
                                 "; set TMPDIR to a writable folder");
    }
    removal_.emplace(path_);
}

TemporaryFolder::~TemporaryFolder() {
    RemoveTree(path_.c_str());
}

}  // namespace cli
