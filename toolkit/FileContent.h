#pragma once

#include <cstddef>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "toolkit/DocumentScan.h"

namespace toolkit {

/// Identifies a file and the state of its content.
struct FileIdentity {
    kelcore::uint64 device = 0;
    kelcore::uint64 number = 0;
    kelcore::uint64 size = 0;
    kelcore::int64 changedSeconds = 0;
    kelcore::int64 changedNanoseconds = 0;

    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

/// The identity of the file at the path; no value if there is none.
std::optional<FileIdentity> IdentityOf(const std::string& path);

/// Why the path has no file that can be read, as far as that shows without opening it.
std::optional<Problem> FindProblem(const std::string& path);

/// A file that is read block by block, so that it need not fit into memory.
class FileBlocks {
public:
    /// Opens a file. Never waits: anything but a regular file is a problem, even if it takes the
    /// file's place at the last moment.
    /// @param path  as the system's calls take it
    explicit FileBlocks(const std::string& path);

    /// Reads from an open descriptor of any kind, which stays open. Waits for a stream.
    explicit FileBlocks(int descriptor);

    ~FileBlocks();
    FileBlocks(const FileBlocks&) = delete;
    FileBlocks& operator=(const FileBlocks&) = delete;

    /// The next bytes, valid until the next call; empty at the end and if there is a problem.
    std::string_view Next();

    /// Why not everything could be read.
    const std::optional<Problem>& Failure() const { return failure_; }

    /// The size of the file when it was opened; 0 if unknown.
    std::size_t Size() const { return size_; }

private:
    int descriptor_;
    bool isOwned_;
    std::size_t size_ = 0;
    std::optional<Problem> failure_;
    std::vector<char> block_;
};

/// The whole content of a file, read as `FileBlocks` does, or why it cannot be read.
/// @param path  as the system's calls take it
/// @param stop  ends the reading before the next block; the content is then cut off there
std::variant<std::string, Problem> ReadFileContent(const std::string& path,
                                                   const std::stop_token& stop = {});

}  // namespace toolkit
