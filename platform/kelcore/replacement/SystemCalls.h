#pragma once

#include <sys/types.h>

#include <cerrno>
#include <string>

/// System calls and their errors, for the steps of a replacement.
namespace kelcore::replacement {

/// Owns a file descriptor and closes it on destruction.
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

    /// Gives up ownership without closing.
    int Release() noexcept;

private:
    int number_ = -1;
};

/// Repeats a system call as long as a signal interrupts it.
template <typename Call>
auto Uninterrupted(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR) {
        result = call();
    }
    return result;
}

/// Opens a file in a folder without following links. If the system refuses, returns a closed
/// descriptor and leaves the reason in `errno`.
Descriptor OpenAt(int folder, const char* name, int flags, mode_t mode = 0);

/// The system's text for an error.
std::string Describe(int systemError);

/// @throws file_exception  which says that the target cannot be written, and why
[[noreturn]] void Fail(const std::string& reason, int systemError);

/// Throws with the system's text for the error.
[[noreturn]] void FailWith(int systemError);

}  // namespace kelcore::replacement
