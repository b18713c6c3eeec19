#pragma once

#include <sys/mman.h>
#include <sys/types.h>

#include <cstddef>
#include <functional>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "reference_host/Sessions.h"

/// Shared by the programs that save under adverse conditions.
namespace test {

/// A session, and the result of saving it.
struct Saved {
    orvo::Session session;
    std::string bytes;       ///< of the file
    orvo::Session readBack;  ///< what a host gets when it reads the file
};

/// Saves a session undisturbed and removes the file, to learn its bytes in this folder: they
/// contain relative media paths. Throws if that fails.
Saved SaveInPeace(refhost::Plugin& plugin, const orvo::Session& session, const std::string& folder);

/// Reads the session in a file; throws if that fails.
orvo::Session SessionOf(refhost::Plugin& plugin, const std::string& path);

/// Adds `count` media files to the session.
orvo::Session WithMoreFiles(orvo::Session session, std::size_t count);

/// The bytes of a file, or nothing if it does not exist.
std::optional<std::string> ContentOf(const std::string& path);

/// Whether the name is one of a save's temporary files.
bool IsTemporaryName(std::string_view name);

/// The number of temporary files in the folder.
std::size_t CountStrays(const std::string& folder);

/// Runs `work` in a child process and returns its id.
pid_t Begin(const std::function<void()>& work);

/// Waits for the process to end and returns its status, as from waitpid.
int End(pid_t process);

/// A trivially copyable value in memory shared with child processes.
template <class Value>
class Shared {
public:
    Shared() {
        void* const place =
            mmap(nullptr, sizeof(Value), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        if (place == MAP_FAILED) {
            throw std::bad_alloc();
        }
        value_ = new (place) Value{};
    }
    ~Shared() { munmap(value_, sizeof(Value)); }
    Shared(const Shared&) = delete;
    Shared& operator=(const Shared&) = delete;

    Value* operator->() const { return value_; }
    Value& operator*() const { return *value_; }

private:
    Value* value_;
};

}  // namespace test
