#pragma once

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/kelcore/Types.h"

/// Files by UTF-16 path, and a way to replace a file that a crash cannot leave half done.
namespace kelcore {

/// A file error. The message contains `kPathPlaceholder` where the path belongs, so that the code
/// that reports it decides how to show paths.
class file_exception : public std::runtime_error {
public:
    static constexpr std::string_view kPathPlaceholder = "@0";

    file_exception(const std::string& message, int systemError);

    /// The system's error number (`errno`), or 0 if no system call failed.
    int SystemError() const noexcept { return systemError_; }

    /// The message with `path` in place of the placeholder. The path appears as the bytes that the
    /// system uses for it (UTF-8 for ordinary names).
    std::string MessageFor(std::u16string_view path) const;

private:
    int systemError_;
};

class FileReplacement;

/// The name of a file, not an open file. The constructor resolves the path against the working
/// directory. An empty path, or one that contains a zero, names nothing: such a file does not exist
/// and cannot be created.
class File {
public:
    explicit File(std::u16string_view path);
    ~File();
    File(File&&) noexcept;
    File& operator=(File&&) noexcept;
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    /// The absolute path, with "." and ".." resolved by name, without following links. The other
    /// operations use the path as the system resolves it, which differs if ".." follows a link.
    const std::u16string& FullPath() const noexcept { return fullPath_; }

    /// Returns whether the path leads to a file of any kind: regular, device, pipe or socket, but
    /// not a folder. Follows links.
    bool Exists() const noexcept;

    /// Returns whether the path leads to a folder. Follows links.
    bool IsFolder() const noexcept;

    /// Returns whether the path leads to a regular file. Follows links.
    bool IsRegularFile() const noexcept;

    /// Begins to create or replace the file. The old file stays whole until an
    /// `OPlatformByteStream` on this object is closed, and for good if that never happens.
    ///
    /// Follows a link to its target, even if the target does not exist yet. The new file takes over
    /// permissions, owner, access list and extended attributes. Other hard links to the file keep
    /// the old content. Calling this again abandons the replacement that was begun before.
    /// @throws file_exception  if the file cannot be created or may not be written, or if the path
    ///         leads to something other than a regular file
    void Create();

private:
    friend class OPlatformByteStream;

    std::u16string fullPath_;
    std::string systemPath_;
    std::unique_ptr<FileReplacement> replacement_;
};

/// Writes the new content of a file after `File::Create`.
class OPlatformByteStream {
public:
    /// @throws file_exception  if `file` was not created
    explicit OPlatformByteStream(File& file);

    /// Abandons the replacement and keeps the old file, unless `Close` succeeded.
    ~OPlatformByteStream();
    OPlatformByteStream(const OPlatformByteStream&) = delete;
    OPlatformByteStream& operator=(const OPlatformByteStream&) = delete;

    /// The path of the new content before `Close` renames it, for programs that clean up when a
    /// signal ends them. Do not call this after `Close` or after a failure.
    std::string TemporaryPath() const;

    /// Appends all `size` bytes.
    /// @throws file_exception  and abandons the replacement
    void WriteBlock(const void* data, std::size_t size);

    /// Flushes the content to disk and then renames it into place. After that the new file survives
    /// a power loss. Call it once.
    /// @throws file_exception  and keeps the old file. One exception: if only the last step fails,
    ///         which makes the new name survive a power loss, the new file is already in place; the
    ///         message says so
    void Close();

private:
    FileReplacement& Replacement() const;

    std::unique_ptr<FileReplacement> replacement_;
};

}  // namespace kelcore
