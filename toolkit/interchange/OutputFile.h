#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/kelcore/File.h"

namespace toolkit::interchange {

/// A file that is created, or replaced once it is whole. Without `Close`, everything stays as it
/// was.
class OutputFile {
public:
    /// @throws Failure  if it cannot be created
    explicit OutputFile(const std::filesystem::path& path);

    /// Appends a text, in large blocks.
    /// @throws Failure
    void Write(std::string_view text);

    /// @throws Failure  and keeps the old file
    void Close();

private:
    void Flush();

    std::filesystem::path path_;
    kelcore::File file_;
    kelcore::OPlatformByteStream stream_;
    std::string block_;
};

/// Makes the folder if there is none.
/// @throws Failure  if that fails, or if it contains something
void MakeOutputFolder(const std::filesystem::path& folder);

}  // namespace toolkit::interchange
