#include "platform/kelcore/replacement/Properties.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelcore::replacement {
namespace {

constexpr const char* kAccessList = "system.posix_acl_access";

/// A full or broken disk fails the replacement. A property that this user or this file system
/// rejects is dropped.
bool MustFail(int systemError) {
    return systemError == ENOSPC || systemError == EDQUOT || systemError == EIO ||
           systemError == ENOMEM;
}

struct Kept {
    bool owner;
    bool group;
};

bool ChangeOwner(int file, uid_t owner, gid_t group) {
    if (Uninterrupted([=] { return fchown(file, owner, group); }) == 0) {
        return true;
    }
    if (MustFail(errno)) {
        FailWith(errno);
    }
    return false;
}

Kept TakeOverOwner(int file, const struct stat& old) {
    constexpr auto kSameOwner = static_cast<uid_t>(-1);
    if (ChangeOwner(file, old.st_uid, old.st_gid)) {
        return {true, true};
    }
    const bool group = ChangeOwner(file, kSameOwner, old.st_gid);
    struct stat now;
    return {fstat(file, &now) == 0 && now.st_uid == old.st_uid, group};
}

/// Whether the attribute certifies the content and so must not move to new content.
bool BelongsToContent(std::string_view attribute) {
    return attribute == "security.capability" || attribute == "security.ima" ||
           attribute == "security.evm";
}

/// Runs the two-step protocol of the attribute calls: `read(nullptr, 0)` for the size, then the
/// bytes, again if the size has grown in between. Nothing if the system refuses.
template <typename Read>
std::optional<std::vector<char>> ReadAll(Read read) {
    std::vector<char> bytes;
    for (;;) {
        const ssize_t size = Uninterrupted([&] { return read(nullptr, std::size_t{0}); });
        if (size > 0) {
            bytes.resize(static_cast<std::size_t>(size));
        }
        const ssize_t got =
            size > 0 ? Uninterrupted([&] { return read(bytes.data(), bytes.size()); }) : size;
        if (got >= 0) {
            bytes.resize(static_cast<std::size_t>(got));
            return bytes;
        }
        if (errno == ERANGE) {
            continue;
        }
        if (MustFail(errno)) {
            FailWith(errno);
        }
        return std::nullopt;
    }
}

/// Returns whether the new file has the attribute too.
bool CopyAttribute(int from, int to, const char* name) {
    const auto value = ReadAll(
        [=](char* buffer, std::size_t size) { return fgetxattr(from, name, buffer, size); });
    if (!value) {
        return false;
    }
    const int result =
        Uninterrupted([&] { return fsetxattr(to, name, value->data(), value->size(), 0); });
    if (result == 0) {
        return true;
    }
    if (MustFail(errno)) {
        FailWith(errno);
    }
    return false;
}

/// Returns false if the old file has an access list that the new one could not get.
bool TakeOverAttributes(int from, int to) {
    // The folder may have given the new file a default access list.
    if (Uninterrupted([to] { return fremovexattr(to, kAccessList); }) != 0 && MustFail(errno)) {
        FailWith(errno);
    }
    const auto names =
        ReadAll([=](char* buffer, std::size_t size) { return flistxattr(from, buffer, size); });
    if (!names) {
        return true;
    }
    bool accessListKept = true;
    std::string_view rest(names->data(), names->size());
    while (!rest.empty()) {
        const std::string name(rest.substr(0, rest.find('\0')));
        rest.remove_prefix(std::min(name.size() + 1, rest.size()));
        if (!BelongsToContent(name) && !CopyAttribute(from, to, name.c_str()) &&
            name == kAccessList) {
            accessListKept = false;
        }
    }
    return accessListKept;
}

/// The mode of the old file, minus what it would grant to the wrong people.
mode_t ModeFor(const struct stat& old, bool ownerKept, bool groupMeantIsKept) {
    mode_t mode = old.st_mode & (ownerKept && groupMeantIsKept ? 07777U : 0777U);
    if (!groupMeantIsKept) {
        mode = (mode & ~070U) | (mode & ((mode & 07U) << 3));
    }
    return mode;
}

}  // namespace

void TakeOverProperties(const Target& target, int file) {
    const Kept kept = TakeOverOwner(file, *target.old);
    const Descriptor old =
        OpenAt(target.folder.Number(), target.name.c_str(), O_RDONLY | O_NONBLOCK);
    if (!old.IsOpen() && errno != EACCES && errno != EPERM) {
        FailWith(errno);
    }
    const bool accessListKept = old.IsOpen() && TakeOverAttributes(old.Number(), file);
    const mode_t mode = ModeFor(*target.old, kept.owner, kept.group && accessListKept);
    if (Uninterrupted([=] { return fchmod(file, mode); }) != 0) {
        FailWith(errno);
    }
}

}  // namespace kelcore::replacement
