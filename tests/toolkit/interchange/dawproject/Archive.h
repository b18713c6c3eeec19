#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace test {

/// Names and contents.
using Entries = std::vector<std::pair<std::string, std::string>>;

/// Writes a ZIP archive, whatever the names are.
void WriteArchive(const std::filesystem::path& path, const Entries& entries);

/// Writes an archive with one entry of so many zeros, packed as tightly as can be.
void WriteBomb(const std::filesystem::path& path, const std::string& entry, std::size_t size);

/// All entries of an archive.
Entries ReadArchive(const std::filesystem::path& path);

/// The content of an entry; empty if there is none.
std::string EntryOf(const std::filesystem::path& path, const std::string& name);

}  // namespace test
