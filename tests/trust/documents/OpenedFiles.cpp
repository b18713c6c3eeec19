#include "tests/trust/documents/OpenedFiles.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/socket.h>

#include <cstdarg>
#include <cstdio>

namespace test {
namespace {

bool isRecording = false;

std::vector<std::string>& Names() {
    static std::vector<std::string> names;
    return names;
}

void Note(const char* name) {
    if (isRecording) {
        Names().emplace_back(name);
    }
}

template <class Function>
Function* SystemFunction(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

mode_t ModeOf(int flags, va_list arguments) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

}  // namespace

void RecordOpened(bool on) {
    isRecording = on;
}

std::vector<std::string> Opened() {
    return Names();
}

}  // namespace test

extern "C" {

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = test::ModeOf(flags, arguments);
    va_end(arguments);
    test::Note(path);
    return test::SystemFunction<int(const char*, int, ...)>("open")(path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = test::ModeOf(flags, arguments);
    va_end(arguments);
    test::Note(path);
    return test::SystemFunction<int(const char*, int, ...)>("open64")(path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = test::ModeOf(flags, arguments);
    va_end(arguments);
    test::Note(path);
    return test::SystemFunction<int(int, const char*, int, ...)>("openat")(folder, path, flags,
                                                                           mode);
}

int openat64(int folder, const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = test::ModeOf(flags, arguments);
    va_end(arguments);
    test::Note(path);
    return test::SystemFunction<int(int, const char*, int, ...)>("openat64")(folder, path, flags,
                                                                             mode);
}

FILE* fopen(const char* path, const char* mode) {
    test::Note(path);
    return test::SystemFunction<FILE*(const char*, const char*)>("fopen")(path, mode);
}

FILE* fopen64(const char* path, const char* mode) {
    test::Note(path);
    return test::SystemFunction<FILE*(const char*, const char*)>("fopen64")(path, mode);
}

int socket(int domain, int type, int protocol) noexcept {
    test::Note("socket");
    return test::SystemFunction<int(int, int, int)>("socket")(domain, type, protocol);
}

}  // extern "C"
