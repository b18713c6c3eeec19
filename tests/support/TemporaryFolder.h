#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace test {

/// A folder of a test's own, removed with everything in it.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

    /// Writes a file in the folder and returns its path.
    std::filesystem::path Write(std::string_view name, std::string_view content) const;

private:
    std::filesystem::path path_;
};

/// The bytes of a file; fails the test if there is none.
std::string ReadFile(const std::filesystem::path& path);

}  // namespace test
