#pragma once

#include <cstddef>
#include <string>

#include "platform/kelcore/replacement/Target.h"
#include "platform/kelcore/replacement/TemporaryFile.h"

namespace kelcore {

/// Replaces one file, from the first check to the rename.
///
/// What happens to everything but the bytes:
/// - A link stays, and its target is replaced. The target of a dangling link is created if its
///   folder exists.
/// - Other hard links to the file keep the old content.
/// - Folders, devices, pipes and sockets are refused, and so are files that the user may not write
///   and files that have no write permission at all, even if the user could write them.
/// - The new file takes over permissions, access list, extended attributes, owner and group. If the
///   owner cannot be kept, the file belongs to the user who saves. If the group or the access list
///   cannot be kept, the group gets no more rights than everybody has. Attributes that the user may
///   not read or set are dropped, and so are those that certify the old content. If the disk is
///   full or fails, the replacement fails.
/// - If the folder does not allow creating or renaming the file (not writable, or sticky and the
///   file belongs to somebody else), the replacement fails. It never overwrites a file in place.
///
/// After a failure the old file is unchanged, with one exception: if syncing the folder fails after
/// the rename, the message says that the new content is in place. Leftovers of a failure or a crash
/// are removed by the next replacement of the same file, if the folder is readable.
class FileReplacement {
public:
    /// @param path  the file; absolute, in the system's bytes
    /// @throws file_exception
    explicit FileReplacement(const std::string& path);

    /// @throws file_exception  after which the object can only be destroyed
    void Write(const void* data, std::size_t size);

    /// @throws file_exception
    void Commit();

    /// The path of the new content until `Commit`; empty afterwards.
    std::string TemporaryPath() const {
        return temporary_.Name().empty() ? std::string() : target_.folderPath + temporary_.Name();
    }

private:
    void SyncFolder() const;

    replacement::Target target_;
    replacement::TemporaryFile temporary_;
};

}  // namespace kelcore
