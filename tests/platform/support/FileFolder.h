#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/TemporaryFolder.h"

namespace test {

/// A temporary folder that every user may enter, with paths in the forms of the platform's
/// interfaces.
class FileFolder : public TemporaryFolder {
public:
    FileFolder();

    /// The path of `name` in the folder, as bytes and as UTF-16.
    std::string Bytes(std::string_view name) const;
    std::u16string Path16(std::string_view name) const;

    /// The sorted names of all entries.
    std::vector<std::string> Names() const;
};

void WriteFile(const std::string& path, std::string_view content);

}  // namespace test
