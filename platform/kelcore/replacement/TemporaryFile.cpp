#include "platform/kelcore/replacement/TemporaryFile.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <climits>
#include <memory>
#include <string_view>

#include "platform/kelcore/Types.h"

namespace kelcore::replacement {
namespace {

constexpr int kMaxTemporaryNames = 100;
constexpr std::string_view kTemporaryMark = ".orvo-tmp-";
constexpr std::string_view kHexDigits = "0123456789abcdef";
constexpr std::size_t kTemporaryDigits = 12;

// ---- Names

/// The maximum length of a name in this folder.
std::size_t NameLimit(int folder) {
    const long limit = fpathconf(folder, _PC_NAME_MAX);
    return limit > 0 ? static_cast<std::size_t>(limit) : NAME_MAX;
}

/// Cuts `name` to `size` bytes, never inside a UTF-8 sequence: some file systems accept only UTF-8.
std::string_view CutName(std::string_view name, std::size_t size) {
    if (name.size() <= size) {
        return name;
    }
    while (size > 0 && (static_cast<unsigned char>(name[size]) & 0xC0U) == 0x80U) {
        --size;
    }
    return name.substr(0, size);
}

std::string TemporaryPrefix(const Target& target) {
    const std::size_t added = 1 + kTemporaryMark.size() + kTemporaryDigits;
    const std::size_t limit = NameLimit(target.folder.Number());
    std::string prefix(1, '.');
    prefix += CutName(target.name, limit > added ? limit - added : 0);
    return prefix += kTemporaryMark;
}

/// Digits that are almost certainly unique. They need not be secret, because no existing file is
/// ever opened.
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

// ---- Leftovers

/// Marks a temporary file as in use. Returns false if another program holds it or the file system
/// has no locks.
bool Lock(const Descriptor& file) {
    return Uninterrupted([&file] { return flock(file.Number(), LOCK_EX | LOCK_NB); }) == 0;
}

void Remove(int folder, const char* name) {
    Uninterrupted([=] { return unlinkat(folder, name, 0); });
}

/// Removes a temporary file unless a running program holds it. When in doubt, keeps it.
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

}  // namespace

TemporaryFile::TemporaryFile(const Target& target) : folder_(target.folder.Number()) {
    const std::string prefix = TemporaryPrefix(target);
    RemoveStrays(folder_, prefix);
    // A new file gets the default permissions. A replacement stays private until it has the
    // permissions of the old file.
    const mode_t mode = target.old ? 0600 : 0666;
    for (int attempt = 0; attempt < kMaxTemporaryNames; ++attempt) {
        name_ = prefix + TemporaryDigits();
        if (TryName(mode)) {
            return;
        }
    }
    FailWith(EEXIST);
}

/// Returns false if the name is taken, or if a replacement in another process removed the file as a
/// leftover before it was locked.
bool TemporaryFile::TryName(mode_t mode) {
    file_ = OpenAt(folder_, name_.c_str(), O_WRONLY | O_CREAT | O_EXCL, mode);
    if (!file_.IsOpen()) {
        if (errno == EEXIST) {
            return false;
        }
        const int systemError = errno;
        Fail("no new file can be made in its folder: " + Describe(systemError), systemError);
    }
    // Without locks the file system is no danger either: nothing there is ever taken for a
    // leftover.
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
        // On a network file system the answer may get lost; a repeated request then finds nothing
        // to rename. What counts is which file has the name.
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

}  // namespace kelcore::replacement
