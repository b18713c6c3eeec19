#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace support {

/// A new, empty folder, removed with everything in it at the end.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }

    /// The path of a name in it, as text.
    std::string operator/(std::string_view name) const { return (path_ / name).string(); }

    /// Writes a file into it and gives its path.
    std::string Write(std::string_view name, std::string_view content) const;

private:
    std::filesystem::path path_;
};

/// The whole content of a file. Throws when it cannot be read.
std::string ReadFile(const std::filesystem::path& path);

}  // namespace support
