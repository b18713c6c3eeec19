#include "cli/files/ReadProgress.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>

namespace cli {
namespace {

/// The current position of an open descriptor.
std::optional<double> PositionOf(const std::string& descriptor) {
    std::ifstream info("/proc/self/fdinfo/" + descriptor);
    std::string key;
    double position = 0;
    return info >> key >> position && key == "pos:" ? std::optional(position) : std::nullopt;
}

bool IsSameFile(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

/// The smallest position among all descriptors of the file, because a second reader may be ahead.
std::optional<double> PositionIn(const struct stat& file) {
    std::optional<double> least;
    std::error_code error;
    std::filesystem::directory_iterator entry("/proc/self/fd", error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        struct stat opened {};
        if (::stat(entry->path().c_str(), &opened) != 0 || !IsSameFile(opened, file)) {
            continue;
        }
        if (const auto position = PositionOf(entry->path().filename().string())) {
            least = std::min(least.value_or(*position), *position);
        }
    }
    return least;
}

}  // namespace

ShareSource ShareRead(const std::string& path) {
    return [path]() -> std::optional<double> {
        struct stat file {};
        if (::stat(path.c_str(), &file) != 0 || file.st_size <= 0) {
            return std::nullopt;
        }
        const auto position = PositionIn(file);
        return position ? std::optional(*position / static_cast<double>(file.st_size))
                        : std::nullopt;
    };
}

double SizeOrOne(const std::string& path) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    return error || size == 0 ? 1 : static_cast<double>(size);
}

}  // namespace cli
