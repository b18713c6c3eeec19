#include "platform/kelcore/replacement/Target.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <utility>

namespace kelcore::replacement {
namespace {

constexpr int kMaxLinks = 40;

/// A path split before its last name.
struct SplitPath {
    std::string folder;
    std::string name;
};

SplitPath Split(std::string path) {
    while (path.size() > 1 && path.back() == '/') {
        path.pop_back();
    }
    const std::size_t cut = path.rfind('/') + 1;
    return {path.substr(0, cut), path.substr(cut)};
}

/// The target of the link at `path`; nothing if there is no link.
std::optional<std::string> ReadLink(const std::string& path) {
    std::array<char, PATH_MAX> text;
    const ssize_t length =
        Uninterrupted([&] { return readlink(path.c_str(), text.data(), text.size()); });
    if (length >= 0) {
        return std::string(text.data(), static_cast<std::size_t>(length));
    }
    if (errno != EINVAL && errno != ENOENT) {
        FailWith(errno);
    }
    return std::nullopt;
}

/// Follows links in the last name of `path`, even to a target that does not exist.
SplitPath FollowLinks(const std::string& path) {
    SplitPath place = Split(path);
    for (int links = 0; links < kMaxLinks; ++links) {
        const std::optional<std::string> next = ReadLink(place.folder + place.name);
        if (!next) {
            return place;
        }
        place = Split(next->starts_with('/') ? *next : place.folder + *next);
    }
    FailWith(ELOOP);
}

/// Asks the system first: it refuses links that somebody else planted in a world-writable folder.
void CheckPath(const std::string& path) {
    struct stat status;
    if (Uninterrupted([&] { return stat(path.c_str(), &status); }) == 0) {
        if (S_ISDIR(status.st_mode)) {
            Fail("it is a folder", EISDIR);
        }
    } else if (errno != ENOENT) {
        FailWith(errno);
    }
}

void OpenFolder(const std::string& path, Target& target) {
    const auto open = [&path](int flags) {
        return Descriptor(Uninterrupted(
            [&] { return openat(AT_FDCWD, path.c_str(), flags | O_DIRECTORY | O_CLOEXEC); }));
    };
    target.folder = open(O_RDONLY);
    target.folderCanBeSynced = target.folder.IsOpen();
    if (!target.folder.IsOpen() && errno == EACCES) {
        target.folder = open(O_PATH);
    }
    if (!target.folder.IsOpen()) {
        if (errno == ENOENT) {
            Fail("its folder does not exist", ENOENT);
        }
        FailWith(errno);
    }
}

/// Renaming a new file over a read-only one would succeed, so this check has to refuse it.
void CheckReplaceable(const Target& target) {
    if (!S_ISREG(target.old->st_mode)) {
        Fail("it is not a regular file", EINVAL);
    }
    if ((target.old->st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0) {
        Fail("it is write-protected", EACCES);
    }
    const int result = Uninterrupted([&target] {
        return faccessat(target.folder.Number(), target.name.c_str(), W_OK, AT_EACCESS);
    });
    if (result != 0) {
        FailWith(errno);
    }
}

}  // namespace

Target FindTarget(const std::string& path) {
    CheckPath(path);
    SplitPath place = FollowLinks(path);
    Target target{};
    OpenFolder(place.folder, target);
    target.folderPath = std::move(place.folder);
    target.name = std::move(place.name);
    struct stat status;
    const int result = Uninterrupted([&] {
        return fstatat(target.folder.Number(), target.name.c_str(), &status, AT_SYMLINK_NOFOLLOW);
    });
    if (result == 0) {
        target.old = status;
        CheckReplaceable(target);
    } else if (errno != ENOENT) {
        FailWith(errno);
    }
    return target;
}

}  // namespace kelcore::replacement
