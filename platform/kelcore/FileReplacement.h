#pragma once

#include <cstddef>
#include <string>

#include "platform/kelcore/replacement/Target.h"
#include "platform/kelcore/replacement/TemporaryFile.h"

namespace kelcore {

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

    /// Where the new content stands until it is committed; empty afterwards.
    std::string TemporaryPath() const {
        return temporary_.Name().empty() ? std::string() : target_.folderPath + temporary_.Name();
    }

private:
    void SyncFolder() const;

    replacement::Target target_;
    replacement::TemporaryFile temporary_;
};

}  // namespace kelcore
