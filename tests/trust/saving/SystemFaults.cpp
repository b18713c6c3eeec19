#include "tests/trust/saving/SystemFaults.h"

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <string_view>

namespace test {
namespace {

bool isActive = false;
Fault fault;
std::string faultyName;

std::vector<std::string>& Calls() {
    static std::vector<std::string> calls;
    return calls;
}

/// The system's function that a function in this file replaces.
template <class Function>
Function* System(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

bool IsMeant(std::size_t call, std::string_view name) {
    if (call < fault.atCall) {
        return false;
    }
    if (call == fault.atCall) {
        faultyName = name;
        return true;
    }
    return fault.extent == Extent::All || (fault.extent == Extent::SameName && name == faultyName);
}

/// Records a call and decides how it goes wrong.
Wrong Next(const char* name) {
    if (!isActive) {
        return Wrong::Nothing;
    }
    Calls().emplace_back(name);
    return IsMeant(Calls().size() - 1, name) ? fault.wrong : Wrong::Nothing;
}

[[noreturn]] void Die() {
    kill(getpid(), SIGKILL);
    for (;;) {
        pause();
    }
}

template <class Result>
Result Fail(Result failed) {
    errno = fault.error;
    return failed;
}

template <class Result, class Call>
Result Perform(Wrong wrong, Result failed, Call call) {
    if (wrong == Wrong::DiesBefore) {
        Die();
    }
    if (wrong == Wrong::Fails) {
        return Fail(failed);
    }
    const Result result = call();
    if (wrong == Wrong::DiesAfter) {
        Die();
    }
    return wrong == Wrong::FailsAfterwards ? Fail(failed) : result;
}

/// Forwards a call with unchanged arguments, unless it goes wrong.
template <class Result, class... Arguments>
Result Pass(const char* name, Result failed, Arguments... arguments) {
    return Perform(Next(name), failed,
                   [=] { return System<Result(Arguments...)>(name)(arguments...); });
}

/// Likewise, for a call that gives up its descriptor even if it fails.
template <class Argument>
int PassClosing(const char* name, Argument argument) {
    const Wrong wrong = Next(name);
    return Perform(wrong == Wrong::Fails ? Wrong::FailsAfterwards : wrong, -1,
                   [=] { return System<int(Argument)>(name)(argument); });
}

}  // namespace

void BeginFaults(const Fault& next) {
    fault = next;
    Calls().clear();
    isActive = true;
}

std::vector<std::string> EndFaults() {
    isActive = false;
    return Calls();
}

}  // namespace test

extern "C" {

int openat(int folder, const char* path, int flags, ...) {
    mode_t mode = 0;
    if ((flags & (O_CREAT | O_TMPFILE)) != 0) {
        va_list arguments;
        va_start(arguments, flags);
        mode = va_arg(arguments, mode_t);
        va_end(arguments);
    }
    return test::Perform(test::Next("openat"), -1, [=] {
        return test::System<int(int, const char*, int, ...)>("openat")(folder, path, flags, mode);
    });
}

ssize_t write(int file, const void* data, size_t size) {
    const test::Wrong wrong = test::Next("write");
    if (wrong == test::Wrong::DoesNothing) {
        return 0;
    }
    const size_t part = wrong == test::Wrong::DoesHalf ? (size + 1) / 2 : size;
    return test::Perform(wrong, ssize_t{-1}, [=] {
        return test::System<ssize_t(int, const void*, size_t)>("write")(file, data, part);
    });
}

ssize_t pread(int file, void* data, size_t size, off_t offset) {
    return test::Pass("pread", ssize_t{-1}, file, data, size, offset);
}

int close(int file) {
    return test::PassClosing("close", file);
}

int closedir(DIR* listing) {
    return test::PassClosing("closedir", listing);
}

DIR* fdopendir(int folder) {
    return test::Pass("fdopendir", static_cast<DIR*>(nullptr), folder);
}

dirent* readdir(DIR* listing) {
    return test::Pass("readdir", static_cast<dirent*>(nullptr), listing);
}

int stat(const char* path, struct stat* status) noexcept {
    return test::Pass("stat", -1, path, status);
}

int fstat(int file, struct stat* status) noexcept {
    return test::Pass("fstat", -1, file, status);
}

int fstatat(int folder, const char* name, struct stat* status, int flags) noexcept {
    return test::Pass("fstatat", -1, folder, name, status, flags);
}

int faccessat(int folder, const char* name, int rights, int flags) noexcept {
    return test::Pass("faccessat", -1, folder, name, rights, flags);
}

ssize_t readlink(const char* path, char* text, size_t size) noexcept {
    return test::Pass("readlink", ssize_t{-1}, path, text, size);
}

long fpathconf(int file, int name) noexcept {
    return test::Pass("fpathconf", -1L, file, name);
}

int flock(int file, int operation) noexcept {
    return test::Pass("flock", -1, file, operation);
}

int fchown(int file, uid_t owner, gid_t group) noexcept {
    return test::Pass("fchown", -1, file, owner, group);
}

int fchmod(int file, mode_t mode) noexcept {
    return test::Pass("fchmod", -1, file, mode);
}

ssize_t flistxattr(int file, char* names, size_t size) noexcept {
    return test::Pass("flistxattr", ssize_t{-1}, file, names, size);
}

ssize_t fgetxattr(int file, const char* name, void* value, size_t size) noexcept {
    return test::Pass("fgetxattr", ssize_t{-1}, file, name, value, size);
}

int fsetxattr(int file, const char* name, const void* value, size_t size, int flags) noexcept {
    return test::Pass("fsetxattr", -1, file, name, value, size, flags);
}

int fremovexattr(int file, const char* name) noexcept {
    return test::Pass("fremovexattr", -1, file, name);
}

int fsync(int file) {
    return test::Pass("fsync", -1, file);
}

int syncfs(int file) noexcept {
    return test::Pass("syncfs", -1, file);
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept {
    return test::Pass("renameat", -1, fromFolder, from, toFolder, to);
}

int unlinkat(int folder, const char* name, int flags) noexcept {
    return test::Pass("unlinkat", -1, folder, name, flags);
}

}  // extern "C"
