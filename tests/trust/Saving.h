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

/// What the programs share that save sessions under adversity.
namespace test {

/// A session, and what a save of it leads to.
struct Saved {
    refhost::model::Session session;
    std::string bytes;                 ///< of the file
    refhost::model::Session readBack;  ///< what a host gets that reads the file
};

/// Saves a session in peace and removes the file, to learn what it is in this folder: it tells
/// where the media are from there. Throws if that fails.
Saved SaveInPeace(refhost::Plugin& plugin, const refhost::model::Session& session,
                  const std::string& folder);

/// The session of a file; throws if it cannot be read.
refhost::model::Session SessionOf(refhost::Plugin& plugin, const std::string& path);

/// The session with `count` media files more.
refhost::model::Session WithMoreFiles(refhost::model::Session session, std::size_t count);

/// The bytes of a file, or nothing if there is none.
std::optional<std::string> ContentOf(const std::string& path);

/// Whether the name is one that a save gives to the file it writes before it renames it.
bool IsTemporaryName(std::string_view name);

/// How many files of that kind lie in the folder.
std::size_t CountStrays(const std::string& folder);

/// Runs `work` in a process of its own. @returns its id
pid_t Begin(const std::function<void()>& work);

/// Waits until it has ended. @returns the status as waitpid tells it
int End(pid_t process);

/// A plain value that a process shares with those it begins.
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
