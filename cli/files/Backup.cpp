#include "cli/files/Backup.h"

#include <filesystem>
#include <system_error>

namespace cli {
namespace {

namespace fs = std::filesystem;

constexpr const char* kSuffix = ".bak";
constexpr int kMost = 10000;

bool IsTaken(const std::error_code& error) {
    return error == std::errc::file_exists;
}

/// Links the file, or copies it where that is refused. Never replaces a file.
std::error_code Duplicate(const fs::path& file, const fs::path& target) {
    std::error_code error;
    fs::create_hard_link(file, target, error);
    if (!error || IsTaken(error)) {
        return error;
    }
    fs::copy_file(file, target, fs::copy_options::none, error);
    if (error && !IsTaken(error)) {
        std::error_code ignored;
        fs::remove(target, ignored);
    }
    return error;
}

}  // namespace

Backup::Backup(const std::string& file) {
    std::error_code error;
    const fs::path real = fs::canonical(file, error);
    for (int number = 1; !error && number <= kMost; ++number) {
        const std::string path =
            real.string() + kSuffix + (number == 1 ? "" : std::to_string(number));
        error = Duplicate(real, path);
        if (!error) {
            path_ = path;
            return;
        }
        if (IsTaken(error) && number != kMost) {
            error.clear();
        }
    }
    failure_ =
        toolkit::Problem{{}, "no backup can be made, and it was not changed", error.message()};
}

Backup::~Backup() {
    if (!path_.empty() && !isKept_) {
        std::error_code ignored;
        fs::remove(path_, ignored);
    }
}

const std::string& Backup::Keep() {
    isKept_ = true;
    return path_;
}

}  // namespace cli
