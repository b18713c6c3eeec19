#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/TemporaryFolder.h"

namespace test {

/// A temporary folder for tests of files: open to every user, and asked for paths as the platform's
/// interfaces take them.
class FileFolder : public TemporaryFolder {
public:
    FileFolder();

    /// The path of `name` in the folder, as bytes and as UTF-16.
    std::string Bytes(std::string_view name) const;
    std::u16string Path16(std::string_view name) const;

    /// The names of everything in it, sorted.
    std::vector<std::string> Names() const;
};

void WriteFile(const std::string& path, std::string_view content);

}  // namespace test
