#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <optional>
#include <string>

namespace kelcore {

/// A descriptor of the system that is closed with its owner.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) noexcept : number_(number) {}
    ~Descriptor();
    Descriptor(Descriptor&& other) noexcept : number_(other.Release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept;
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool IsOpen() const noexcept { return number_ >= 0; }
    int Number() const noexcept { return number_; }

    /// Gives the descriptor away unclosed.
    int Release() noexcept;

private:
    int number_ = -1;
};

/// The file that a replacement is for: behind links, in the folder that really holds it. The folder
/// is held open, so that renaming it meanwhile does not lead astray.
struct ReplacementTarget {
    Descriptor folder;
    bool folderCanBeSynced = false;  ///< false for a folder that may be written but not read
    std::string name;
    std::optional<struct stat> old;  ///< what stands there now
};

/// A new file under a passing name (".NAME.orvo-tmp-" and 12 hexadecimal digits) beside the file it
/// is going to replace. It is locked for as long as it is held, so that a later replacement can
/// tell it from one that a crash left behind.
class TemporaryFile {
public:
    /// @throws file_exception
    explicit TemporaryFile(const ReplacementTarget& target);

    /// Removes the file, unless it was renamed.
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    int Number() const noexcept { return file_.Number(); }

    /// Gives it the target's name.
    /// @throws file_exception
    void RenameTo(const std::string& name);

private:
    bool TryName(mode_t mode);
    bool HasName(const std::string& name) const;

    int folder_;
    std::string name_;
    Descriptor file_;
};

/// The replacement of one file, from the first check to the rename.
///
/// Choices where a file has more to it than its bytes:
/// - A link stays and its target is replaced; a dangling link's target is made, if its folder is
///   there.
/// - Only this name gets the new file: further hard links keep the old content.
/// - Folders, devices, pipes and sockets are refused, and so is a file that may not be written: by
///   this user, or, whatever this user may, by anybody.
/// - Permissions, access list, extended attributes, owner and group are taken over. Where the owner
///   may not be kept, the file belongs to whoever saves; where the group or the access list may not
///   be kept, the group gets no more rights than everybody has. Attributes that this user may not
///   read or set, or that vouch for the old content, are left behind; where there is no room for
///   one, or the disk fails, the replacement fails.
/// - Where the folder does not let a file be made or renamed (not writable, or sticky and the file
///   is somebody else's), the replacement fails: the file is never overwritten in place.
///
/// After a failure the old file is as it was, but for one case: if the new file has the name and
/// the folder cannot be brought to the disk, the message says that the new content is in place.
/// What a failure or the end of the program leaves beside the file, the next replacement of the
/// same file removes, where the folder may be read.
class FileReplacement {
public:
    /// @param path of the file; absolute, as the system takes it.
    /// @throws file_exception
    explicit FileReplacement(const std::string& path);

    /// @throws file_exception, after which only destruction makes sense.
    void Write(const void* data, std::size_t size);

    /// @throws file_exception
    void Commit();

private:
    void SyncFolder() const;

    ReplacementTarget target_;
    TemporaryFile temporary_;
};

}  // namespace kelcore
