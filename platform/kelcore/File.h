#pragma once

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/kelcore/Types.h"

/// Files by their UTF-16 path, and the replacement of a file that a crash cannot leave half done.
namespace kelcore {

/// What went wrong with a file. The message holds `kPathPlaceholder` where the file's path belongs,
/// so that whoever reports it decides how paths are shown.
class file_exception : public std::runtime_error {
public:
    static constexpr std::string_view kPathPlaceholder = "@0";

    file_exception(std::string message, int systemError);

    /// The system's error number (`errno`), 0 if the system was not asked.
    int SystemError() const noexcept { return systemError_; }

    /// The message with `path` in place of the placeholder, in the bytes that the system knows it
    /// by (UTF-8 for every usual name).
    std::string MessageFor(std::u16string_view path) const;

private:
    int systemError_;
};

class FileReplacement;

/// A file's name, not an open file. The path is resolved against the working directory on
/// construction. An empty path, or one with a zero in it, names nothing: the file does not exist
/// and cannot be created.
class File {
public:
    explicit File(std::u16string_view path);
    ~File();
    File(File&&) noexcept;
    File& operator=(File&&) noexcept;
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    /// The absolute path, with "." and ".." worked out by name (links are not followed). What is
    /// asked and done of the file below goes where the system leads, which is another place if ".."
    /// stands behind a link.
    const std::u16string& FullPath() const noexcept { return fullPath_; }

    /// Whether, behind links, a file of any kind stands there: a regular one, a device, a pipe or a
    /// socket, but no folder.
    bool Exists() const noexcept;

    /// Whether, behind links, a folder stands there.
    bool IsFolder() const noexcept;

    /// Whether it is, behind links, a regular file: not a folder, device, pipe or socket.
    bool IsRegularFile() const noexcept;

    /// Begins to replace the file, or to make it. What stands there now stays whole until an
    /// `OPlatformByteStream` on this object is closed; if that never happens it just stays.
    /// A link is followed to the real file, also to one that does not exist yet; permissions,
    /// owner, access list and extended attributes are taken over from it. Of a file with several
    /// names (hard links) only this name gets the new content, the others keep the old. Called
    /// again, it gives up what it began before.
    /// @throws file_exception if a file cannot be made there, or what stands there is not a regular
    /// file
    ///         or may not be written.
    void Create();

private:
    friend class OPlatformByteStream;

    std::u16string fullPath_;
    std::string systemPath_;
    std::unique_ptr<FileReplacement> replacement_;
};

/// Writes the new content of a file on which `Create` was called.
class OPlatformByteStream {
public:
    /// @throws file_exception if `file` was not created.
    explicit OPlatformByteStream(File& file);

    /// Without a `Close` before, the replacement is given up and the old file stays.
    ~OPlatformByteStream();
    OPlatformByteStream(const OPlatformByteStream&) = delete;
    OPlatformByteStream& operator=(const OPlatformByteStream&) = delete;

    /// Where the new content stands, as the system knows it, until it gets the file's name: for a
    /// program that clears up when a signal ends it. Not to be asked after `Close` or a failure.
    std::string TemporaryPath() const;

    /// Appends `size` bytes, all of them.
    /// @throws file_exception; the replacement is then given up.
    void WriteBlock(const void* data, std::size_t size);

    /// Puts the content on the disk and then gives it the file's name. From here on the new file
    /// stands there, whole, also after a loss of power. It can be called once.
    /// @throws file_exception; the old file then stays. Only when the very last step fails, which
    /// makes the
    ///         new name outlast a loss of power, the new file stands there already; the message
    ///         says so.
    void Close();

private:
    FileReplacement& Replacement() const;

    std::unique_ptr<FileReplacement> replacement_;
};

}  // namespace kelcore
