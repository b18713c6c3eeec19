#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace toolkit::interchange {

class OutputFile;

/// What a ZIP archive may be before it is refused.
struct ZipLimits {
    std::size_t entries = 100'000;
    std::uint64_t bytes = std::uint64_t{64} << 30;  ///< of all entries together, unpacked
    std::uint64_t ratio = 400;  ///< unpacked bytes for each packed one, from a mebibyte on
};

struct ZipEntry {
    std::string name{};      ///< relative, with "/" between names, without "." and ".."
    std::uint64_t size = 0;  ///< unpacked
};

/// Reads an archive that may be hostile. Nothing is unpacked but what is asked for.
class ZipReader {
public:
    /// @throws Failure  if there is no such file, if it is no archive, or if an entry is encrypted,
    ///         has the name of another one or a name that leads out of a folder, or exceeds a limit
    explicit ZipReader(const std::filesystem::path& file, const ZipLimits& limits = {});
    ~ZipReader();
    ZipReader(const ZipReader&) = delete;
    ZipReader& operator=(const ZipReader&) = delete;

    /// In the order of the archive. The names of folders end in "/".
    const std::vector<ZipEntry>& Entries() const { return entries_; }

    /// Null if there is no such entry.
    const ZipEntry* Find(std::string_view name) const;

    /// The content of an entry.
    /// @param most  the most bytes that are taken
    /// @throws Failure  if there is no such entry, if it is longer, or if it is damaged
    std::string Read(std::string_view name, std::uint64_t most) const;

    /// Gives the content of an entry block by block.
    /// @throws Failure  if there is no such entry or if it is damaged
    void Read(std::string_view name, const std::function<void(std::string_view)>& sink) const;

private:
    struct Archive;

    [[noreturn]] void Refuse(std::string_view entry, const std::string& what) const;

    std::filesystem::path file_;
    std::unique_ptr<Archive> archive_;
    std::vector<ZipEntry> entries_;
    std::vector<std::pair<std::string, std::size_t>> byName_;  // sorted
};

/// Writes an archive, entry by entry. Equal contents give equal archives. No entry and no archive
/// holds more than 4 GiB.
class ZipWriter {
public:
    /// @param out  stays until the end; receives the archive
    explicit ZipWriter(OutputFile& out);
    ~ZipWriter();
    ZipWriter(const ZipWriter&) = delete;
    ZipWriter& operator=(const ZipWriter&) = delete;

    /// Begins an entry whose content comes block by block, and is packed.
    /// @param name  as in `ZipEntry`, and distinct
    void Begin(std::string_view name);
    /// @throws Failure
    void Write(std::string_view block);
    /// @throws Failure
    void End();

    /// An entry that is packed, at once.
    /// @throws Failure
    void Add(std::string_view name, std::string_view content);

    /// A file as an entry that is not packed. It is read twice.
    /// @param path  as the system's calls take it
    /// @throws Failure  if it cannot be read
    void AddFile(std::string_view name, const std::string& path);

    /// Writes the directory. Call it once, at last.
    /// @throws Failure
    void Finish();

private:
    struct Entry;
    struct Packer;

    void BeginEntry(std::string_view name, bool isPacked, bool isCounted);
    void WriteHeader(const Entry& entry);
    bool Pack(int flush);
    void Emit(std::string_view bytes);

    OutputFile& out_;
    std::uint64_t position_ = 0;
    std::vector<Entry> entries_;
    std::unique_ptr<Packer> packer_;
};

}  // namespace toolkit::interchange
