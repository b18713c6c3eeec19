#include "platform/kelcore/FileReplacement.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <climits>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/kelcore/File.h"
#include "platform/kelcore/Types.h"

namespace kelcore {
namespace {

constexpr int kMaxLinks = 40;
constexpr int kMaxTemporaryNames = 100;
constexpr std::string_view kTemporaryMark = ".orvo-tmp-";
constexpr std::string_view kHexDigits = "0123456789abcdef";
constexpr std::size_t kTemporaryDigits = 12;
constexpr const char* kAccessList = "system.posix_acl_access";

[[noreturn]] void Fail(const std::string& reason, int systemError) {
    throw file_exception(
        "cannot write \"" + std::string(file_exception::kPathPlaceholder) + "\": " + reason,
        systemError);
}

std::string Describe(int systemError) {
    return std::generic_category().message(systemError);
}

[[noreturn]] void FailWith(int systemError) {
    Fail(Describe(systemError), systemError);
}

/// Repeats a call of the system for as long as a signal interrupts it.
template <typename Call>
auto Uninterrupted(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR) {
        result = call();
    }
    return result;
}

Descriptor OpenAt(int folder, const char* name, int flags, mode_t mode = 0) {
    return Descriptor(
        Uninterrupted([=] { return openat(folder, name, flags | O_CLOEXEC | O_NOFOLLOW, mode); }));
}

// ---- The target

/// A path cut before its last name.
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

/// What the link at `path` says, or nothing if no link stands there.
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

/// Follows links as the last name of `path`, also to where nothing stands yet.
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

/// Lets the system look first: it refuses links that somebody planted in a folder that all may
/// write.
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

void OpenFolder(const std::string& path, ReplacementTarget& target) {
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

/// A new file would take the place of one that may not be written just as well, so this has to be
/// asked.
void CheckReplaceable(const ReplacementTarget& target) {
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

ReplacementTarget FindTarget(const std::string& path) {
    CheckPath(path);
    SplitPath place = FollowLinks(path);
    ReplacementTarget target{};
    OpenFolder(place.folder, target);
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

// ---- Names of temporary files, and those left behind

/// How long a name may be in this folder.
std::size_t NameLimit(int folder) {
    const long limit = fpathconf(folder, _PC_NAME_MAX);
    return limit > 0 ? static_cast<std::size_t>(limit) : NAME_MAX;
}

/// `name` cut to `size` bytes, not inside a UTF-8 sequence: some file systems take nothing else.
std::string_view CutName(std::string_view name, std::size_t size) {
    if (name.size() <= size) {
        return name;
    }
    while (size > 0 && (static_cast<unsigned char>(name[size]) & 0xC0U) == 0x80U) {
        --size;
    }
    return name.substr(0, size);
}

std::string TemporaryPrefix(const ReplacementTarget& target) {
    const std::size_t added = 1 + kTemporaryMark.size() + kTemporaryDigits;
    const std::size_t limit = NameLimit(target.folder.Number());
    std::string prefix(1, '.');
    prefix += CutName(target.name, limit > added ? limit - added : 0);
    return prefix += kTemporaryMark;
}

/// Digits that hardly any other file has. They need not be secret: no file is opened that exists.
std::string TemporaryDigits() {
    static std::atomic<uint64> counter{0};
    const auto now = std::chrono::system_clock::now().time_since_epoch().count();
    uint64 mixed = static_cast<uint64>(now) ^ (static_cast<uint64>(getpid()) << 32) ^
                   (counter.fetch_add(1) << 20);
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
    mixed ^= mixed >> 31;
    std::string digits;
    for (std::size_t i = 0; i < kTemporaryDigits; ++i, mixed >>= 4) {
        digits.push_back(kHexDigits[mixed & 0xFU]);
    }
    return digits;
}

bool IsTemporaryName(std::string_view name, std::string_view prefix) {
    return name.size() == prefix.size() + kTemporaryDigits && name.starts_with(prefix) &&
           name.find_first_not_of(kHexDigits, prefix.size()) == std::string_view::npos;
}

/// Marks a temporary file as held by a running program; false if another holds it, or if the file
/// system has no locks.
bool Lock(const Descriptor& file) {
    return Uninterrupted([&file] { return flock(file.Number(), LOCK_EX | LOCK_NB); }) == 0;
}

void Remove(int folder, const char* name) {
    Uninterrupted([=] { return unlinkat(folder, name, 0); });
}

/// Removes a temporary file unless a running program holds it. In doubt it stays.
void RemoveIfAbandoned(int folder, const char* name) {
    const Descriptor stray = OpenAt(folder, name, O_WRONLY | O_NONBLOCK);
    struct stat status;
    if (stray.IsOpen() && fstat(stray.Number(), &status) == 0 && S_ISREG(status.st_mode) &&
        Lock(stray)) {
        Remove(folder, name);
    }
}

struct CloseListing {
    void operator()(DIR* listing) const { closedir(listing); }
};

void RemoveStrays(int folder, std::string_view prefix) {
    Descriptor listed = OpenAt(folder, ".", O_RDONLY | O_DIRECTORY);
    if (!listed.IsOpen()) {
        return;
    }
    const std::unique_ptr<DIR, CloseListing> listing(fdopendir(listed.Number()));
    if (!listing) {
        return;
    }
    listed.Release();
    while (const dirent* entry = readdir(listing.get())) {
        if (IsTemporaryName(entry->d_name, prefix)) {
            RemoveIfAbandoned(folder, entry->d_name);
        }
    }
}

// ---- What the new file takes over from the old one

/// A want of room or a broken disk fails the replacement; a property that this user or this file
/// system does not take is left behind.
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

/// Whether the attribute vouches for the content, and so must not go over to another content.
bool BelongsToContent(std::string_view attribute) {
    return attribute == "security.capability" || attribute == "security.ima" ||
           attribute == "security.evm";
}

/// Calls `read(buffer, size)` as the calls for attributes want it: first for the size, then for the
/// bytes, again if it has grown in between. Nothing if there is nothing to be had.
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

/// @returns whether the new file has it too.
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

/// @returns false if the old file has an access list that the new one could not be given.
bool TakeOverAttributes(int from, int to) {
    // The folder may have given the new file a list of its own.
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

/// The mode of the old file, less what it would grant to people it did not mean.
mode_t ModeFor(const struct stat& old, bool ownerKept, bool groupMeantIsKept) {
    mode_t mode = old.st_mode & (ownerKept && groupMeantIsKept ? 07777U : 0777U);
    if (!groupMeantIsKept) {
        mode = (mode & ~070U) | (mode & ((mode & 07U) << 3));
    }
    return mode;
}

void TakeOverProperties(const ReplacementTarget& target, int file) {
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

}  // namespace

Descriptor::~Descriptor() {
    if (IsOpen()) {
        close(number_);
    }
}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    Descriptor old(std::exchange(number_, other.Release()));
    return *this;
}

int Descriptor::Release() noexcept {
    return std::exchange(number_, -1);
}

TemporaryFile::TemporaryFile(const ReplacementTarget& target) : folder_(target.folder.Number()) {
    const std::string prefix = TemporaryPrefix(target);
    RemoveStrays(folder_, prefix);
    // A file that is new as a whole gets the usual permissions from the system; one that replaces
    // another is nobody's business until it has that one's.
    const mode_t mode = target.old ? 0600 : 0666;
    for (int attempt = 0; attempt < kMaxTemporaryNames; ++attempt) {
        name_ = prefix + TemporaryDigits();
        if (TryName(mode)) {
            return;
        }
    }
    FailWith(EEXIST);
}

/// False if the name is taken, or if a replacement that runs elsewhere took the file for a stray
/// before it was locked.
bool TemporaryFile::TryName(mode_t mode) {
    file_ = OpenAt(folder_, name_.c_str(), O_WRONLY | O_CREAT | O_EXCL, mode);
    if (!file_.IsOpen()) {
        if (errno == EEXIST) {
            return false;
        }
        const int systemError = errno;
        Fail("no new file can be made in its folder: " + Describe(systemError), systemError);
    }
    // A file system without locks has no use for them: nothing there is ever taken for a stray.
    const bool lockedElsewhere = !Lock(file_) && errno == EWOULDBLOCK;
    struct stat status;
    const bool removed = fstat(file_.Number(), &status) == 0 && status.st_nlink == 0;
    if (lockedElsewhere || removed) {
        Remove(folder_, name_.c_str());
        file_ = Descriptor();
        return false;
    }
    return true;
}

TemporaryFile::~TemporaryFile() {
    if (file_.IsOpen() && !name_.empty()) {
        Remove(folder_, name_.c_str());
    }
}

void TemporaryFile::RenameTo(const std::string& name) {
    const int result =
        Uninterrupted([&] { return renameat(folder_, name_.c_str(), folder_, name.c_str()); });
    if (result != 0) {
        const int systemError = errno;
        // Over a network the answer may get lost, and asked again, the system has nothing left to
        // rename. What counts is who has the name.
        if (!HasName(name)) {
            FailWith(systemError);
        }
    }
    name_.clear();
}

bool TemporaryFile::HasName(const std::string& name) const {
    struct stat own;
    struct stat named;
    return Uninterrupted([&] { return fstat(file_.Number(), &own); }) == 0 &&
           Uninterrupted(
               [&] { return fstatat(folder_, name.c_str(), &named, AT_SYMLINK_NOFOLLOW); }) == 0 &&
           own.st_dev == named.st_dev && own.st_ino == named.st_ino;
}

FileReplacement::FileReplacement(const std::string& path)
    : target_(FindTarget(path)), temporary_(target_) {
    if (target_.old) {
        TakeOverProperties(target_, temporary_.Number());
    }
}

void FileReplacement::Write(const void* data, std::size_t size) {
    const char* rest = static_cast<const char*>(data);
    while (size > 0) {
        const ssize_t written =
            Uninterrupted([&] { return write(temporary_.Number(), rest, size); });
        if (written < 0) {
            FailWith(errno);
        }
        if (written == 0) {
            FailWith(ENOSPC);
        }
        rest += written;
        size -= static_cast<std::size_t>(written);
    }
}

void FileReplacement::Commit() {
    if (Uninterrupted([this] { return fsync(temporary_.Number()); }) != 0) {
        FailWith(errno);
    }
    temporary_.RenameTo(target_.name);
    SyncFolder();
}

void FileReplacement::SyncFolder() const {
    const int result = Uninterrupted([this] {
        return target_.folderCanBeSynced ? fsync(target_.folder.Number())
                                         : syncfs(temporary_.Number());
    });
    // Some file systems keep folders in a way that needs no such call, and say so.
    if (result != 0 && errno != EINVAL && errno != ENOTSUP) {
        const int systemError = errno;
        Fail("the new content is in place, but may not outlast a loss of power: " +
                 Describe(systemError),
             systemError);
    }
}

}  // namespace kelcore
