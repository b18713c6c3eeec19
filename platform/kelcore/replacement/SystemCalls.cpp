#include "platform/kelcore/replacement/SystemCalls.h"

#include <fcntl.h>
#include <unistd.h>

#include <system_error>
#include <utility>

#include "platform/kelcore/File.h"

namespace kelcore::replacement {

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

Descriptor OpenAt(int folder, const char* name, int flags, mode_t mode) {
    return Descriptor(
        Uninterrupted([=] { return openat(folder, name, flags | O_CLOEXEC | O_NOFOLLOW, mode); }));
}

std::string Describe(int systemError) {
    return std::generic_category().message(systemError);
}

void Fail(const std::string& reason, int systemError) {
    throw file_exception(
        "cannot write \"" + std::string(file_exception::kPathPlaceholder) + "\": " + reason,
        systemError);
}

void FailWith(int systemError) {
    Fail(Describe(systemError), systemError);
}

}  // namespace kelcore::replacement
