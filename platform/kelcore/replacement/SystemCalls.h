#pragma once

#include <sys/types.h>

#include <cerrno>
#include <string>

/// What the steps of a replacement share: calls of the system, and how they fail.
namespace kelcore::replacement {

/// A descriptor of the system that is closed with its owner.
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

    /// Gives the descriptor away unclosed.
    int Release() noexcept;

private:
    int number_ = -1;
};

/// Repeats a call of the system for as long as a signal interrupts it.
template <typename Call>
auto Uninterrupted(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR) {
        result = call();
    }
    return result;
}

/// Opens a file of a folder, but not what a link there leads to.
/// @returns a closed descriptor, with the reason in `errno`, if the system refuses.
Descriptor OpenAt(int folder, const char* name, int flags, mode_t mode = 0);

/// The system's words for an error.
std::string Describe(int systemError);

/// @throws file_exception that says the target cannot be written, and why
[[noreturn]] void Fail(const std::string& reason, int systemError);

/// The same in the system's words.
[[noreturn]] void FailWith(int systemError);

}  // namespace kelcore::replacement
