#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace test {

/// A folder of its own for one test, open to every user, removed with all that is in it.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& Path() const { return path_; }

    /// The path of `name` in the folder, as bytes and as UTF-16.
    std::string Bytes(std::string_view name) const;
    std::u16string Path16(std::string_view name) const;

    /// The names of everything in it, sorted.
    std::vector<std::string> Names() const;

private:
    std::string path_;
};

void WriteFile(const std::string& path, std::string_view content);
std::string ReadFile(const std::string& path);

}  // namespace test
