#pragma once

#include <csignal>
#include <string>

namespace cli {

/// If a signal such as SIGINT or SIGTERM ends the program, removes a temporary file or a whole
/// folder first. Destroy the newest object first.
///
/// The handler must run on the main thread, which makes and destroys these objects: start every
/// other thread while a `WithoutSignals` lives, for it inherits the blocked signals.
class RemovalAtSignal {
public:
    explicit RemovalAtSignal(std::string path);
    ~RemovalAtSignal();
    RemovalAtSignal(const RemovalAtSignal&) = delete;
    RemovalAtSignal& operator=(const RemovalAtSignal&) = delete;

private:
    /// Makes only calls that are allowed in a signal.
    static void RemoveAllAndEnd(int signal);

    std::string path_;
    const RemovalAtSignal* former_;
};

/// Holds those signals back while a file exists that no `RemovalAtSignal` knows yet.
class WithoutSignals {
public:
    WithoutSignals();
    ~WithoutSignals();
    WithoutSignals(const WithoutSignals&) = delete;
    WithoutSignals& operator=(const WithoutSignals&) = delete;

private:
    sigset_t before_;
};

/// Removes a file, or a folder with everything in it; stops at what cannot be removed.
void RemoveTree(const char* root);

}  // namespace cli
