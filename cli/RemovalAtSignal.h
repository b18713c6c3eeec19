#pragma once

#include <csignal>
#include <string>

namespace cli {

/// Removes a temporary file or a whole folder if a signal such as SIGINT or SIGTERM ends the
/// program. Destroy the newest object first.
///
/// The handler must run on the main thread, which creates and destroys these objects. Start other
/// threads during the lifetime of a `WithoutSignals`, so that they inherit the blocked signals.
class RemovalAtSignal {
public:
    explicit RemovalAtSignal(std::string path);
    ~RemovalAtSignal();
    RemovalAtSignal(const RemovalAtSignal&) = delete;
    RemovalAtSignal& operator=(const RemovalAtSignal&) = delete;

private:
    /// Async-signal-safe.
    static void RemoveAllAndEnd(int signal);

    std::string path_;
    const RemovalAtSignal* former_;
};

/// Blocks those signals while a file exists that no `RemovalAtSignal` covers yet.
class WithoutSignals {
public:
    WithoutSignals();
    ~WithoutSignals();
    WithoutSignals(const WithoutSignals&) = delete;
    WithoutSignals& operator=(const WithoutSignals&) = delete;

private:
    sigset_t before_;
};

/// Removes a file, or a folder with its content. Stops at the first entry that cannot be removed.
void RemoveTree(const char* root);

}  // namespace cli
