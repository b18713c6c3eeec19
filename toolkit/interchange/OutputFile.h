#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/kelcore/File.h"

namespace toolkit::interchange {

/// A file that is created, or replaced once it is whole.
class OutputFile {
public:
    /// @throws Failure  if it cannot be created
    explicit OutputFile(const std::filesystem::path& path);

    const std::filesystem::path& Path() const { return path_; }

    /// Appends a text, in large blocks.
    /// @throws Failure
    void Write(std::string_view text);

    /// Only `Outputs` calls this. Without it, everything stays as it was.
    /// @throws Failure  and keeps the old file
    void Close();

private:
    void Flush();

    std::filesystem::path path_;
    kelcore::File file_;
    kelcore::OPlatformByteStream stream_;
    std::string block_;
};

/// All files and folders of a conversion: they get their names when all are whole, or never.
class Outputs {
public:
    Outputs() = default;

    /// Removes the folders that were made, unless `Commit` succeeded.
    ~Outputs();
    Outputs(const Outputs&) = delete;
    Outputs& operator=(const Outputs&) = delete;

    /// Begins a file, which stays until the end.
    /// @throws Failure
    OutputFile& Add(const std::filesystem::path& path);

    /// Makes a folder, unless it exists and is empty.
    /// @throws Failure
    void AddFolder(const std::filesystem::path& path);

    /// @return the files
    /// @throws Failure
    std::vector<std::filesystem::path> Commit();

private:
    std::vector<std::unique_ptr<OutputFile>> files_;
    std::vector<std::filesystem::path> madeFolders_;
};

}  // namespace toolkit::interchange
