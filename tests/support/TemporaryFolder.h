#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace test {

/// A private folder of a test, removed with its content.
class TemporaryFolder {
public:
    TemporaryFolder();

    /// In memory if the system has a place there, for tests that save thousands of files.
    static TemporaryFolder InMemory();

    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

    /// Writes a file in the folder and returns its path.
    std::filesystem::path Write(std::string_view name, std::string_view content) const;

private:
    explicit TemporaryFolder(const std::filesystem::path& place);

    std::filesystem::path path_;
};

/// The bytes of a file; fails the test if it does not exist.
std::string ReadFile(const std::filesystem::path& path);

}  // namespace test
