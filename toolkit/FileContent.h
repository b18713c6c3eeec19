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

/// What tells a file from another, and its content from what it was before a change.
struct FileIdentity {
    kelcore::uint64 device = 0;
    kelcore::uint64 number = 0;
    kelcore::uint64 size = 0;
    kelcore::int64 changedSeconds = 0;
    kelcore::int64 changedNanoseconds = 0;

    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

/// Of the file that stands at the path now; nothing if there is none.
std::optional<FileIdentity> IdentityOf(const std::string& path);

/// Why there is no file at the path whose content could be had, as far as that shows without it
/// being opened.
std::optional<Problem> FindProblem(const std::string& path);

/// A file that is read block by block, so that it need not fit into memory.
class FileBlocks {
public:
    /// Opens a file. Never waits: what is not a regular file is a problem, also when something else
    /// takes the file's place while it is looked at.
    /// @param path  as the system's calls take it
    explicit FileBlocks(const std::string& path);

    /// What is open already, of any kind; it stays open. A stream is waited for.
    explicit FileBlocks(int descriptor);

    ~FileBlocks();
    FileBlocks(const FileBlocks&) = delete;
    FileBlocks& operator=(const FileBlocks&) = delete;

    /// The next bytes, which stay until the next call; none at the end, and where there is a
    /// problem.
    std::string_view Next();

    /// Why not all could be read.
    const std::optional<Problem>& Failure() const { return failure_; }

    /// Of the file when it was opened; 0 if that is not known.
    std::size_t Size() const { return size_; }

private:
    int descriptor_;
    bool isOwned_;
    std::size_t size_ = 0;
    std::optional<Problem> failure_;
    std::vector<char> block_;
};

/// The whole content of a file, or why it cannot be had, as `FileBlocks` reads it.
/// @param path  as the system's calls take it
/// @param stop  ends the reading before the next block; the content is then cut there
std::variant<std::string, Problem> ReadFileContent(const std::string& path,
                                                   const std::stop_token& stop = {});

}  // namespace toolkit
